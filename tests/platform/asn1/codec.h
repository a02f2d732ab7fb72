// Encoding and decoding as the tests say them: bytes in hexadecimal, failures by their code.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "orma/asn1/asn_buf.h"
#include "orma/asn1/asn_type.h"
#include "orma/asn1/csm_exception.h"

using Bytes = std::vector<unsigned char>;

// "30 03" with or without blanks.
Bytes fromHex(std::string_view text);
// "30 03".
std::string toHex(const Bytes& bytes);

Bytes encoded(const AsnType& value, AsnTagging tagging = AsnTagging::Implicit);
std::string encodedHex(const AsnType& value, AsnTagging tagging = AsnTagging::Implicit);

// The CSM_Exception that the call throws; null when it throws none.
template <typename Call>
std::unique_ptr<CSM_Exception> failureOf(Call call) {
  try {
    call();
  } catch (CSM_Exception* thrown) {
    return std::unique_ptr<CSM_Exception>(thrown);
  }
  return nullptr;
}

// Its code, or 0.
template <typename Call>
long failureCode(Call call) {
  const auto failure = failureOf(call);
  return failure != nullptr ? failure->code() : 0;
}

struct Decoded {
  long code = 0;  // of the failure; 0: there was none
  unsigned long count = 0;
  unsigned long left = 0;
  bool readError = false;

  bool operator==(const Decoded& other) const {
    return code == other.code && count == other.count && left == other.left &&
           readError == other.readError;
  }
};
std::ostream& operator<<(std::ostream& out, const Decoded& decoded);

// Decodes from a copy of exactly that size, so that the address sanitizer sees a byte too many.
Decoded decode(AsnType& value, const Bytes& bytes, AsnTagging tagging = AsnTagging::Implicit);
Decoded decode(AsnType& value, std::string_view hex, AsnTagging tagging = AsnTagging::Implicit);
// What decoding gives that took all bytes.
inline Decoded all(unsigned long count) { return {0, count, 0, false}; }

std::string printed(const AsnType& value);
