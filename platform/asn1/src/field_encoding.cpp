#include "ber_inline.h"
#include "field_access.h"
#include "field_codec.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_list_base.h"
#include "orma/asn1/asn_octs.h"

namespace {

unsigned long encodeContent(const FieldPlan& field, const void* value, AsnBuf& buffer) {
  switch (field.type) {
    case FieldType::Integer:
      return writeInteger(buffer, *static_cast<const AsnInt*>(value));
    case FieldType::OctetString: {
      const refl::CBinary& bytes = static_cast<const AsnOcts*>(value)->bytes();
      buffer.putBytes(bytes.data(), bytes.size());
      return bytes.size();
    }
    case FieldType::Sequence: {
      const auto* sequence = static_cast<const AsnSequence*>(value);
      return encodeFields(planOf(field, *sequence), sequence, buffer);
    }
    case FieldType::List:
      return static_cast<const AsnListBase*>(value)->BEncContent(buffer,
                                                                 NIClass_EncodingFormat_BER);
  }
  return 0;
}

unsigned long encodeField(const FieldPlan& field, const AsnSequence* object, AsnBuf& buffer) {
  const void* value = valueOf(field, object);
  if (value == nullptr) {
    if (field.holding == Holding::OptionalPointer) return 0;
    failAsn(kAsnIncomplete, __LINE__);
  }
  // A list under its own tag writes the tag itself.
  const bool isOwnList = field.type == FieldType::List && !field.isTagged();
  if (isOwnList) {
    return static_cast<const AsnListBase*>(value)->BEnc(buffer, NIClass_EncodingFormat_BER);
  }
  unsigned long length = encodeContent(field, value, buffer);
  const bool wrapped = field.isWrapped(buffer.tagging());
  if (wrapped) length = writeHeader(buffer, field.ownTag, length);
  return writeHeader(buffer, field.tag(buffer.tagging()), length);
}

}  // namespace

// From the last field to the first, since a buffer is written from its end.
unsigned long encodeFields(const SequencePlan& plan, const AsnSequence* object, AsnBuf& buffer) {
  unsigned long length = 0;
  for (auto field = plan.fields.rbegin(); field != plan.fields.rend(); ++field) {
    length += encodeField(*field, object, buffer);
  }
  return length;
}
