// How the tests describe their sequences: one call for each field.
#pragma once

#include <cstddef>

#include "element_list.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_octs.h"
#include "orma/asn1/asn_sequence.h"

// Every compiler of this tree gives the offsets of classes with one base and no virtual one.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace described {

template <typename T>
void* create() {
  return new T;
}

template <typename T>
void destroy(void* object) {
  delete static_cast<T*>(object);
}

using refl::CClassInfor;
using Basic = refl::CCustomBasicTypeInfor;

struct Field {
  const char* name;
  std::size_t position;
  short tag = -1;
  refl::Enum::HoldingFlagEnum holding = refl::Enum::ByValue;
};

inline refl::CGnlTypeInfor& add(CClassInfor& infor, const Field& field) {
  auto& type = infor.AddAttribInfor(refl::Enum::Public, static_cast<unsigned short>(field.position),
                                    field.name, field.tag);
  type.setHolding(field.holding);
  return type;
}

inline void addInt(CClassInfor& infor, const Field& field) {
  add(infor, field)
      .changeToBasic(Basic::InitCustomAnyBasicTypeInfor(Basic::GetBasicTypeInforImpl<AsnInt>(),
                                                        "AsnInt", refl::Enum::AsnIntCode, 2));
}

inline void addOcts(CClassInfor& infor, const Field& field) {
  add(infor, field)
      .changeToBasic(Basic::InitCustomAnyBasicTypeInfor(Basic::GetBasicTypeInforImpl<AsnOcts>(),
                                                        "AsnOcts", refl::Enum::AsnOctsCode, 4));
}

template <typename List>
void addList(CClassInfor& infor, const Field& field) {
  add(infor, field)
      .ChangeTypeTo_CustomType("List", sizeof(List), create<List>, destroy<List>,
                               refl::Enum::kListMark);
}

// T has a static kName and a static addAttributes.
template <typename T>
const CClassInfor& describe() {
  auto& slot = CClassInfor::GetClassInforImpl<T>();
  if (slot.isEmpty()) {
    CClassInfor::InitClassInfor(slot, T::kName, sizeof(T), create<T>, destroy<T>, T::addAttributes);
  }
  return slot.descriptor();
}

template <typename T>
void addSequence(CClassInfor& infor, const Field& field) {
  add(infor, field).changeToClass(describe<T>());
}

// What every described class of the tests shares.
template <typename T>
class Sequence : public AsnSequence {
 public:
  AsnSequence* clone() const override {
    auto copy = std::make_unique<T>();
    copy->CopyConstructor(*this);
    return copy.release();
  }
  void reflect(refl::CRefrence& reference) const override {
    refl::helper::ChangeTypeTo_ClassType(reference, describe<T>(), this);
  }
};

}  // namespace described
