#include "orma/asn1/asn_int.h"

#include "ber_inline.h"

AsnInt::~AsnInt() = default;

AsnInt* AsnInt::clone() const { return new AsnInt(*this); }

void AsnInt::BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum /*format*/) {
  const unsigned char* start = buffer.position();
  if (readTag(buffer) != kIntegerTag) failAsn(kAsnWrongTag, __LINE__);
  value_ = readInteger(buffer, readLength(buffer));
  bytes += static_cast<unsigned long>(buffer.position() - start);
}

unsigned long AsnInt::BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum /*format*/) const {
  return writeHeader(buffer, kIntegerTag, writeInteger(buffer, value_));
}

void AsnInt::Print(std::ostream& out, unsigned int /*level*/, bool /*newLine*/) const {
  out << value_;
}

const char* AsnInt::typeName() const { return "AsnInt"; }
