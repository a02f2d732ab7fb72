#include "textindex.h"

#include <gtest/gtest.h>

#include <string>

namespace emf::test {
namespace {

TEST(TextIndex, FindsWhatWasFiledAndNothingElse) {
  TextIndex<int> index(3);
  EXPECT_TRUE(index.insert("S1", 1));
  EXPECT_TRUE(index.insert("S11", 11));
  EXPECT_TRUE(index.insert("", 0));
  ASSERT_NE(index.find("S1"), nullptr);
  EXPECT_EQ(*index.find("S1"), 1);
  EXPECT_EQ(*index.find("S11"), 11);
  EXPECT_EQ(*index.find(""), 0);
  EXPECT_EQ(index.find("S"), nullptr);
}

TEST(TextIndex, FirstOfTwoStays) {
  TextIndex<int> index(2);
  EXPECT_TRUE(index.insert("S1", 1));
  EXPECT_FALSE(index.insert("S1", 2));
  EXPECT_EQ(*index.find("S1"), 1);
}

TEST(TextIndex, EmptyOneHoldsNothing) { EXPECT_EQ(TextIndex<int>(0).find("S1"), nullptr); }

TEST(TextIndex, HoldsAsManyAsItHasRoomFor) {
  for (const std::size_t count : {1U, 2U, 3U, 4U, 5U, 42U, 43U, 1000U, 20000U}) {
    TextIndex<std::size_t> index(count);
    for (std::size_t text = 0; text < count; ++text) {
      ASSERT_TRUE(index.insert(std::to_string(text), text));
    }
    for (std::size_t text = 0; text < count; ++text) {
      ASSERT_NE(index.find(std::to_string(text)), nullptr);
      ASSERT_EQ(*index.find(std::to_string(text)), text);
    }
    EXPECT_EQ(index.find(std::to_string(count)), nullptr);
  }
}

}  // namespace
}  // namespace emf::test
