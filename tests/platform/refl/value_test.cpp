#include "orma/refl/value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using refl::CValue;

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

CValue integer(std::int64_t value) { return CValue(value); }
CValue text(const std::string& value) { return CValue(value); }

template <typename Conversion>
std::string refusal(Conversion conversion) {
  try {
    conversion();
  } catch (const std::range_error& failure) {
    return failure.what();
  }
  return "";
}

TEST(Value, KnowsItsType) {
  EXPECT_EQ(CValue().type(), CValue::Type::Empty);
  EXPECT_EQ(integer(1).type(), CValue::Type::Integer);
  EXPECT_EQ(CValue(1.0).type(), CValue::Type::Real);
  EXPECT_EQ(text("").type(), CValue::Type::Text);
  EXPECT_EQ(CValue(refl::Bytes()).type(), CValue::Type::Binary);
}

TEST(Value, OnlyAValueWithoutTypeIsEmpty) {
  EXPECT_TRUE(CValue().isEmpty());
  EXPECT_FALSE(text("").isEmpty());
  EXPECT_FALSE(integer(0).isEmpty());
  EXPECT_FALSE(CValue(refl::Bytes()).isEmpty());
}

TEST(Value, EqualityIsThatOfTypeAndValue) {
  const std::vector<CValue> different = {
      CValue(), integer(1), integer(2), CValue(1.0), text("1"), text(""), CValue(refl::Bytes{'1'})};
  for (std::size_t i = 0; i < different.size(); ++i) {
    for (std::size_t j = 0; j < different.size(); ++j) {
      EXPECT_EQ(different[i] == different[j], i == j) << i << " " << j;
      EXPECT_EQ(different[i] != different[j], i != j) << i << " " << j;
    }
  }
}

TEST(Value, IntegerIsTakenFromWhateverIsOneExactly) {
  EXPECT_EQ(integer(kLowest).asInteger(), kLowest);
  EXPECT_EQ(CValue(-3.0).asInteger(), -3);
  EXPECT_EQ(CValue(-9223372036854775808.0).asInteger(), kLowest);
  EXPECT_EQ(text("9223372036854775807").asInteger(), kHighest);
  EXPECT_EQ(text("-12").asInteger(), -12);
}

TEST(Value, WhatIsNoIntegerIsRefused) {
  const std::vector<CValue> others = {CValue(),
                                      CValue(1.5),
                                      CValue(9223372036854775808.0),
                                      CValue(std::nan("")),
                                      CValue(std::numeric_limits<double>::infinity()),
                                      text(""),
                                      text(" 1"),
                                      text("1 "),
                                      text("+1"),
                                      text("1.0"),
                                      text("0x1"),
                                      text("9223372036854775808"),
                                      CValue(refl::Bytes{'1'})};
  for (const CValue& other : others) EXPECT_THROW(other.asInteger(), std::range_error);
}

TEST(Value, IntegerOutsideTheAskedRangeIsRefusedAndNotCut) {
  EXPECT_EQ(integer(0).asInteger(0, 65535), 0);
  EXPECT_EQ(integer(65535).asInteger(0, 65535), 65535);
  EXPECT_EQ(refusal([] { integer(65536).asInteger(0, 65535); }),
            "65536 is not between 0 and 65535");
  EXPECT_EQ(refusal([] { integer(-1).asInteger(0, 65535); }), "-1 is not between 0 and 65535");
}

TEST(Value, RealIsTakenFromRealsAndFromIntegersThatADoubleHolds) {
  EXPECT_EQ(CValue(0.1).asReal(), 0.1);
  EXPECT_EQ(integer(9007199254740992).asReal(), 9007199254740992.0);
  EXPECT_THROW(integer(9007199254740993).asReal(), std::range_error);
  EXPECT_THROW(integer(kHighest).asReal(), std::range_error);
  EXPECT_THROW(text("1.5").asReal(), std::range_error);
  EXPECT_THROW(CValue().asReal(), std::range_error);
}

TEST(Value, TextIsTakenFromTextsAndIntegers) {
  EXPECT_EQ(text(std::string("a\0b", 3)).asText(), std::string("a\0b", 3));
  EXPECT_EQ(integer(kLowest).asText(), "-9223372036854775808");
  EXPECT_THROW(CValue(1.0).asText(), std::range_error);
  EXPECT_THROW(CValue().asText(), std::range_error);
  EXPECT_THROW(CValue(refl::Bytes{'a'}).asText(), std::range_error);
}

TEST(Value, BytesAreTakenFromBytesOnly) {
  EXPECT_EQ(CValue(refl::Bytes{0, 255}).asBytes(), (refl::Bytes{0, 255}));
  EXPECT_THROW(text("a").asBytes(), std::range_error);
}

TEST(Value, RefusalNamesTheTypesAndNotTheValue) {
  EXPECT_EQ(refusal([] { text("secret").asInteger(); }),
            "a value of type text cannot be taken as an integer");
  EXPECT_EQ(refusal([] { CValue().asText(); }), "a value of type empty cannot be taken as a text");
}

}  // namespace
