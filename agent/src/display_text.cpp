#include "display_text.h"

#include <algorithm>
#include <iterator>

#include "orma/bundle/utf8.h"

namespace ormaagent {

namespace {

// One character at the start of a text. A length of 0: the first byte starts none.
struct Character {
  std::size_t length = 0;
  std::size_t width = 0;
  bool shown = true;
};

struct CodeRange {
  char32_t first;
  char32_t last;
};

// What no terminal draws, or what changes the order or state of what it draws: controls, marks of
// writing direction, separators of lines, language tags.
constexpr CodeRange kHidden[] = {{0x0000, 0x001F}, {0x007F, 0x009F}, {0x200E, 0x200F},
                                 {0x2028, 0x202E}, {0x2066, 0x206F}, {0xE0000, 0xE007F}};

// Marks that lie over the character before them, and joiners.
constexpr CodeRange kZeroWidth[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489},  {0x0591, 0x05BD}, {0x064B, 0x065F}, {0x0E31, 0x0E31},
    {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E},  {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200D},
    {0x20D0, 0x20FF}, {0x302A, 0x302D},  {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
    {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF}};

// East Asian wide and full-width characters, and the pictures that terminals draw as wide.
constexpr CodeRange kWide[] = {{0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},
                               {0x23E9, 0x23EC},   {0x2E80, 0x303E},   {0x3041, 0x33FF},
                               {0x3400, 0x4DBF},   {0x4E00, 0xA4CF},   {0xA960, 0xA97F},
                               {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE10, 0xFE19},
                               {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},
                               {0x16FE0, 0x18CFF}, {0x1B000, 0x1B2FF}, {0x1F300, 0x1F64F},
                               {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

template <std::size_t count>
bool lies(char32_t code, const CodeRange (&ranges)[count]) {
  return std::any_of(std::begin(ranges), std::end(ranges), [code](const CodeRange& range) {
    return range.first <= code && code <= range.last;
  });
}

unsigned char byteAt(std::string_view text, std::size_t i) {
  return static_cast<unsigned char>(text[i]);
}

// `length` as utf8SequenceLength gave it.
char32_t codeOf(std::string_view text, std::size_t length) {
  constexpr unsigned char kLeadMask[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  char32_t code = byteAt(text, 0) & kLeadMask[length];
  for (std::size_t i = 1; i < length; ++i) code = code << 6 | (byteAt(text, i) & 0x3F);
  return code;
}

Character utf8Character(std::string_view text) {
  const std::size_t length = orma::utf8SequenceLength(text);
  if (length == 0) return {};
  const char32_t code = codeOf(text, length);
  const std::size_t width = lies(code, kZeroWidth) ? 0 : lies(code, kWide) ? 2 : 1;
  return {length, width, !lies(code, kHidden)};
}

Character gbkCharacter(std::string_view text) {
  const unsigned char lead = byteAt(text, 0);
  if (lead < 0x80) return {1, 1, !lies(lead, kHidden)};
  if (lead == 0x80 || lead == 0xFF || text.size() < 2) return {};
  const unsigned char trail = byteAt(text, 1);
  const bool formed = trail >= 0x40 && trail != 0x7F && trail != 0xFF;
  return formed ? Character{2, 2, true} : Character{};
}

Character latin1Character(std::string_view text) { return {1, 1, !lies(byteAt(text, 0), kHidden)}; }

Character firstCharacter(std::string_view text, CharacterSet characterSet) {
  switch (characterSet) {
    case CharacterSet::kGbk:
      return gbkCharacter(text);
    case CharacterSet::kLatin1:
      return latin1Character(text);
    default:
      return utf8Character(text);
  }
}

void appendEscaped(std::string& out, std::string_view bytes) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    out += {'\\', 'x', kDigits[value >> 4], kDigits[value & 15]};
  }
}

constexpr std::size_t kEscapeWidth = 4;

}  // namespace

DisplayText displayText(std::string_view text, CharacterSet characterSet) {
  DisplayText shown;
  shown.bytes.reserve(text.size());
  while (!text.empty()) {
    const Character character = firstCharacter(text, characterSet);
    const std::size_t length = std::max<std::size_t>(character.length, 1);
    if (character.length > 0 && character.shown) {
      shown.bytes += text.substr(0, length);
      shown.width += character.width;
    } else {
      appendEscaped(shown.bytes, text.substr(0, length));
      shown.width += kEscapeWidth * length;
    }
    text.remove_prefix(length);
  }
  return shown;
}

std::string validUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = orma::utf8SequenceLength(text);
    if (length > 0) {
      valid += text.substr(0, length);
    } else {
      appendEscaped(valid, text.substr(0, 1));
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return valid;
}

}  // namespace ormaagent
