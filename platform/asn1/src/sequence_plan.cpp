#include "sequence_plan.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

#include "ber_inline.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_octs.h"

namespace {

constexpr unsigned int kContextClass = 0x80;

template <typename T>
void* create() {
  return new T;
}

template <typename T>
void destroy(void* object) {
  delete static_cast<T*>(object);
}

[[noreturn]] void refuse(const refl::CClassInfor& infor, const refl::CAttribInfor& attribute,
                         const char* what) {
  throw std::logic_error(std::string("the field ") + attribute.name + " of " + infor.name() + " " +
                         what);
}

// A context tag, its first byte topmost.
unsigned int contextTag(unsigned int number, unsigned int constructedBit) {
  const unsigned int first = (kContextClass | constructedBit) << 24;
  if (number < kLongTagBits) return first | number << 24;
  const unsigned int longTag = first | unsigned{kLongTagBits} << 24;
  if (number < 1U << 7) return longTag | number << 16;
  if (number < 1U << 14) return longTag | (0x80 | number >> 7) << 16 | (number & 0x7F) << 8;
  return longTag | (0x80 | number >> 14) << 16 | (0x80 | (number >> 7 & 0x7F)) << 8 |
         (number & 0x7F);
}

void setTags(FieldPlan& field) {
  if (!field.isTagged()) {
    field.tags = {field.ownTag, field.ownTag};
    return;
  }
  const auto number = static_cast<unsigned int>(field.number);
  field.tags[static_cast<std::size_t>(AsnTagging::Implicit)] =
      contextTag(number, field.ownTag >> 24 & kConstructedBit);
  field.tags[static_cast<std::size_t>(AsnTagging::Explicit)] = contextTag(number, kConstructedBit);
}

// False for a type that no field of a sequence can have.
bool setType(FieldPlan& field, const refl::CGnlTypeInfor& type) {
  using refl::Enum::BasicKind;
  if (type.kind == BasicKind && type.basic->typeCode() == refl::Enum::AsnIntCode) {
    field.type = FieldType::Integer;
    field.creator = create<AsnInt>;
    field.destroyer = destroy<AsnInt>;
  } else if (type.kind == BasicKind && type.basic->typeCode() == refl::Enum::AsnOctsCode) {
    field.type = FieldType::OctetString;
    field.creator = create<AsnOcts>;
    field.destroyer = destroy<AsnOcts>;
  } else if (type.kind == refl::Enum::CustomKind && type.mark == refl::Enum::kListMark) {
    field.type = FieldType::List;
    field.creator = type.creator;
    field.destroyer = type.destroyer;
  } else if (type.kind == refl::Enum::ClassKind) {
    field.type = FieldType::Sequence;
    field.creator = type.described->creator();
    field.destroyer = type.described->destroyer();
    field.described = type.described;
  } else {
    return false;
  }
  field.ownTag = type.kind == BasicKind
                     ? static_cast<unsigned int>(type.basic->universalTag()) << 24
                     : kAsnSequenceTag;
  return true;
}

bool setHolding(FieldPlan& field, refl::Enum::HoldingFlagEnum flag) {
  switch (flag) {
    case refl::Enum::ByValue:
      field.holding = Holding::Value;
      return true;
    case refl::Enum::RequiredPointer:
      field.holding = Holding::RequiredPointer;
      return true;
    case refl::Enum::OptionalPointer:
      field.holding = Holding::OptionalPointer;
      return true;
  }
  return false;
}

FieldPlan planField(const refl::CClassInfor& infor, const refl::CAttribInfor& attribute) {
  FieldPlan field{};
  field.name = attribute.name;
  field.position = attribute.position;
  field.number = attribute.tag;
  if (attribute.tag < -1) refuse(infor, attribute, "has a tag number below -1");
  if (!setType(field, attribute.type)) refuse(infor, attribute, "is of no type of ASN.1");
  if (!setHolding(field, attribute.type.holding())) refuse(infor, attribute, "has unknown flags");
  setTags(field);
  return field;
}

}  // namespace

SequencePlan::SequencePlan(const refl::CClassInfor& infor) : name(infor.name()) {
  fields.reserve(infor.attributes().size());
  for (const auto& attribute : infor.attributes()) fields.push_back(planField(infor, attribute));
}

SequencePlan::~SequencePlan() = default;

// A known field in the form of the other tagging is no unknown one.
bool SequencePlan::names(unsigned int tag) const {
  constexpr unsigned int kForm = unsigned{kConstructedBit} << 24;
  return std::any_of(fields.begin(), fields.end(), [&](const FieldPlan& field) {
    return ((field.tag(AsnTagging::Implicit) ^ tag) & ~kForm) == 0;
  });
}

const SequencePlan& planOf(const AsnSequence& sequence) {
  refl::CRefrence reference;
  sequence.reflect(reference);
  const refl::CCompiledForm* plan = reference.infor->compiledForm();
  if (plan == nullptr) {
    plan = reference.infor->keepCompiledForm(std::make_unique<SequencePlan>(*reference.infor));
  }
  return static_cast<const SequencePlan&>(*plan);
}
