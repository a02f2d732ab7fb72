// The quick form of a sequence's descriptor: one row for each field, with everything that walking
// it takes and no texts to compare.
//
// Thread-safety: immutable. Failure: std::logic_error for a descriptor that no sequence can have.
//
//   for (const FieldPlan& field : planOf(sequence).fields) { ... }
#pragma once

#include <array>
#include <vector>

#include "orma/asn1/asn_buf.h"
#include "orma/asn1/asn_sequence.h"

enum class FieldType : unsigned char { Integer, OctetString, Sequence, List };
enum class Holding : unsigned char { Value, RequiredPointer, OptionalPointer };

struct FieldPlan {
  // The tag that the field begins with, its first byte topmost.
  unsigned int tag(AsnTagging tagging) const { return tags[static_cast<std::size_t>(tagging)]; }
  bool isTagged() const { return number >= 0; }
  bool isWrapped(AsnTagging tagging) const { return isTagged() && tagging == AsnTagging::Explicit; }

  FieldType type;
  Holding holding;
  unsigned short position;           // in the object
  short number;                      // of the context tag, or -1
  unsigned int ownTag;               // of the field's type
  std::array<unsigned int, 2> tags;  // by AsnTagging
  const char* name;
  refl::Creator creator;  // of what is held by pointer
  refl::Destroyer destroyer;
  const refl::CClassInfor* described;  // of a sequence
};

class SequencePlan : public refl::CCompiledForm {
 public:
  explicit SequencePlan(const refl::CClassInfor& infor);
  ~SequencePlan() override;

  // Whether a field of this sequence has that tag, in either tagging.
  bool names(unsigned int tag) const;

  const char* name;
  std::vector<FieldPlan> fields;
};

// The plan of an object's class, which is made at first use.
const SequencePlan& planOf(const AsnSequence& sequence);
// The plan of a sequence that is a field.
inline const SequencePlan& planOf(const FieldPlan& field, const AsnSequence& value) {
  const auto* plan = static_cast<const SequencePlan*>(field.described->compiledForm());
  return plan != nullptr ? *plan : planOf(value);
}
