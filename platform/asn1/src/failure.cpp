#include "failure.h"

#include <array>

namespace {

struct FailureText {
  AsnErrorCode code;
  const char* message;
};

constexpr std::array<FailureText, 8> kFailureTexts = {{
    {kAsnEndOfInput, "The bytes end inside a value"},
    {kAsnWrongTag, "A field has another tag than the one that is due"},
    {kAsnBadTag, "A tag is longer than four bytes or written too long"},
    {kAsnBadLength, "A length is too large or of a form that its type does not have"},
    {kAsnBadInteger, "An integer is empty, too long or out of range"},
    {kAsnTooDeep, "Values are nested too deep"},
    {kAsnBadEndOfContents, "An end-of-contents mark is broken, or stands where none is due"},
    {kAsnIncomplete, "A required field has no value to encode"},
}};

const char* messageOf(AsnErrorCode code) {
  for (const FailureText& text : kFailureTexts) {
    if (text.code == code) return text.message;
  }
  return "";
}

}  // namespace

void failAsn(AsnErrorCode code, long line) {
  throw new CSM_Exception(code, line, "", "asn1", messageOf(code), nullptr);
}
