#include <gmock/gmock.h>

#include <climits>
#include <string>

#include "codec.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_octs.h"

namespace {

struct IntegerCase {
  int value;
  const char* hex;
};

class IntegerBytes : public testing::TestWithParam<IntegerCase> {};

TEST_P(IntegerBytes, AreTheFewestThatHoldTheValue) {
  EXPECT_EQ(encodedHex(AsnInt(GetParam().value)), GetParam().hex);
}

TEST_P(IntegerBytes, AreReadBack) {
  AsnInt value(77);
  const Bytes bytes = fromHex(GetParam().hex);
  EXPECT_EQ(decode(value, bytes), all(bytes.size()));
  EXPECT_EQ(static_cast<int>(value), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Asn1, IntegerBytes,
    testing::Values(
        IntegerCase{0, "02 01 00"}, IntegerCase{1, "02 01 01"}, IntegerCase{-1, "02 01 FF"},
        IntegerCase{127, "02 01 7F"}, IntegerCase{128, "02 02 00 80"},
        IntegerCase{-128, "02 01 80"}, IntegerCase{-129, "02 02 FF 7F"},
        IntegerCase{255, "02 02 00 FF"}, IntegerCase{256, "02 02 01 00"},
        IntegerCase{32767, "02 02 7F FF"}, IntegerCase{32768, "02 03 00 80 00"},
        IntegerCase{-32768, "02 02 80 00"}, IntegerCase{-32769, "02 03 FF 7F FF"},
        IntegerCase{8388607, "02 03 7F FF FF"}, IntegerCase{8388608, "02 04 00 80 00 00"},
        IntegerCase{-8388608, "02 03 80 00 00"}, IntegerCase{-8388609, "02 04 FF 7F FF FF"},
        IntegerCase{INT_MAX, "02 04 7F FF FF FF"}, IntegerCase{INT_MIN, "02 04 80 00 00 00"}));

class TolerantInteger : public testing::TestWithParam<IntegerCase> {};

TEST_P(TolerantInteger, IsTaken) {
  AsnInt value(77);
  const Bytes bytes = fromHex(GetParam().hex);
  EXPECT_EQ(decode(value, bytes), all(bytes.size()));
  EXPECT_EQ(static_cast<int>(value), GetParam().value);
}

// Unsigned values keep their bit pattern; leading bytes may be redundant.
INSTANTIATE_TEST_SUITE_P(Asn1, TolerantInteger,
                         testing::Values(IntegerCase{INT_MIN, "02 05 00 80 00 00 00"},
                                         IntegerCase{-1, "02 05 00 FF FF FF FF"},
                                         IntegerCase{5, "02 02 00 05"},
                                         IntegerCase{5, "02 08 00 00 00 00 00 00 00 05"},
                                         IntegerCase{-5, "02 08 FF FF FF FF FF FF FF FB"},
                                         IntegerCase{-1, "02 08 00 00 00 00 FF FF FF FF"},
                                         IntegerCase{INT_MIN, "02 08 FF FF FF FF 80 00 00 00"},
                                         IntegerCase{5, "02 81 01 05"},
                                         IntegerCase{5, "02 84 00 00 00 01 05"}));

struct FailureCase {
  const char* hex;
  Decoded result;
};

void PrintTo(const FailureCase& failure, std::ostream* out) { *out << failure.hex; }

class BadInteger : public testing::TestWithParam<FailureCase> {};

TEST_P(BadInteger, IsRefusedAndChangesNothing) {
  AsnInt value(77);
  EXPECT_EQ(decode(value, GetParam().hex), GetParam().result);
  EXPECT_EQ(static_cast<int>(value), 77);
}

INSTANTIATE_TEST_SUITE_P(
    Asn1, BadInteger,
    testing::Values(FailureCase{"", {kAsnEndOfInput, 0, 0, true}},
                    FailureCase{"02", {kAsnEndOfInput, 0, 0, true}},
                    FailureCase{"02 01", {kAsnEndOfInput, 0, 0, true}},
                    FailureCase{"02 02 01", {kAsnEndOfInput, 0, 1, true}},
                    FailureCase{"02 00", {kAsnBadInteger, 0, 0, false}},
                    FailureCase{"02 80 00 00", {kAsnBadLength, 0, 2, false}},
                    FailureCase{"02 05 01 00 00 00 00", {kAsnBadInteger, 0, 5, false}},
                    FailureCase{"02 05 FF 7F FF FF FF", {kAsnBadInteger, 0, 5, false}},
                    FailureCase{"02 08 7F FF FF FF FF FF FF FF", {kAsnBadInteger, 0, 8, false}},
                    FailureCase{"02 08 80 00 00 00 00 00 00 00", {kAsnBadInteger, 0, 8, false}},
                    FailureCase{"02 09 00 00 00 00 00 00 00 00 05", {kAsnBadInteger, 0, 9, false}},
                    FailureCase{"04 01 05", {kAsnWrongTag, 0, 2, false}},
                    FailureCase{"22 01 05", {kAsnWrongTag, 0, 2, false}},
                    FailureCase{"82 01 05", {kAsnWrongTag, 0, 2, false}},
                    FailureCase{"00 00", {kAsnWrongTag, 0, 1, false}},
                    FailureCase{"1F 02 01 05", {kAsnWrongTag, 0, 2, false}},
                    FailureCase{"02 FF 05", {kAsnBadLength, 0, 1, false}},
                    FailureCase{"02 84 FF FF FF FF 05", {kAsnEndOfInput, 0, 1, true}},
                    FailureCase{"02 85 01 00 00 00 00 05", {kAsnEndOfInput, 0, 1, true}},
                    FailureCase{"02 89 01 00 00 00 00 00 00 00 00", {kAsnBadLength, 0, 0, false}},
                    FailureCase{"02 88 FF FF FF FF FF FF FF FF 05", {kAsnBadLength, 0, 1, false}}));

TEST(AsnInt, IsAnInt) {
  AsnInt value;
  EXPECT_EQ(static_cast<int>(value), 0);
  value.Set(5);
  const AsnInt copy(value);
  value = -3;
  EXPECT_EQ(copy - 1, 4);
  EXPECT_EQ(value - -1, -2);
  EXPECT_TRUE(value < copy);
  EXPECT_FALSE(copy < copy);
  value = copy;
  EXPECT_EQ(static_cast<int>(value), 5);
}

TEST(AsnInt, SubtractionWrapsAround) { EXPECT_EQ(AsnInt(INT_MIN) - 1, INT_MAX); }

TEST(AsnInt, HasTextNameAndClone) {
  const AsnInt value(-42);
  EXPECT_EQ(printed(value), "-42");
  EXPECT_STREQ(value.typeName(), "AsnInt");
  const std::unique_ptr<AsnInt> copy(value.clone());
  EXPECT_EQ(static_cast<int>(*copy), -42);
}

class OctetStringLength : public testing::TestWithParam<unsigned long> {};

// The header by the rules: one byte up to 127, else a count and as few bytes as it takes.
Bytes header(unsigned long length) {
  if (length <= 127) return {4, static_cast<unsigned char>(length)};
  if (length <= 255) return {4, 0x81, static_cast<unsigned char>(length)};
  if (length <= 65535) {
    return {4, 0x82, static_cast<unsigned char>(length >> 8), static_cast<unsigned char>(length)};
  }
  return {4, 0x83, static_cast<unsigned char>(length >> 16),
          static_cast<unsigned char>(length >> 8), static_cast<unsigned char>(length)};
}

TEST_P(OctetStringLength, IsWrittenInTheShortestForm) {
  const std::string text(GetParam(), 'x');
  Bytes expected = header(GetParam());
  expected.insert(expected.end(), text.begin(), text.end());
  EXPECT_EQ(encoded(AsnOcts(text.c_str())), expected);
}

TEST_P(OctetStringLength, IsReadBack) {
  const std::string text(GetParam(), 'x');
  const Bytes bytes = encoded(AsnOcts(text.c_str()));
  AsnOcts value("before");
  EXPECT_EQ(decode(value, bytes), all(bytes.size()));
  EXPECT_EQ(value.bytes(), refl::CBinary(text.data(), text.size()));
  EXPECT_EQ(value.bytes().data()[text.size()], '\0');
}

INSTANTIATE_TEST_SUITE_P(Asn1, OctetStringLength,
                         testing::Values(0, 1, 22, 23, 24, 126, 127, 128, 129, 254, 255, 256, 257,
                                         65534, 65535, 65536, 65537, 100000));

class BadOctetString : public testing::TestWithParam<FailureCase> {};

TEST_P(BadOctetString, IsRefusedAndChangesNothing) {
  AsnOcts value("before");
  EXPECT_EQ(decode(value, GetParam().hex), GetParam().result);
  EXPECT_STREQ(value.bytes().data(), "before");
}

INSTANTIATE_TEST_SUITE_P(
    Asn1, BadOctetString,
    testing::Values(FailureCase{"", {kAsnEndOfInput, 0, 0, true}},
                    FailureCase{"04", {kAsnEndOfInput, 0, 0, true}},
                    FailureCase{"04 03 61 62", {kAsnEndOfInput, 0, 2, true}},
                    FailureCase{"04 82 01", {kAsnEndOfInput, 0, 0, true}},
                    FailureCase{"04 84 FF FF FF FF 61", {kAsnEndOfInput, 0, 1, true}},
                    FailureCase{"04 85 01 00 00 00 00 61", {kAsnEndOfInput, 0, 1, true}},
                    FailureCase{"04 88 7F FF FF FF FF FF FF FF 61", {kAsnEndOfInput, 0, 1, true}},
                    FailureCase{"04 88 80 00 00 00 00 00 00 00 61", {kAsnBadLength, 0, 1, false}},
                    FailureCase{"04 80 04 01 61 00 00", {kAsnBadLength, 0, 5, false}},
                    FailureCase{"24 03 04 01 61", {kAsnWrongTag, 0, 4, false}},
                    FailureCase{"02 01 61", {kAsnWrongTag, 0, 2, false}}));

TEST(AsnOcts, IsResetFromTextsStringsAndBytes) {
  AsnOcts value("a text of more than twenty-three bytes");
  value.ReSet("short");
  EXPECT_STREQ(value.bytes().data(), "short");
  value.ReSet(AsnOcts("other"));
  EXPECT_STREQ(value.bytes().data(), "other");
  value.ReSet("a\0b", 3);
  EXPECT_EQ(value.bytes(), refl::CBinary("a\0b", 3));
  EXPECT_EQ(encodedHex(value), "04 03 61 00 62");
  value.ReSet(nullptr);
  EXPECT_TRUE(value.bytes().empty());
}

TEST(AsnOcts, HasTextNameAndClone) {
  AsnOcts value;
  value.ReSet("a\"b\\ \n\x7f\xc3\xa9\0", 10);
  EXPECT_EQ(printed(value), "\"a\\\"b\\\\ \\x0A\\x7F\xc3\xa9\\x00\"");
  EXPECT_STREQ(value.typeName(), "AsnOcts");
  const std::unique_ptr<AsnOcts> copy(value.clone());
  EXPECT_EQ(copy->bytes(), value.bytes());
}

}  // namespace
