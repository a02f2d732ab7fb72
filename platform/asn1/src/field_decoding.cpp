#include "ber_inline.h"
#include "field_access.h"
#include "field_codec.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_list_base.h"
#include "orma/asn1/asn_octs.h"

namespace {

constexpr unsigned int kClassBits = 0xC0;
constexpr unsigned int kContextClass = 0x80;

bool atEndOfContents(const AsnBuf& buffer) { return !buffer.atEnd() && *buffer.position() == 0; }

// Whether a sequence of that length, whose bytes the buffer was cut to if it is definite, ends
// here.
bool atEndOfFields(AsnBuf& buffer, unsigned long length) {
  if (length != kAsnIndefiniteLength) return buffer.atEnd();
  return atEndOfContents(buffer);
}

// Reads the tag if it is that one.
bool takeTag(AsnBuf& buffer, unsigned int tag) {
  if (buffer.atEnd() || *buffer.position() != tag >> 24) return false;
  if ((tag >> 24 & kLongTagBits) != kLongTagBits) {
    buffer.skip(1);
    return true;
  }
  const unsigned char* start = buffer.position();
  if (readTag(buffer) == tag) return true;
  buffer.moveTo(start);
  return false;
}

[[noreturn]] void failOnTag(AsnBuf& buffer) {
  if (buffer.atEnd()) {
    buffer.setReadError();
    failAsn(kAsnEndOfInput, __LINE__);
  }
  failAsn(*buffer.position() == 0 ? kAsnBadEndOfContents : kAsnWrongTag, __LINE__);
}

// Reads past the content of a value of any type, nested ones counted in place of recursion.
void skipContent(AsnBuf& buffer, unsigned int tag, unsigned long length) {
  int open = 0;
  for (;;) {
    if (length != kAsnIndefiniteLength) {
      checkLength(buffer, length);
      buffer.skip(length);
    } else {
      if ((tag >> 24 & kConstructedBit) == 0) failAsn(kAsnBadLength, __LINE__);
      if (++open + buffer.levels() > AsnBuf::kMaxLevels) failAsn(kAsnTooDeep, __LINE__);
    }
    for (; open > 0 && atEndOfContents(buffer); --open) {
      unsigned long bytes = 0;
      BDecEoc(buffer, bytes);
    }
    if (open == 0) return;
    tag = readTag(buffer);
    length = readLength(buffer);
  }
}

// A list that finds no byte for a length takes it as 0 and only sets the flag.
void checkList(const AsnBuf& buffer) {
  if (buffer.readError()) failAsn(kAsnEndOfInput, __LINE__);
}

void decodeContent(const FieldPlan& field, void* value, AsnBuf& buffer, unsigned long length) {
  switch (field.type) {
    case FieldType::Integer:
      static_cast<AsnInt*>(value)->Set(readInteger(buffer, length));
      return;
    case FieldType::OctetString:
      checkLength(buffer, length);
      static_cast<AsnOcts*>(value)->ReSet(buffer.position(), length);
      buffer.skip(length);
      return;
    case FieldType::Sequence: {
      auto* sequence = static_cast<AsnSequence*>(value);
      decodeFields(planOf(field, *sequence), sequence, buffer, length);
      return;
    }
    case FieldType::List: {
      const AsnBuf::Level level(buffer);
      unsigned long bytes = 0;
      static_cast<AsnListBase*>(value)->BDecContent(buffer, kAsnSequenceTag, length, bytes,
                                                    NIClass_EncodingFormat_BER);
      checkList(buffer);
      return;
    }
  }
}

// A value under its own tag, inside a context tag that was read.
void decodeWrapped(const FieldPlan& field, void* value, AsnBuf& buffer) {
  const AsnBuf::Level level(buffer);
  const unsigned long length = readLength(buffer);
  const bool isDefinite = length != kAsnIndefiniteLength;
  if (isDefinite) checkLength(buffer, length);
  const AsnBuf::Part part(buffer, isDefinite ? length : buffer.remaining());
  if (!takeTag(buffer, field.ownTag)) failOnTag(buffer);
  decodeContent(field, value, buffer, readLength(buffer));
  if (isDefinite && !buffer.atEnd()) failOnTag(buffer);
  unsigned long bytes = 0;
  if (!isDefinite) BDecEoc(buffer, bytes);
}

// A list under its own tag reads the tag itself, and fails in its own way.
void decodeOwnList(const FieldPlan& field, AsnSequence* object, AsnBuf& buffer) {
  const AsnBuf::Level level(buffer);
  unsigned long bytes = 0;
  static_cast<AsnListBase*>(present(field, object))
      ->BDec(buffer, bytes, NIClass_EncodingFormat_BER);
  checkList(buffer);
}

void decodeField(const FieldPlan& field, AsnSequence* object, AsnBuf& buffer) {
  const bool isRequired = field.holding != Holding::OptionalPointer;
  if (isRequired && field.type == FieldType::List && !field.isTagged()) {
    decodeOwnList(field, object, buffer);
    return;
  }
  if (!takeTag(buffer, field.tag(buffer.tagging()))) {
    if (isRequired) failOnTag(buffer);
    makeAbsent(field, object);
    return;
  }
  void* value = present(field, object);
  if (field.isWrapped(buffer.tagging())) {
    decodeWrapped(field, value, buffer);
  } else {
    decodeContent(field, value, buffer, readLength(buffer));
  }
}

// What stands behind the last field: fields of a later release, under context tags of their own.
void skipUnknownFields(const SequencePlan& plan, AsnBuf& buffer, unsigned long length) {
  while (!atEndOfFields(buffer, length)) {
    if (buffer.atEnd() || *buffer.position() == 0) failOnTag(buffer);
    const unsigned int tag = readTag(buffer);
    const bool isUnknown = (tag >> 24 & kClassBits) == kContextClass && !plan.names(tag);
    if (!isUnknown) failAsn(kAsnWrongTag, __LINE__);
    skipContent(buffer, tag, readLength(buffer));
  }
}

}  // namespace

void decodeFields(const SequencePlan& plan, AsnSequence* object, AsnBuf& buffer,
                  unsigned long length) {
  const AsnBuf::Level level(buffer);
  const bool isDefinite = length != kAsnIndefiniteLength;
  if (isDefinite) checkLength(buffer, length);
  const AsnBuf::Part part(buffer, isDefinite ? length : buffer.remaining());
  for (const FieldPlan& field : plan.fields) decodeField(field, object, buffer);
  skipUnknownFields(plan, buffer, length);
  unsigned long bytes = 0;
  if (!isDefinite) BDecEoc(buffer, bytes);
}
