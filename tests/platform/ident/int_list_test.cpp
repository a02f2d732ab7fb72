#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>

#include "orma/ident/sdxml_interpreter_mgr.h"

namespace {

using NS_UTIL::SDXMLInterpreterMgr;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::list<int> integersOf(const char* text) {
  std::list<int> integers;
  SDXMLInterpreterMgr::Instance()->ParseIntList(text, integers);
  return integers;
}

TEST(ParseIntList, TakesIntegersInTheirOrder) {
  EXPECT_THAT(integersOf("1,85,86"), ElementsAre(1, 85, 86));
  EXPECT_THAT(integersOf("7"), ElementsAre(7));
  EXPECT_THAT(integersOf("3;2,2;1"), ElementsAre(3, 2, 2, 1));
  EXPECT_THAT(integersOf("-1,0,007"), ElementsAre(-1, 0, 7));
}

TEST(ParseIntList, BlanksAroundAnIntegerDoNotCount) {
  EXPECT_THAT(integersOf(" 1 ,\t85 ;86\r\n"), ElementsAre(1, 85, 86));
}

TEST(ParseIntList, WholeRangeIsTakenAndNothingBeyondIt) {
  EXPECT_THAT(integersOf("-2147483648,2147483647"), ElementsAre(INT32_MIN, INT32_MAX));
  EXPECT_THAT(integersOf("2147483648,-2147483649,99999999999999999999"), IsEmpty());
}

TEST(ParseIntList, PieceThatIsNoIntegerIsPassedOver) {
  EXPECT_THAT(integersOf("1,x,2"), ElementsAre(1, 2));
  EXPECT_THAT(integersOf(",1,,2,"), ElementsAre(1, 2));
  EXPECT_THAT(integersOf("1 2,3x,0x4,+5,6.0,7"), ElementsAre(7));
}

TEST(ParseIntList, NothingGivesNothing) {
  EXPECT_THAT(integersOf(""), IsEmpty());
  EXPECT_THAT(integersOf(" ,;"), IsEmpty());
  EXPECT_THAT(integersOf(nullptr), IsEmpty());
}

TEST(ParseIntList, IntegersAreAppended) {
  std::list<int> integers{9};
  SDXMLInterpreterMgr::Instance()->ParseIntList("1", integers);
  EXPECT_THAT(integers, ElementsAre(9, 1));
}

TEST(SDXMLInterpreterMgr, IsOne) {
  EXPECT_EQ(SDXMLInterpreterMgr::Instance(), SDXMLInterpreterMgr::Instance());
}

}  // namespace
