#include "codec.h"

#include <cctype>
#include <cstring>
#include <ostream>
#include <sstream>
#include <stdexcept>

Bytes fromHex(std::string_view text) {
  std::string digits;
  for (const char c : text) {
    if (std::isxdigit(static_cast<unsigned char>(c)) != 0) digits += c;
  }
  if (digits.size() % 2 != 0) throw std::invalid_argument("half a byte");
  Bytes bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes.push_back(static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

std::string toHex(const Bytes& bytes) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string text;
  for (const unsigned char byte : bytes) {
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xF];
  }
  return text;
}

Bytes encoded(const AsnType& value, AsnTagging tagging) {
  AsnBuf buffer(tagging);
  const unsigned long length = value.BEnc(buffer, NIClass_EncodingFormat_BER);
  if (length != buffer.size()) throw std::logic_error("BEnc gave another length than it wrote");
  return {buffer.data(), buffer.data() + buffer.size()};
}

std::string encodedHex(const AsnType& value, AsnTagging tagging) {
  return toHex(encoded(value, tagging));
}

std::ostream& operator<<(std::ostream& out, const Decoded& decoded) {
  return out << "code " << decoded.code << ", " << decoded.count << " bytes, " << decoded.left
             << " left" << (decoded.readError ? ", read error" : "");
}

Decoded decode(AsnType& value, const Bytes& bytes, AsnTagging tagging) {
  const std::unique_ptr<unsigned char[]> exact(new unsigned char[bytes.size()]);
  if (!bytes.empty()) std::memcpy(exact.get(), bytes.data(), bytes.size());
  AsnBuf buffer(exact.get(), bytes.size(), tagging);
  Decoded result;
  result.code = failureCode([&] { value.BDec(buffer, result.count, NIClass_EncodingFormat_BER); });
  result.left = buffer.remaining();
  result.readError = buffer.readError();
  return result;
}

Decoded decode(AsnType& value, std::string_view hex, AsnTagging tagging) {
  return decode(value, fromHex(hex), tagging);
}

std::string printed(const AsnType& value) {
  std::ostringstream out;
  value.Print(out);
  return out.str();
}
