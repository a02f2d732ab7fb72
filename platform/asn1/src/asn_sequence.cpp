#include "orma/asn1/asn_sequence.h"

#include <stdexcept>
#include <string>

#include "ber_inline.h"
#include "field_codec.h"
#include "sequence_plan.h"

AsnSequence::~AsnSequence() = default;

void AsnSequence::BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum format) {
  const unsigned char* start = buffer.position();
  if (readTag(buffer) != kAsnSequenceTag) failAsn(kAsnWrongTag, __LINE__);
  const unsigned long length = readLength(buffer);
  bytes += static_cast<unsigned long>(buffer.position() - start);
  BDecContent(buffer, kAsnSequenceTag, length, bytes, format);
}

unsigned long AsnSequence::BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const {
  return writeHeader(buffer, kAsnSequenceTag, BEncContent(buffer, format));
}

void AsnSequence::Print(std::ostream& out, unsigned int level, bool newLine) const {
  printFields(planOf(*this), this, out, level, newLine);
}

const char* AsnSequence::typeName() const { return planOf(*this).name; }

unsigned long AsnSequence::BEncContent(AsnBuf& buffer,
                                       NIClass_EncodingFormatEnum /*format*/) const {
  return encodeFields(planOf(*this), this, buffer);
}

// Whatever tag stood in front of the fields is the caller's business.
void AsnSequence::BDecContent(AsnBuf& buffer, unsigned int /*tag*/, unsigned long length,
                              unsigned long& bytes, NIClass_EncodingFormatEnum /*format*/) {
  const unsigned char* start = buffer.position();
  decodeFields(planOf(*this), this, buffer, length);
  bytes += static_cast<unsigned long>(buffer.position() - start);
}

void AsnSequence::Assign(const AsnSequence& other) {
  if (this == &other) return;
  const SequencePlan& plan = planOf(*this);
  if (&plan != &planOf(other)) {
    throw std::logic_error(std::string("a ") + plan.name + " cannot become a copy of a " +
                           planOf(other).name);
  }
  copyFields(plan, this, &other);
}
