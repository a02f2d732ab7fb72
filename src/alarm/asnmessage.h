// SEQUENCEs by their field lists: a struct of fields and one table of their names is all that a
// message has of its own. Types and holders of the fields say the rest, and everything that is
// done to a message walks its descriptor.
//
//   struct AsnAlmKeyStrcFields : AsnSequence {
//     static constexpr char kName[] = "AsnAlmKeyStrc";
//     AsnInt cDevType;
//     AsnInt sAlmID;
//     static constexpr auto fields() {
//       return std::tuple(EMF_FIELD(AsnAlmKeyStrcFields, cDevType), …);
//     }
//   };
//   using AsnAlmKeyStrc = emf::AsnMessage<AsnAlmKeyStrcFields>;
//
// Thread-safety: messages are thread-compatible; their descriptors are filled at first use, from
// any thread. Failure: orma/asn1/asn_type.h.
#pragma once

#include <cstddef>
#include <memory>
#include <tuple>
#include <type_traits>

#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_list_base.h"
#include "orma/asn1/asn_octs.h"
#include "orma/asn1/asn_sequence.h"

// The messages are no standard-layout types; both compilers lay them out by the same rules.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

// A row of a message's table: the field's name, which is its name on the wire's description too,
// and its place.
#define EMF_FIELD(Fields, field) \
  ::emf::AsnField<decltype(Fields::field)> { #field, offsetof(Fields, field) }

namespace emf {

template <typename Member>
struct AsnField {
  const char* name;
  std::size_t position;
};

// A field under context tag [tag] that may be absent: null then. As an object it is the pointer
// that decoding and copying write.
template <typename T, short tag>
class OptionalField {
 public:
  using Value = T;
  static constexpr short kTag = tag;
  static constexpr refl::Enum::HoldingFlagEnum kHolding = refl::Enum::OptionalPointer;

  OptionalField() = default;
  OptionalField(const OptionalField&) = delete;
  OptionalField& operator=(const OptionalField&) = delete;
  ~OptionalField() { delete value_; }

  explicit operator bool() const { return value_ != nullptr; }
  T& operator*() const { return *value_; }
  T* operator->() const { return value_; }
  // The field, present from now on.
  T& make() {
    if (value_ == nullptr) value_ = new T;
    return *value_;
  }

 private:
  T* value_ = nullptr;  // owned
};

// A required field that is held by pointer: never null in a message that was not left half decoded.
template <typename T>
class RequiredField {
 public:
  using Value = T;
  static constexpr short kTag = -1;
  static constexpr refl::Enum::HoldingFlagEnum kHolding = refl::Enum::RequiredPointer;

  RequiredField() : value_(new T) {}
  RequiredField(const RequiredField&) = delete;
  RequiredField& operator=(const RequiredField&) = delete;
  ~RequiredField() { delete value_; }

  T& operator*() const { return *value_; }
  T* operator->() const { return value_; }

 private:
  T* value_;  // owned
};

// What a field's holder says; a field without one is held by value, under its type's own tag.
template <typename Member, typename = void>
struct HolderOf {
  using Value = Member;
  static constexpr short kTag = -1;
  static constexpr refl::Enum::HoldingFlagEnum kHolding = refl::Enum::ByValue;
};
template <typename Member>
struct HolderOf<Member, std::void_t<typename Member::Value>> : Member {};

template <typename T>
void* createObject() {
  return new T;
}
template <typename T>
void destroyObject(void* object) {
  delete static_cast<T*>(object);
}

void describeAs(refl::CGnlTypeInfor& type, const AsnInt*);
void describeAs(refl::CGnlTypeInfor& type, const AsnOcts*);

template <typename T>
void describe(refl::CGnlTypeInfor& type) {
  if constexpr (std::is_base_of_v<AsnListBase, T>) {
    type.ChangeTypeTo_CustomType(T::kName, sizeof(T), createObject<T>, destroyObject<T>,
                                 refl::Enum::kListMark);
  } else if constexpr (std::is_base_of_v<AsnSequence, T>) {
    type.changeToClass(T::descriptor());
  } else {
    describeAs(type, static_cast<const T*>(nullptr));
  }
}

template <typename Member>
void addField(refl::CClassInfor& infor, const AsnField<Member>& field) {
  using Holder = HolderOf<Member>;
  refl::CGnlTypeInfor& type = infor.AddAttribInfor(
      refl::Enum::Public, static_cast<unsigned short>(field.position), field.name, Holder::kTag);
  describe<typename Holder::Value>(type);
  if constexpr (Holder::kHolding != refl::Enum::ByValue) type.setHolding(Holder::kHolding);
}

// The message that the fields make up. Numbers start as 0, strings and lists empty, optional fields
// absent.
template <typename Fields>
class AsnMessage final : public Fields {
 public:
  AsnMessage() { this->Constructor(); }
  ~AsnMessage() override { this->Destructor(); }

  AsnMessage* clone() const override {
    auto copy = std::make_unique<AsnMessage>();
    copy->CopyConstructor(*this);
    return copy.release();
  }
  void reflect(refl::CRefrence& reference) const override {
    refl::helper::ChangeTypeTo_ClassType(reference, descriptor(), this);
  }

  static const refl::CClassInfor& descriptor() {
    auto& slot = refl::CClassInfor::GetClassInforImpl<AsnMessage>();
    if (slot.isEmpty()) {
      return refl::CClassInfor::InitClassInfor(slot, Fields::kName, sizeof(AsnMessage),
                                               createObject<AsnMessage>, destroyObject<AsnMessage>,
                                               addFields);
    }
    return slot.descriptor();
  }

 private:
  static void addFields(refl::CClassInfor& infor) {
    static_assert(sizeof(AsnMessage) == sizeof(Fields) && sizeof(AsnMessage) <= 0xFFFF);
    std::apply([&infor](const auto&... field) { (addField(infor, field), ...); }, Fields::fields());
  }
};

}  // namespace emf
