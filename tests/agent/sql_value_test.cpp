#include "sql_value.h"

#include <gtest/gtest.h>

#include <string>

namespace ormaagent {
namespace {

using refl::CValue;

void expectValue(const std::string& text, const CValue& value) {
  const auto parsed = parseSqlValue(text);
  ASSERT_TRUE(parsed.has_value()) << text;
  EXPECT_TRUE(*parsed == value) << text;
}

TEST(SqlValue, WithoutAWordIsAText) {
  expectValue("12", CValue(std::string("12")));
  expectValue("核心 1", CValue(std::string("核心 1")));
  expectValue("integer", CValue(std::string("integer")));
  expectValue("Integer:1", CValue(std::string("Integer:1")));
  expectValue(" null:", CValue(std::string(" null:")));
}

TEST(SqlValue, WordNamesTheType) {
  expectValue("integer:-9223372036854775808", CValue(INT64_MIN));
  expectValue("integer:0", CValue(std::int64_t{0}));
  expectValue("real:0.5", CValue(0.5));
  expectValue("real:-1e3", CValue(-1000.0));
  expectValue("text:", CValue(std::string()));
  expectValue("text:integer:5", CValue(std::string("integer:5")));
  expectValue("bytes:", CValue(refl::Bytes()));
  expectValue("bytes:00fF", CValue(refl::Bytes{0, 255}));
  expectValue("null:", CValue());
}

TEST(SqlValue, WhatIsNoValueOfItsTypeIsNone) {
  for (const char* text :
       {"", "integer:", "integer:1.5", "integer: 1", "integer:9223372036854775808",
        "real:", "real:one", "real:1.5x", "real:inf", "real:nan", "real:1e999", "bytes:0",
        "bytes:0g", "bytes:-1", "null:0"}) {
    EXPECT_FALSE(parseSqlValue(text).has_value()) << text;
  }
}

}  // namespace
}  // namespace ormaagent
