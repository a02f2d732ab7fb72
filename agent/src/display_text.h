// Texts as they may be shown: nothing in them acts on a terminal or breaks a document. A byte that
// may not be shown becomes four characters, a backslash, "x" and two hexadecimal digits.
//
//   DisplayText shown = displayText("核心\x1b[2J", CharacterSet::kUtf8);  // 核心\x1B[2J, width 11
//
// Thread-safety: immutable. Nothing fails: every byte has a form.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ormaagent {

// The sets that the agent hands texts out in, by the number of text.characterSetSwitch.
enum class CharacterSet { kUtf8 = 0, kGbk = 1, kLatin1 = 2 };

struct DisplayText {
  std::string bytes;      // in the character set of the text
  std::size_t width = 0;  // columns on a terminal of that character set
};

// Control characters, marks of writing direction and bytes that are no character of the set are
// escaped; everything else stays as it is.
DisplayText displayText(std::string_view text, CharacterSet characterSet);

// `text` with each byte that belongs to no well-formed UTF-8 character escaped.
std::string validUtf8(std::string_view text);

}  // namespace ormaagent
