#include <gmock/gmock.h>

#include <random>

#include "codec.h"
#include "sample.h"

namespace {

using Tagging = AsnTagging;

void fill(Sample& sample, int depth) {
  sample.number = 100000;
  sample.name.ReSet("a name of more than twenty-three bytes");
  sample.flag = new AsnInt(-1);
  sample.target = new Point;
  for (int i = 0; i < 3; ++i) sample.values.add(i * 1000);
  sample.notes = new ElementList<AsnOcts>;
  sample.notes->add("note");
  sample.code = new AsnInt(8);
  sample.label = new AsnOcts("label");
  sample.path = new Point;
  if (depth == 0) return;
  sample.children = new ElementList<Sample>;
  fill(sample.children->add(), depth - 1);
  fill(sample.children->add(), 0);
}

class HostileBytes : public testing::TestWithParam<Tagging> {
 protected:
  Bytes message(int depth) const {
    Sample sample;
    fill(sample, depth);
    return encoded(sample, GetParam());
  }
};

TEST_P(HostileBytes, CutAnywhereAreAnError) {
  const Bytes whole = message(2);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    Sample sample;
    const Decoded result = decode(sample, Bytes(whole.begin(), whole.begin() + size), GetParam());
    // A list that finds no tag has its own code.
    ASSERT_TRUE(result.code == kAsnEndOfInput || result.code == -54) << size << ": " << result;
  }
}

// Nothing after the outermost length is missed: a message that ends early inside is an error, too.
TEST_P(HostileBytes, CutWithAFittingOuterLengthAreAnError) {
  const Bytes whole = message(2);
  const std::size_t header = 4;
  ASSERT_EQ(whole[1], 0x82);
  for (std::size_t size = header; size < whole.size(); ++size) {
    Bytes cut(whole.begin(), whole.begin() + size);
    cut[2] = static_cast<unsigned char>((size - header) >> 8);
    cut[3] = static_cast<unsigned char>(size - header);
    Sample sample;
    ASSERT_NE(decode(sample, cut, GetParam()).code, 0) << size;
  }
}

// Any single byte may be anything: it decodes to something or fails, and leaves a whole object.
TEST_P(HostileBytes, WithOneByteChangedLeaveAnObjectThatEncodes) {
  const Bytes whole = message(0);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const unsigned char byte : {0x00, 0x1F, 0x30, 0x7F, 0x80, 0x84, 0x88, 0xA0, 0xBF, 0xFF}) {
      Bytes changed = whole;
      changed[at] = byte;
      Sample sample;
      const Decoded result = decode(sample, changed, GetParam());
      ASSERT_LE(result.code, 0);
      ASSERT_FALSE(encoded(sample, GetParam()).empty());
    }
  }
}

TEST_P(HostileBytes, OfChanceEndInAnErrorOrAValue) {
  std::mt19937 random(20261121);
  const Bytes whole = message(1);
  for (int round = 0; round < 1000; ++round) {
    Bytes changed = whole;
    for (int i = 0; i < 1 + round % 8; ++i) {
      changed[random() % changed.size()] = static_cast<unsigned char>(random());
    }
    Sample sample;
    const Decoded result = decode(sample, changed, GetParam());
    ASSERT_LE(result.code, 0);
    if (result.code != 0) continue;
    ASSERT_EQ(result.count + result.left, changed.size());
  }
}

INSTANTIATE_TEST_SUITE_P(Asn1, HostileBytes, testing::Values(Tagging::Implicit, Tagging::Explicit));

Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// A value with definite length around others.
Bytes around(const Bytes& tag, const Bytes& content) {
  AsnBuf length;
  if (content.size() > 127) {
    BEncDefLenImpl(length, content.size());
  } else {
    length.putByte(static_cast<unsigned char>(content.size()));
  }
  return tag + Bytes(length.data(), length.data() + length.size()) + content;
}

// Samples in the lists of children of samples; each takes two levels.
Bytes nestedSamples(int count) {
  const Bytes head = fromHex("02 01 01 04 00 30 06 02 01 02 02 01 03 30 00");
  const Bytes tail = fromHex("02 01 06");
  Bytes sample = around({0x30}, head + tail);
  for (int i = 1; i < count; ++i) sample = around({0x30}, head + around({0xA3}, sample) + tail);
  return sample;
}

TEST(HostileNesting, OfSixtyFourLevelsIsTaken) {
  Sample sample;
  const Bytes bytes = nestedSamples(32);  // the innermost sample's own list and place count, too
  EXPECT_EQ(decode(sample, bytes), all(bytes.size()));
}

TEST(HostileNesting, OfMoreThanSixtyFourLevelsIsTooDeep) {
  Sample sample;
  EXPECT_EQ(decode(sample, nestedSamples(33)).code, kAsnTooDeep);
  EXPECT_EQ(decode(sample, nestedSamples(1000)).code, kAsnTooDeep);
}

TEST(HostileNesting, OfUnknownFieldsIsCountedToo) {
  const Bytes head = fromHex("30 80 02 01 01 04 00 30 06 02 01 02 02 01 03 30 00 02 01 06");
  for (const int levels : {63, 64, 10000}) {
    Bytes unknown;
    for (int i = 0; i < levels; ++i) unknown.insert(unknown.end(), {0xAA, 0x80});
    unknown.insert(unknown.end(), 2 * static_cast<std::size_t>(levels), 0);
    Sample sample;
    const Decoded result = decode(sample, head + unknown + Bytes{0, 0});
    const long expected = levels <= 63 ? 0L : static_cast<long>(kAsnTooDeep);
    EXPECT_EQ(result.code, expected) << levels;
  }
}

// Were room made for what a length promises, these would take gigabytes or fail.
TEST(HostileLength, AllocatesNothingForBytesThatHaveNotArrived) {
  for (const char* hex : {"30 84 7F FF FF FF 02 01 01 04 84 7F FF FF 00 61",
                          "30 88 00 FF FF FF FF FF FF FF 02 01 01 04 87 FF FF FF FF FF FF 00 61",
                          "30 80 02 01 01 04 84 FF FF FF FF 61"}) {
    Sample sample;
    EXPECT_EQ(decode(sample, hex).code, kAsnEndOfInput);
    EXPECT_TRUE(sample.name.bytes().empty());
  }
}

}  // namespace
