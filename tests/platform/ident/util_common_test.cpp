#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "orma/ident/resource_ids.h"

namespace {

using NS_UTIL::UtilCommon;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

std::map<int, std::string> partsOf(const std::string& value) {
  std::map<int, std::string> parts{{0, "replaced"}, {7, "replaced"}};
  UtilCommon::GetSplitePPDataByLine(parts, value);
  return parts;
}

TEST(GetMoc, IsTheKeyOfTheLastSegment) {
  EXPECT_EQ(UtilCommon::GetMoc("NE=2"), "NE");
  EXPECT_EQ(UtilCommon::GetMoc("NE=2,FR=1"), "FR");
  EXPECT_EQ(UtilCommon::GetMoc("NE=2,FR=1,S=3,SC=1"), "SC");
  EXPECT_EQ(UtilCommon::GetMoc("NE=2,FR=1,PP=0-1-7"), "PP");
  EXPECT_EQ(UtilCommon::GetMoc("NE=2,LP="), "LP");
  EXPECT_EQ(UtilCommon::GetMoc("NE=2,PP=a=b"), "PP");
}

TEST(GetMoc, IsEmptyWhereTheLastSegmentHasNoKey) {
  for (const char* fdn : {"", ",", "NE", "NE=2,", "NE=2,FR", "NE=2,=1"}) {
    EXPECT_EQ(UtilCommon::GetMoc(fdn), "") << fdn;
  }
}

TEST(PortValue, IsSplitAtDashesAndSlashesIntoPartsFromZero) {
  EXPECT_THAT(partsOf("0-1-7"), ElementsAre(Pair(0, "0"), Pair(1, "1"), Pair(2, "7")));
  EXPECT_THAT(partsOf("0/1/7"), ElementsAre(Pair(0, "0"), Pair(1, "1"), Pair(2, "7")));
  EXPECT_THAT(partsOf("12"), ElementsAre(Pair(0, "12")));
  EXPECT_THAT(partsOf("1-2-3-4"),
              ElementsAre(Pair(0, "1"), Pair(1, "2"), Pair(2, "3"), Pair(3, "4")));
}

TEST(PortValue, EmptyPartsKeepTheirNumber) {
  EXPECT_THAT(partsOf("0--7"), ElementsAre(Pair(0, "0"), Pair(1, ""), Pair(2, "7")));
  EXPECT_THAT(partsOf("-"), ElementsAre(Pair(0, ""), Pair(1, "")));
}

TEST(PortValue, EmptyValueHasNoParts) { EXPECT_THAT(partsOf(""), IsEmpty()); }

TEST(GetDataFromMap, GivesThePartOfThatNumber) {
  std::string part = "unchanged";
  UtilCommon::GetDataFromMap(partsOf("0-1-7"), 2, part);
  EXPECT_EQ(part, "7");
}

TEST(GetDataFromMap, LeavesTheTextWhereThereIsNoSuchPart) {
  std::string part = "unchanged";
  UtilCommon::GetDataFromMap(partsOf("0-1"), 2, part);
  UtilCommon::GetDataFromMap(partsOf("0-1"), -1, part);
  UtilCommon::GetDataFromMap({}, 0, part);
  EXPECT_EQ(part, "unchanged");
}

}  // namespace
