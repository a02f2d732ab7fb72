#include "json_writer.h"

#include <charconv>

namespace ormasim {
namespace {

bool mustEscape(unsigned char byte) { return byte < 0x20 || byte == '"' || byte == '\\'; }

void appendEscaped(std::string& out, char character) {
  constexpr char kDigits[] = "0123456789abcdef";
  switch (character) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      const auto byte = static_cast<unsigned char>(character);
      out += "\\u00";
      out += kDigits[byte >> 4];
      out += kDigits[byte & 0xF];
  }
}

void appendKey(std::string& out, std::string_view key) {
  out += '"';
  out += key;
  out += "\":";
}

}  // namespace

void appendJsonText(std::string& out, std::string_view text) {
  out += '"';
  // Runs without anything to escape, which is nearly every text, are appended whole.
  std::size_t from = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!mustEscape(static_cast<unsigned char>(text[at]))) continue;
    out.append(text, from, at - from);
    appendEscaped(out, text[at]);
    from = at + 1;
  }
  out.append(text, from, text.size() - from);
  out += '"';
}

void appendJsonNumber(std::string& out, std::int64_t number) {
  char digits[24];
  const auto result = std::to_chars(std::begin(digits), std::end(digits), number);
  out.append(digits, result.ptr);
}

void appendMember(std::string& out, std::string_view key, std::string_view text) {
  appendKey(out, key);
  appendJsonText(out, text);
}

void appendMember(std::string& out, std::string_view key, std::int64_t number) {
  appendKey(out, key);
  appendJsonNumber(out, number);
}

}  // namespace ormasim
