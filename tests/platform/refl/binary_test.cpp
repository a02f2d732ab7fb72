#include "orma/refl/binary.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>

namespace {

using refl::CBinary;

class BinaryOfSize : public testing::TestWithParam<unsigned long> {
 protected:
  std::string text() const {
    std::string text(GetParam(), 'x');
    if (!text.empty()) text.back() = 'y';
    return text;
  }
  CBinary binary() const { return CBinary(text().data(), GetParam()); }
};

void expectHolds(const CBinary& binary, const std::string& text) {
  EXPECT_EQ(std::string(binary.data(), binary.size()), text);
  EXPECT_EQ(binary.data()[binary.size()], '\0');
}

TEST_P(BinaryOfSize, StartsWithZeroBytes) {
  expectHolds(CBinary(GetParam()), std::string(GetParam(), '\0'));
}

TEST_P(BinaryOfSize, HoldsWhatItIsGivenAndAZeroByteBehind) { expectHolds(binary(), text()); }

TEST_P(BinaryOfSize, IsCopied) {
  const CBinary original = binary();
  const CBinary copy(original);
  expectHolds(copy, text());
  EXPECT_NE(copy.data(), original.data());
  for (const char* before : {"", "short", "a text of more than twenty-three bytes"}) {
    CBinary assigned(before, std::string(before).size());
    assigned = original;
    expectHolds(assigned, text());
  }
}

TEST_P(BinaryOfSize, IsMovedAndLeftEmpty) {
  CBinary original = binary();
  CBinary moved(std::move(original));
  expectHolds(moved, text());
  expectHolds(original, "");  // NOLINT(bugprone-use-after-move): moved-from means empty
  CBinary assigned("a text of more than twenty-three bytes", 38);
  assigned = std::move(moved);
  expectHolds(assigned, text());
}

TEST_P(BinaryOfSize, TakesAPartOfItself) {
  CBinary binary(this->binary());
  if (binary.empty()) return;
  binary.assign(binary.data() + 1, binary.size() - 1);
  expectHolds(binary, text().substr(1));
}

TEST_P(BinaryOfSize, AssignedToItselfStaysAsItIs) {
  CBinary binary(this->binary());
  const CBinary& same = binary;
  binary = same;
  expectHolds(binary, text());
}

TEST_P(BinaryOfSize, IsCleared) {
  CBinary binary(this->binary());
  binary.clear();
  expectHolds(binary, "");
  EXPECT_TRUE(binary.empty());
}

// Around the size up to which the bytes lie in the object.
INSTANTIATE_TEST_SUITE_P(Refl, BinaryOfSize, testing::Values(0, 1, 22, 23, 24, 25, 1000, 100000));

TEST(Binary, IsComparedByteForByte) {
  EXPECT_EQ(CBinary("a\0b", 3), CBinary("a\0b", 3));
  EXPECT_NE(CBinary("a\0b", 3), CBinary("a\0c", 3));
  EXPECT_NE(CBinary("a", 1), CBinary("a\0", 2));
  EXPECT_EQ(CBinary(), CBinary("", 0));
}

TEST(Binary, TakesNoBytesFromNowhere) { EXPECT_TRUE(CBinary(nullptr, 0).empty()); }

TEST(Binary, IsWrittenThroughItsData) {
  CBinary binary(3);
  binary.data()[1] = 'b';
  EXPECT_EQ(binary, CBinary("\0b\0", 3));
}

}  // namespace
