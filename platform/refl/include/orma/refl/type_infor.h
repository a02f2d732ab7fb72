// The type of one described field: a basic type, a described class or a custom type.
//
// Thread-safety: CGnlTypeInfor is thread-compatible, and immutable once its class is described;
// filling the slot of a basic type is thread-safe. Nothing fails. Names are borrowed for good.
//
//   using Basic = refl::CCustomBasicTypeInfor;
//   type.changeToBasic(Basic::InitCustomAnyBasicTypeInfor(
//       Basic::GetBasicTypeInforImpl<AsnInt>(), "AsnInt", refl::Enum::AsnIntCode, 2));
#pragma once

#include "orma/bundle/export.h"
#include "orma/refl/enums.h"
#include "orma/refl/slot.h"

namespace refl {

class CClassInfor;

// Gives a new object of the type, as a pointer to that type.
using Creator = void* (*)();
// Deletes what the creator gave.
using Destroyer = void (*)(void* object);

// The descriptor of a basic type.
class ORMA_API CCustomBasicTypeInfor {
 public:
  // Fills the slot unless it is filled, and gives its descriptor. `universalTag` is the number of
  // the type's universal tag.
  static const CCustomBasicTypeInfor& InitCustomAnyBasicTypeInfor(Slot<CCustomBasicTypeInfor>& slot,
                                                                  const char* name,
                                                                  unsigned char typeCode,
                                                                  int universalTag);
  // The slot of the type T.
  template <typename T>
  static Slot<CCustomBasicTypeInfor>& GetBasicTypeInforImpl() {
    static Slot<CCustomBasicTypeInfor> slot;
    return slot;
  }

  const char* name() const noexcept { return name_; }
  unsigned char typeCode() const noexcept { return typeCode_; }
  int universalTag() const noexcept { return universalTag_; }

 private:
  friend class Slot<CCustomBasicTypeInfor>;
  constexpr CCustomBasicTypeInfor() = default;

  const char* name_ = "";
  unsigned char typeCode_ = 0;
  int universalTag_ = 0;
};

// The record of one field's type. An attribute function sets it by the calls or directly.
struct ORMA_API CGnlTypeInfor {
  // Makes this record a custom type. The mark says how it is walked: Enum::kListMark, as a list.
  void ChangeTypeTo_CustomType(const char* typeName, unsigned long typeSize, Creator typeCreator,
                               Destroyer typeDestroyer, short typeMark);
  // Makes this record a basic type, or a described class. The class's descriptor need not be
  // complete yet: a class may hold its own type.
  void changeToBasic(const CCustomBasicTypeInfor& basicType);
  void changeToClass(const CClassInfor& classType);
  // Sets the low six bits of the flags and keeps the others.
  void setHolding(Enum::HoldingFlagEnum holding);
  Enum::HoldingFlagEnum holding() const;

  unsigned char kind = Enum::NoKind;
  unsigned char flags = 0;
  short mark = 0;  // of a custom type, as the next four
  const char* name = "";
  unsigned long size = 0;
  Creator creator = nullptr;
  Destroyer destroyer = nullptr;
  const CCustomBasicTypeInfor* basic = nullptr;  // of a basic type
  const CClassInfor* described = nullptr;        // of a described class
};

}  // namespace refl
