// Tells well-formed UTF-8 from anything else, for texts that come from outside.
//
//   while (!rest.empty()) {
//     std::size_t length = orma::utf8SequenceLength(rest);  // 0: the first byte starts nothing
//     valid
//     ...
//   }
//
// Thread-safety: immutable. Nothing fails: no length, no well-formed character.
#pragma once

#include <cstddef>
#include <string_view>

namespace orma {

// Bytes of the character at the start of `text`: 1 to 4, or 0 when there is no well-formed one
// (overlong forms, surrogates, values above U+10FFFF and cut sequences are not well-formed).
inline std::size_t utf8SequenceLength(std::string_view text) {
  const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (text.empty()) return 0;
  const unsigned char lead = byteAt(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  // The second byte's range shuts out overlong forms, surrogates and values that are too high.
  const unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (byteAt(1) < low || byteAt(1) > high) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (byteAt(i) < 0x80 || byteAt(i) > 0xBF) return 0;
  }
  return length;
}

}  // namespace orma
