#include "orma/asn1/ber.h"

#include <gmock/gmock.h>

#include <array>
#include <memory>
#include <optional>
#include <stdexcept>

#include "codec.h"
#include "orma/asn1/asn_int.h"

namespace {

struct Read {
  long code;
  unsigned long value;
  unsigned long count;

  bool operator==(const Read& other) const {
    return code == other.code && value == other.value && count == other.count;
  }
};

std::ostream& operator<<(std::ostream& out, const Read& read) {
  return out << "code " << read.code << ", value " << read.value << ", " << read.count << " bytes";
}

struct ReadCase {
  unsigned long first;
  const char* rest;
  Read result;
};

void PrintTo(const ReadCase& read, std::ostream* out) {
  *out << std::hex << read.first << " " << read.rest;
}

class LongTag : public testing::TestWithParam<ReadCase> {};

TEST_P(LongTag, HasTwoToFourBytes) {
  const Bytes rest = fromHex(GetParam().rest);
  AsnBuf buffer(rest.data(), rest.size());
  auto tag = static_cast<unsigned int>(GetParam().first << 24);
  Read read{0, 0, 1};
  read.code = failureCode([&] { BDecTag_Impl(buffer, read.count, tag); });
  if (read.code == 0) read.value = tag;
  EXPECT_EQ(read, GetParam().result);
  EXPECT_EQ(buffer.readError(), read.code == kAsnEndOfInput);
}

INSTANTIATE_TEST_SUITE_P(Asn1, LongTag,
                         testing::Values(ReadCase{0x9F, "1F 55", {0, 0x9F1F0000, 2}},
                                         ReadCase{0xBF, "81 48", {0, 0xBF814800, 3}},
                                         ReadCase{0xBF, "81 80 00", {0, 0xBF818000, 4}},
                                         ReadCase{0x9F, "FF FF 7F", {0, 0x9FFFFF7F, 4}},
                                         ReadCase{0x9F, "FF FF FF 7F", {kAsnBadTag, 0, 4}},
                                         ReadCase{0x9F, "80 1F", {kAsnBadTag, 0, 2}},
                                         ReadCase{0x9F, "", {kAsnEndOfInput, 0, 1}},
                                         ReadCase{0x9F, "81", {kAsnEndOfInput, 0, 2}},
                                         ReadCase{0x9F, "81 81", {kAsnEndOfInput, 0, 3}}));

class LongLength : public testing::TestWithParam<ReadCase> {};

TEST_P(LongLength, IsReadFromItsFirstByteOn) {
  const Bytes rest = fromHex(GetParam().rest);
  AsnBuf buffer(rest.data(), rest.size());
  Read read{0, 0, 1};
  read.code = failureCode([&] {
    read.value = BDecLen_Impl(buffer, read.count, static_cast<unsigned char>(GetParam().first));
  });
  EXPECT_EQ(read, GetParam().result);
  EXPECT_EQ(buffer.readError(), read.code == kAsnEndOfInput);
}

INSTANTIATE_TEST_SUITE_P(
    Asn1, LongLength,
    testing::Values(ReadCase{0x80, "00 00", {0, kAsnIndefiniteLength, 1}},
                    ReadCase{0x81, "05", {0, 5, 2}}, ReadCase{0x81, "80", {0, 128, 2}},
                    ReadCase{0x82, "01 00", {0, 256, 3}}, ReadCase{0x84, "00 00 00 07", {0, 7, 5}},
                    ReadCase{0x85, "01 00 00 00 00", {0, 1UL << 32, 6}},
                    ReadCase{0x88, "7F FF FF FF FF FF FF FF", {0, (1UL << 63) - 1, 9}},
                    ReadCase{0x8A, "00 00 00 00 00 00 00 00 00 09", {0, 9, 11}},
                    ReadCase{0x88, "80 00 00 00 00 00 00 00", {kAsnBadLength, 0, 9}},
                    ReadCase{0x88, "FF FF FF FF FF FF FF FF", {kAsnBadLength, 0, 9}},
                    ReadCase{0x89, "01 00 00 00 00 00 00 00 00", {kAsnBadLength, 0, 10}},
                    ReadCase{0xFF, "00", {kAsnBadLength, 0, 1}},
                    ReadCase{0x82, "01", {kAsnEndOfInput, 0, 2}},
                    ReadCase{0x81, "", {kAsnEndOfInput, 0, 1}}));

class EndOfContents : public testing::TestWithParam<ReadCase> {};

TEST_P(EndOfContents, IsTwoZeroBytes) {
  const Bytes bytes = fromHex(GetParam().rest);
  AsnBuf buffer(bytes.data(), bytes.size());
  Read read{0, 0, 0};
  read.code = failureCode([&] { BDecEoc(buffer, read.count); });
  EXPECT_EQ(read, GetParam().result);
  EXPECT_EQ(buffer.readError(), read.code == kAsnEndOfInput);
}

INSTANTIATE_TEST_SUITE_P(Asn1, EndOfContents,
                         testing::Values(ReadCase{0, "00 00", {0, 0, 2}},
                                         ReadCase{0, "00 01", {kAsnBadEndOfContents, 0, 2}},
                                         ReadCase{0, "02 00", {kAsnBadEndOfContents, 0, 1}},
                                         ReadCase{0, "00", {kAsnEndOfInput, 0, 1}},
                                         ReadCase{0, "", {kAsnEndOfInput, 0, 0}}));

struct WrittenLength {
  unsigned long length;
  const char* hex;
};

TEST(BerLength, IsWrittenWithAsFewBytesAsItTakes) {
  for (const WrittenLength& written :
       {WrittenLength{128, "81 80"}, WrittenLength{255, "81 FF"}, WrittenLength{256, "82 01 00"},
        WrittenLength{65535, "82 FF FF"}, WrittenLength{65536, "83 01 00 00"},
        WrittenLength{1UL << 32, "85 01 00 00 00 00"}, WrittenLength{5, "81 05"},
        WrittenLength{~0UL, "88 FF FF FF FF FF FF FF FF"}}) {
    AsnBuf buffer;
    const unsigned long count = BEncDefLenImpl(buffer, written.length);
    EXPECT_EQ(count, buffer.size());
    EXPECT_EQ(toHex({buffer.data(), buffer.data() + buffer.size()}), written.hex);
  }
}

TEST(AsnBuf, IsWrittenFromItsEnd) {
  AsnBuf buffer;
  EXPECT_TRUE(buffer.isFull());
  buffer.putByte(3);
  EXPECT_FALSE(buffer.isFull());
  buffer.putBytes("\x01\x02", 2);
  EXPECT_EQ(toHex({buffer.data(), buffer.data() + buffer.size()}), "01 02 03");
  buffer.clear();
  EXPECT_EQ(buffer.size(), 0U);
}

TEST(AsnBuf, GrowsAndKeepsWhatItHolds) {
  AsnBuf buffer;
  Bytes expected;
  for (int i = 0; i < 5000; ++i) {
    if (buffer.isFull()) buffer.AddBuffer(1);
    buffer.putByte(static_cast<unsigned char>(i));
    expected.insert(expected.begin(), static_cast<unsigned char>(i));
  }
  EXPECT_EQ(Bytes(buffer.data(), buffer.data() + buffer.size()), expected);
}

TEST(AsnBuf, RefusesRoomThatNobodyHas) {
  AsnBuf buffer;
  buffer.putByte(7);
  EXPECT_THROW(buffer.AddBuffer(-1), std::length_error);
  EXPECT_THROW(buffer.AddBuffer(__LONG_MAX__), std::length_error);
  EXPECT_EQ(buffer.size(), 1U);
}

TEST(AsnBuf, TellsOfReadingAtItsEnd) {
  const Bytes bytes = {5, 6};
  AsnBuf buffer(bytes.data(), bytes.size(), AsnTagging::Explicit);
  EXPECT_EQ(buffer.tagging(), AsnTagging::Explicit);
  EXPECT_EQ(buffer.peekByte(), 5);
  EXPECT_EQ(buffer.getByte(), 5);
  EXPECT_EQ(buffer.getByte(), 6);
  EXPECT_TRUE(buffer.atEnd());
  EXPECT_EQ(buffer.peekByte(), 0);
  EXPECT_FALSE(buffer.readError());
  EXPECT_EQ(buffer.getByte(), 0);
  EXPECT_TRUE(buffer.readError());
}

TEST(AsnBuf, EndsAtAPartForAWhile) {
  const Bytes bytes = {5, 6, 7};
  AsnBuf buffer(bytes.data(), bytes.size());
  {
    const AsnBuf::Part part(buffer, 2);
    buffer.skip(2);
    EXPECT_TRUE(buffer.atEnd());
  }
  EXPECT_EQ(buffer.remaining(), 1U);
}

TEST(AsnBuf, HasSixtyFourLevels) {
  AsnBuf buffer;
  std::array<std::optional<AsnBuf::Level>, 64> levels;
  for (auto& level : levels) level.emplace(buffer);
  EXPECT_EQ(failureCode([&] { const AsnBuf::Level level(buffer); }), kAsnTooDeep);
  levels.back().reset();
  EXPECT_EQ(failureCode([&] { const AsnBuf::Level level(buffer); }), 0);
}

TEST(CsmException, HoldsWhatItIsGiven) {
  const CSM_Exception failure(-54, 250, "", "file", "message", new CSM_Buffer{{1, 2}});
  EXPECT_EQ(failure.code(), -54);
  EXPECT_EQ(failure.line(), 250);
  EXPECT_EQ(failure.text(), "");
  EXPECT_EQ(failure.file(), "file");
  EXPECT_EQ(failure.message(), "message");
  EXPECT_STREQ(failure.what(), "message");
  ASSERT_NE(failure.buffer(), nullptr);
  EXPECT_THAT(failure.buffer()->bytes, testing::ElementsAre(1, 2));
}

TEST(CsmException, OfTheDecoderSaysWhatIsWrong) {
  const std::pair<const char*, const char*> kFailures[] = {
      {"02 02 01", "The bytes end inside a value"},
      {"04 01 05", "A field has another tag than the one that is due"},
      {"1F 80 01", "A tag is longer than four bytes or written too long"},
      {"02 FF 05", "A length is too large or of a form that its type does not have"},
      {"02 00", "An integer is empty, too long or out of range"},
  };
  for (const auto& [hex, message] : kFailures) {
    const Bytes bytes = fromHex(hex);
    const auto failure = failureOf([&] {
      AsnBuf buffer(bytes.data(), bytes.size());
      unsigned long count = 0;
      AsnInt().BDec(buffer, count, NIClass_EncodingFormat_BER);
    });
    ASSERT_NE(failure, nullptr) << hex;
    EXPECT_EQ(failure->file(), "asn1");
    EXPECT_EQ(failure->message(), message);
    EXPECT_EQ(failure->buffer(), nullptr);
  }
}

TEST(CsmException, OfTheBufferSaysWhatIsWrong) {
  AsnBuf buffer("\1", 1);
  unsigned long count = 0;
  EXPECT_EQ(failureOf([&] { BDecEoc(buffer, count); })->message(),
            "An end-of-contents mark is broken, or stands where none is due");
  std::array<std::optional<AsnBuf::Level>, 64> levels;
  for (auto& level : levels) level.emplace(buffer);
  EXPECT_EQ(failureOf([&] { const AsnBuf::Level level(buffer); })->message(),
            "Values are nested too deep");
}

}  // namespace
