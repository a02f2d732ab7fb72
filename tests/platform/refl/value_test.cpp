#include "orma/refl/value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
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

TEST(Value, ReadFromReplacesTypeAndValue) {
  const std::vector<CValue> values = {CValue(), integer(7), CValue(0.5), text("a"),
                                      CValue(refl::Bytes{0, 255})};
  for (const CValue& from : values) {
    for (CValue into : values) {
      into.ReadFrom(refl::TEValue(from));
      EXPECT_TRUE(into == from);
    }
  }
}

TEST(Value, ReadFromItselfChangesNothing) {
  CValue value = text("a text that lies on the heap, for its length");
  const CValue& itself = value;
  value.ReadFrom(itself);
  EXPECT_EQ(value.asText(), "a text that lies on the heap, for its length");
}

TEST(Value, HandedOverValueIsACopyOfItsOwn) {
  CValue value = text("before");
  const refl::TEValue handed = value;
  value = integer(1);
  EXPECT_EQ(handed.asText(), "before");
}

// A value, the type it is changed to, and what it is then.
struct TypeChange {
  CValue before;
  refl::Enum::DataTypeEnum type;
  CValue after;
};

TEST(Value, TypeIsChangedWhereNothingIsLost) {
  const std::vector<TypeChange> changes = {
      {integer(5), refl::Enum::kDataInteger, integer(5)},
      {integer(5), refl::Enum::kDataReal, CValue(5.0)},
      {integer(-5), refl::Enum::kDataText, text("-5")},
      {CValue(2.0), refl::Enum::kDataInteger, integer(2)},
      {CValue(2.5), refl::Enum::kDataReal, CValue(2.5)},
      {text("12"), refl::Enum::kDataInteger, integer(12)},
      {text("12"), refl::Enum::kDataText, text("12")},
      {text("a\xff"), refl::Enum::kDataBinary, CValue(refl::Bytes{'a', 255})},
      {text(""), refl::Enum::kDataBinary, CValue(refl::Bytes())},
      {CValue(refl::Bytes{1}), refl::Enum::kDataBinary, CValue(refl::Bytes{1})},
      {text("a"), refl::Enum::kDataEmpty, CValue()},
      {CValue(refl::Bytes{1}), refl::Enum::kDataEmpty, CValue()},
      {CValue(), refl::Enum::kDataInteger, CValue()},
      {CValue(), refl::Enum::kDataBinary, CValue()},
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    CValue value = changes[i].before;
    value.ChangeValueTypeEnum(changes[i].type);
    EXPECT_TRUE(value == changes[i].after) << i;
  }
}

TEST(Value, TypeChangeThatWouldLoseOrGuessIsRefusedAndChangesNothing) {
  const std::vector<std::pair<CValue, refl::Enum::DataTypeEnum>> refused = {
      {CValue(2.5), refl::Enum::kDataInteger},
      {text("x"), refl::Enum::kDataInteger},
      {integer(kHighest), refl::Enum::kDataReal},
      {text("2.5"), refl::Enum::kDataReal},
      {CValue(2.5), refl::Enum::kDataText},
      {CValue(refl::Bytes{'a'}), refl::Enum::kDataText},
      {integer(1), refl::Enum::kDataBinary},
      {CValue(1.0), refl::Enum::kDataBinary},
      {integer(1), static_cast<refl::Enum::DataTypeEnum>(5)},
  };
  for (std::size_t i = 0; i < refused.size(); ++i) {
    CValue value = refused[i].first;
    EXPECT_THROW(value.ChangeValueTypeEnum(refused[i].second), std::range_error) << i;
    EXPECT_TRUE(value == refused[i].first) << i;
  }
}

TEST(Value, DataTypesAreNumberedLikeTypes) {
  EXPECT_EQ(static_cast<int>(CValue().type()), refl::Enum::kDataEmpty);
  EXPECT_EQ(static_cast<int>(integer(1).type()), refl::Enum::kDataInteger);
  EXPECT_EQ(static_cast<int>(CValue(1.0).type()), refl::Enum::kDataReal);
  EXPECT_EQ(static_cast<int>(text("").type()), refl::Enum::kDataText);
  EXPECT_EQ(static_cast<int>(CValue(refl::Bytes()).type()), refl::Enum::kDataBinary);
}

}  // namespace
