#include "arguments.h"

#include <gtest/gtest.h>

#include <string>

namespace ormaagent {
namespace {

TEST(Arguments, WholeNumbersAreTakenInTheirRange) {
  EXPECT_TRUE(accepts(ArgumentType::kInt64, "9223372036854775807"));
  EXPECT_TRUE(accepts(ArgumentType::kInt64, "-9223372036854775808"));
  EXPECT_FALSE(accepts(ArgumentType::kInt64, "9223372036854775808"));
  EXPECT_TRUE(accepts(ArgumentType::kInt32, "-2147483648"));
  EXPECT_FALSE(accepts(ArgumentType::kInt32, "2147483648"));
  EXPECT_TRUE(accepts(ArgumentType::kUint32, "4294967295"));
  EXPECT_FALSE(accepts(ArgumentType::kUint32, "4294967296"));
  EXPECT_FALSE(accepts(ArgumentType::kUint32, "-1"));
}

TEST(Arguments, AnythingBesideTheNumberIsRefused) {
  for (const char* text : {"", " 12", "12 ", "+12", "0x12", "12a", "1.5", "1e3", "-", "١"}) {
    EXPECT_FALSE(accepts(ArgumentType::kInt64, text)) << '"' << text << '"';
  }
}

TEST(Arguments, ErrorCodesComeInThreeBases) {
  EXPECT_EQ(parseErrorCode("1092091908"), 0x41180004u);
  EXPECT_EQ(parseErrorCode("0x41180004"), 0x41180004u);
  EXPECT_EQ(parseErrorCode("0X411800cc"), 0x411800CCu);
  EXPECT_EQ(parseErrorCode("020"), 16u);
  EXPECT_EQ(parseErrorCode("0"), 0u);
  EXPECT_EQ(parseErrorCode("0xFFFFFFFFFFFFFFFF"), 0xFFFFFFFFFFFFFFFFu);
}

TEST(Arguments, WhatIsNoErrorCodeIsRefused) {
  for (const char* text : {"", "0x", "0xG", "08", "-1", "0x-1", "18446744073709551616", "code"}) {
    EXPECT_EQ(parseErrorCode(text), std::nullopt) << '"' << text << '"';
  }
}

TEST(Arguments, AnyTextIsAText) {
  EXPECT_TRUE(accepts(ArgumentType::kText, ""));
  EXPECT_TRUE(accepts(ArgumentType::kText, "\xba\xcb"));
}

TEST(Arguments, KindsOfTextHaveTheirConditions) {
  EXPECT_FALSE(accepts(ArgumentType::kNonEmpty, ""));
  EXPECT_TRUE(accepts(ArgumentType::kNonEmpty, "/"));
  for (const char* name : {"a.svg", "/tmp/a.dot", "..dot"}) {
    EXPECT_TRUE(accepts(ArgumentType::kPicture, name)) << name;
  }
  for (const char* name : {"", "svg", ".svg", "a.SVG", "a.png", "a.svg "}) {
    EXPECT_FALSE(accepts(ArgumentType::kPicture, name)) << name;
  }
}

TEST(Arguments, AWaitIsADayAtMost) {
  EXPECT_TRUE(accepts(ArgumentType::kSeconds, "0"));
  EXPECT_TRUE(accepts(ArgumentType::kSeconds, "86400"));
  for (const char* text : {"", "86401", "-1", "1.5", "4294967296"}) {
    EXPECT_FALSE(accepts(ArgumentType::kSeconds, text)) << text;
  }
}

TEST(Arguments, OptionsAreFoundByName) {
  const Arguments arguments({}, {{"--wait", "12"}});
  EXPECT_EQ(arguments.count(), 0u);
  EXPECT_EQ(arguments.numberOption<int>("--wait"), 12);
  EXPECT_THROW(arguments.option("--out"), std::logic_error);
}

TEST(Arguments, ValuesComeOutAsTheOperationsTakeThem) {
  const Arguments arguments({"-5", "0x10", "core 1"});
  EXPECT_EQ(arguments.number<long>(0), -5);
  EXPECT_EQ(arguments.errorCode(1), 16u);
  EXPECT_EQ(arguments.text(2), "core 1");
  EXPECT_THROW(arguments.number<int>(2), std::logic_error);
}

}  // namespace
}  // namespace ormaagent
