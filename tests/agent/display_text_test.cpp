#include "display_text.h"

#include <gtest/gtest.h>

#include <ostream>

namespace ormaagent {

bool operator==(const DisplayText& one, const DisplayText& other) {
  return one.bytes == other.bytes && one.width == other.width;
}

void PrintTo(const DisplayText& text, std::ostream* out) {
  *out << '"' << text.bytes << "\", width " << text.width;
}

namespace {

using namespace std::string_literals;

DisplayText utf8(std::string_view text) { return displayText(text, CharacterSet::kUtf8); }
DisplayText gbk(std::string_view text) { return displayText(text, CharacterSet::kGbk); }
DisplayText latin1(std::string_view text) { return displayText(text, CharacterSet::kLatin1); }

TEST(DisplayText, PlainTextStays) {
  EXPECT_EQ(utf8("core-1 \\ \"x\""), (DisplayText{"core-1 \\ \"x\"", 12}));
  EXPECT_EQ(utf8(""), (DisplayText{"", 0}));
}

TEST(DisplayText, ChineseCharactersTakeTwoColumns) {
  EXPECT_EQ(utf8("核心-1"), (DisplayText{"核心-1", 6}));
  EXPECT_EQ(utf8("Ａ、。"), (DisplayText{"Ａ、。", 6}));
  EXPECT_EQ(utf8("\U00020000"), (DisplayText{"\U00020000", 2}));
}

TEST(DisplayText, AccentedLettersTakeOneColumnAndCombiningMarksNone) {
  EXPECT_EQ(utf8("Zürich"), (DisplayText{"Zürich", 6}));
  EXPECT_EQ(utf8("u\u0308"), (DisplayText{"u\u0308", 1}));
}

TEST(DisplayText, ControlsOfBothRangesAreEscapedByteForByte) {
  EXPECT_EQ(utf8("a\x1b[2J\n"), (DisplayText{"a\\x1B[2J\\x0A", 12}));
  EXPECT_EQ(utf8("\0\x7f"s), (DisplayText{"\\x00\\x7F", 8}));
  EXPECT_EQ(utf8("\u009b2J"), (DisplayText{"\\xC2\\x9B2J", 10}));
}

TEST(DisplayText, MarksOfWritingDirectionAreEscaped) {
  EXPECT_EQ(utf8("\u202e"), (DisplayText{"\\xE2\\x80\\xAE", 12}));
}

TEST(DisplayText, BytesThatAreNoUtf8AreEscaped) {
  EXPECT_EQ(utf8("\xba\xcb"), (DisplayText{"\\xBA\\xCB", 8}));
  EXPECT_EQ(utf8("\xe6\xa0"), (DisplayText{"\\xE6\\xA0", 8}));
  EXPECT_EQ(utf8("\xc0\xaf"), (DisplayText{"\\xC0\\xAF", 8}));
  EXPECT_EQ(utf8("\xed\xa0\x80"), (DisplayText{"\\xED\\xA0\\x80", 12}));
}

TEST(DisplayText, GbkPairsStayAndTakeTwoColumns) {
  EXPECT_EQ(gbk("\xba\xcb\xd0\xc4-1"), (DisplayText{"\xba\xcb\xd0\xc4-1", 6}));
  // The second byte may be an ASCII one.
  EXPECT_EQ(gbk("\x81\x5c"), (DisplayText{"\x81\x5c", 2}));
}

TEST(DisplayText, BytesThatAreNoGbkAreEscaped) {
  EXPECT_EQ(gbk("\xba"), (DisplayText{"\\xBA", 4}));
  EXPECT_EQ(gbk("\xba\x1b"), (DisplayText{"\\xBA\\x1B", 8}));
  EXPECT_EQ(gbk("\x80\xff"), (DisplayText{"\\x80\\xFF", 8}));
}

TEST(DisplayText, Latin1LettersStayAndItsControlsAreEscaped) {
  EXPECT_EQ(latin1("Z\xfcrich"), (DisplayText{"Z\xfcrich", 6}));
  EXPECT_EQ(latin1("\x9b\xa0"), (DisplayText{"\\x9B\xa0", 5}));
}

TEST(ValidUtf8, EscapesOnlyWhatBelongsToNoCharacter) {
  EXPECT_EQ(validUtf8("核\xba\xcb\n"), "核\\xBA\\xCB\n");
  EXPECT_EQ(validUtf8("\xf0\x9f\x98"), "\\xF0\\x9F\\x98");
  EXPECT_EQ(validUtf8(""), "");
}

}  // namespace
}  // namespace ormaagent
