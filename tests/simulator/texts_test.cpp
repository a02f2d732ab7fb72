#include <gtest/gtest.h>

#include <limits>

#include "json_writer.h"
#include "support.h"
#include "utf8.h"

namespace ormasim::testing {
namespace {

std::string asJson(std::string_view text) {
  std::string out;
  appendJsonText(out, text);
  return out;
}

TEST(JsonTextTest, PlainTextStaysAsItIs) {
  EXPECT_EQ(asJson(""), "\"\"");
  EXPECT_EQ(asJson("core-1 北京 Zürich /"), "\"core-1 北京 Zürich /\"");
}

TEST(JsonTextTest, WhatJsonForbidsIsEscaped) {
  EXPECT_EQ(asJson("a\"b\\c\nd\te\x01\x1F"), R"("a\"b\\c\nd\te\u0001\u001f")");
  EXPECT_EQ(asJson(std::string_view("\0x", 2)), R"("\u0000x")");
  EXPECT_EQ(asJson("\""), R"("\"")");
}

TEST(JsonTextTest, EveryAsciiCharacterReadsBackAsItWas) {
  std::string all;
  for (int character = 0; character < 128; ++character) all += static_cast<char>(character);
  EXPECT_EQ(json("[" + asJson(all) + "]")[0].asString(), all);
}

TEST(JsonTextTest, NumbersAreWrittenInFull) {
  std::string out;
  appendJsonNumber(out, std::numeric_limits<std::int64_t>::min());
  appendMember(out, "k", 0);
  EXPECT_EQ(out, "-9223372036854775808\"k\":0");
}

TEST(Utf8Test, WellFormedTextHasNoInvalidByte) {
  for (const char* text : {"", "a", "é", "北", "😀", "\xED\x9F\xBF", "\xEE\x80\x80",
                           "\xF4\x8F\xBF\xBF", "\xC2\x80", "\xE0\xA0\x80", "\xF0\x90\x80\x80"}) {
    EXPECT_EQ(findInvalidUtf8(text), std::string_view::npos) << text;
  }
}

TEST(Utf8Test, MalformedByteIsFoundAtItsPlace) {
  const char* const malformed[] = {"ab\x80",         "ab\xC3",         "ab\xC0\xAF",
                                   "ab\xE0\x80\x80", "ab\xED\xA0\x80", "ab\xF4\x90\x80\x80",
                                   "ab\xE5\x8C",     "ab\xFF",         "ab\xF0\x80\x80\x80",
                                   "ab\xC3(",        "ab\xE5(\x97",    "ab\xF5\x80\x80\x80"};
  for (const char* text : malformed) EXPECT_EQ(findInvalidUtf8(text), 2u) << text;
}

}  // namespace
}  // namespace ormasim::testing
