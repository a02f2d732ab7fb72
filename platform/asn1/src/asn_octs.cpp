#include "orma/asn1/asn_octs.h"

#include <cstring>

#include "ber_inline.h"

namespace {

void printByte(std::ostream& out, char byte) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  const auto code = static_cast<unsigned char>(byte);
  if (code < 0x20 || code == 0x7F) {
    out << "\\x" << kDigits[code >> 4] << kDigits[code & 0xF];
    return;
  }
  if (byte == '"' || byte == '\\') out << '\\';
  out << byte;
}

}  // namespace

AsnOcts::~AsnOcts() = default;

void AsnOcts::ReSet(const char* text) {
  if (text == nullptr) return bytes_.clear();
  bytes_.assign(text, std::strlen(text));
}

AsnOcts* AsnOcts::clone() const { return new AsnOcts(*this); }

void AsnOcts::BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum /*format*/) {
  const unsigned char* start = buffer.position();
  if (readTag(buffer) != kOctetStringTag) failAsn(kAsnWrongTag, __LINE__);
  const unsigned long length = readLength(buffer);
  checkLength(buffer, length);
  bytes_.assign(buffer.position(), length);
  buffer.skip(length);
  bytes += static_cast<unsigned long>(buffer.position() - start);
}

unsigned long AsnOcts::BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum /*format*/) const {
  buffer.putBytes(bytes_.data(), bytes_.size());
  return writeHeader(buffer, kOctetStringTag, bytes_.size());
}

void AsnOcts::Print(std::ostream& out, unsigned int /*level*/, bool /*newLine*/) const {
  out << '"';
  for (unsigned long i = 0; i < bytes_.size(); ++i) printByte(out, bytes_.data()[i]);
  out << '"';
}

const char* AsnOcts::typeName() const { return "AsnOcts"; }
