#include "orma/bundle/utf8.h"

#include <gtest/gtest.h>

namespace {

using orma::utf8SequenceLength;

TEST(Utf8SequenceLength, WellFormedCharactersHaveTheirLength) {
  EXPECT_EQ(utf8SequenceLength("a"), 1u);
  EXPECT_EQ(utf8SequenceLength(std::string_view("\0", 1)), 1u);
  EXPECT_EQ(utf8SequenceLength("\x7F"), 1u);
  EXPECT_EQ(utf8SequenceLength("\xC2\x80"), 2u);
  EXPECT_EQ(utf8SequenceLength("\xDF\xBF"), 2u);
  EXPECT_EQ(utf8SequenceLength("\xE0\xA0\x80"), 3u);
  EXPECT_EQ(utf8SequenceLength("\xED\x9F\xBF"), 3u);
  EXPECT_EQ(utf8SequenceLength("\xEF\xBF\xBF"), 3u);
  EXPECT_EQ(utf8SequenceLength("\xF0\x90\x80\x80"), 4u);
  EXPECT_EQ(utf8SequenceLength("\xF4\x8F\xBF\xBF"), 4u);
}

TEST(Utf8SequenceLength, OnlyTheFirstCharacterCounts) {
  EXPECT_EQ(utf8SequenceLength("\xE4\xB8\xAD\xFF"), 3u);
}

TEST(Utf8SequenceLength, EverythingElseHasNone) {
  for (const char* text : {"", "\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF",
                           "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
                           "\xF5\x80\x80\x80", "\xFF", "\xC3(", "\xE4\xB8(", "\xF0\x9F\x98("}) {
    EXPECT_EQ(utf8SequenceLength(text), 0u) << text;
  }
}

TEST(Utf8SequenceLength, EveryCutOfACharacterHasNone) {
  for (const std::string_view whole : {"\xC3\xA9", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"}) {
    for (std::size_t cut = 1; cut < whole.size(); ++cut) {
      EXPECT_EQ(utf8SequenceLength(whole.substr(0, cut)), 0u) << whole << " at " << cut;
    }
  }
}

}  // namespace
