#include "devicelinks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "recorded_traces.h"
#include "topology_objects.h"

namespace emf::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class DeviceLinksTest : public ::testing::Test {
 protected:
  void rebuild(const Objects& nodes) {
    rebuildDeviceLinks(JsonDevices(nodes), subnets, links, traces);
  }
  void rebuild(const std::vector<SouthDevice>& devices) {
    rebuildDeviceLinks(RecordDevices(devices), subnets, links, traces);
  }

  std::map<std::string, std::string> subnets = {{"S1", "Region"}, {"S2", "Region/City"}};
  std::map<unsigned long, std::string> links;
  RecordedTraces traces;
};

TEST_F(DeviceLinksTest, OriginElementGetsTheLinkOfItsSubnet) {
  rebuild(Objects{node("NE=12", "1", "2"), node("NE=13", "1", "1")});
  EXPECT_THAT(links, ElementsAre(Pair(12, "Region/City"), Pair(13, "Region")));
  EXPECT_THAT(traces.events, IsEmpty());
}

TEST_F(DeviceLinksTest, PartOfAnElementIsPassedOver) {
  rebuild(Objects{node("NE=12,FR=1", "1", "2"), node("OS=1", "1", "2"), node("", "1", "2"),
                  Json::Value(Json::objectValue)});
  EXPECT_THAT(links, IsEmpty());
  EXPECT_THAT(traces.events,
              ElementsAre("not real NE=12,FR=1", "not real OS=1", "not real ", "not real "));
}

TEST_F(DeviceLinksTest, RealElementHasNoCommaBehindItsName) {
  EXPECT_TRUE(isRealElement("NE=12"));
  EXPECT_TRUE(isRealElement("NE="));
  EXPECT_TRUE(isRealElement("a,NE=12"));
  EXPECT_TRUE(isRealElement("SNE=12"));
  EXPECT_FALSE(isRealElement("NE=12,"));
  EXPECT_FALSE(isRealElement("NE=1,NE=2"));
  EXPECT_FALSE(isRealElement("NE12"));
  EXPECT_FALSE(isRealElement("ne=12"));
  EXPECT_FALSE(isRealElement(""));
}

TEST_F(DeviceLinksTest, OriginOtherThanOneIsPassedOver) {
  Json::Value without = node("NE=6", "", "2");
  without.removeMember("origin");
  rebuild(Objects{node("NE=2", "0", "2"), node("NE=3", "11", "2"), node("NE=4", "x1", "2"),
                  node("NE=5", "-1", "2"), without});
  EXPECT_THAT(links, IsEmpty());
  EXPECT_THAT(traces.events, ElementsAre("not origin NE=2", "not origin NE=3", "not origin NE=4",
                                         "not origin NE=5", "not origin NE=6"));
}

TEST_F(DeviceLinksTest, OriginIsTheLeadingNumberCutToAnInt) {
  Json::Value number = node("NE=5", "", "2");
  number["origin"] = 1;
  rebuild(Objects{node("NE=2", " 1", "2"), node("NE=3", "1x", "2"), node("NE=4", "4294967297", "2"),
                  number});
  EXPECT_EQ(links.size(), 4U);
}

TEST_F(DeviceLinksTest, SubnetWithoutALinkIsTraced) {
  Json::Value without = node("NE=13", "1", "");
  without.removeMember("parentId");
  rebuild(Objects{node("NE=12", "1", "9"), without});
  EXPECT_THAT(links, IsEmpty());
  EXPECT_THAT(traces.events, ElementsAre("no parent S9 of NE=12 12", "no parent S of NE=13 13"));
}

TEST_F(DeviceLinksTest, NumberAboveAnIntWrapsAndIsSignExtended) {
  rebuild(Objects{node("NE=4294967295", "1", "1"), node("NE=2147483648", "1", "2"),
                  node("NE=4294967308", "1", "1")});
  EXPECT_THAT(links, ElementsAre(Pair(12UL, "Region"), Pair(0xFFFFFFFF80000000UL, "Region/City"),
                                 Pair(0xFFFFFFFFFFFFFFFFUL, "Region")));
}

TEST_F(DeviceLinksTest, NumberBeyondALongIsCutFromTheLargest) {
  rebuild(Objects{node("NE=99999999999999999999", "1", "1")});
  EXPECT_THAT(links, ElementsAre(Pair(0xFFFFFFFFFFFFFFFFUL, "Region")));
}

TEST_F(DeviceLinksTest, NumberStandsBehindTheFirstEqualsSign) {
  rebuild(Objects{node("X=5,NE=12", "1", "1"), node("NE=", "1", "2"), node("NE=010", "1", "1")});
  EXPECT_THAT(links, ElementsAre(Pair(0, "Region/City"), Pair(5, "Region"), Pair(10, "Region")));
}

TEST_F(DeviceLinksTest, LastOfTwoWithOneNumberWins) {
  rebuild(Objects{node("NE=12", "1", "1"), node("NE=12", "1", "2"), node("NE=12", "0", "1")});
  EXPECT_THAT(links, ElementsAre(Pair(12, "Region/City")));
}

// The entries of the last refresh are used again; nothing of them may show.
TEST_F(DeviceLinksTest, LinksOfBeforeAreGone) {
  links = {{3, "old"}, {4, "an old link that is longer than any of the new ones"}, {12, "old"}};
  rebuild(Objects{node("NE=13", "1", "2"), node("NE=12", "1", "1")});
  EXPECT_THAT(links, ElementsAre(Pair(12, "Region"), Pair(13, "Region/City")));
  rebuild(Objects{node("NE=20", "1", "1"), node("NE=18", "1", "1"), node("NE=20", "1", "2"),
                  node("NE=19", "1", "1"), node("NE=18", "1", "2")});
  EXPECT_THAT(links,
              ElementsAre(Pair(18, "Region/City"), Pair(19, "Region"), Pair(20, "Region/City")));
  rebuild(Objects{});
  EXPECT_THAT(links, IsEmpty());
}

// Whatever came before and in whatever order, the entries are those of an emptied map.
TEST_F(DeviceLinksTest, AnySequenceOfRefreshesMirrorsTheLastList) {
  std::mt19937 random(20);
  const std::string parents[] = {"1", "2", "missing"};
  for (int refresh = 0; refresh < 500; ++refresh) {
    Objects nodes;
    std::map<unsigned long, std::string> expected;
    for (auto count = random() % 12; count > 0; --count) {
      const unsigned long number = random() % 10;
      const std::string& parent = parents[random() % 3];
      nodes.push_back(node("NE=" + std::to_string(number), "1", parent));
      if (const auto link = subnets.find("S" + parent); link != subnets.end()) {
        expected[number] = link->second;
      }
    }
    rebuild(nodes);
    ASSERT_EQ(links, expected);
  }
}

TEST_F(DeviceLinksTest, ObjectThatCannotBeReadLeavesNothingOfBefore) {
  links = {{1, "old"}, {2, "old"}, {3, "old"}};
  EXPECT_THROW(rebuild(Objects{node("NE=9", "1", "1"), Json::Value(5)}), Json::LogicError);
  EXPECT_THAT(links, ElementsAre(Pair(9, "Region")));
}

TEST_F(DeviceLinksTest, ObjectThatCannotBeReadEndsTheWork) {
  EXPECT_THROW(rebuild(Objects{node("NE=2", "1", "1"), Json::Value(5), node("NE=3", "1", "1")}),
               Json::LogicError);
  EXPECT_THAT(links, ElementsAre(Pair(2, "Region")));
}

TEST_F(DeviceLinksTest, RecordHasItsNumberInAField) {
  rebuild(std::vector<SouthDevice>{{12, "NE=99", "S2", {{"Origin", "1"}}},
                                   {-3, "NE=98", "S1", {{"Other", "0"}, {"Origin", "1"}}}});
  EXPECT_THAT(links, ElementsAre(Pair(12UL, "Region/City"), Pair(0xFFFFFFFFFFFFFFFDUL, "Region")));
}

TEST_F(DeviceLinksTest, RecordsAreTestedLikeObjects) {
  rebuild(std::vector<SouthDevice>{{12, "NE=12,FR=1", "S2", {{"Origin", "1"}}},
                                   {13, "NE=13", "S2", {{"Origin", "0"}}},
                                   {14, "NE=14", "2", {{"Origin", "1"}}}});
  EXPECT_THAT(links, IsEmpty());
  EXPECT_THAT(traces.events,
              ElementsAre("not real NE=12,FR=1", "not origin NE=13", "no parent 2 of NE=14 14"));
}

// The opposite of an object without the member.
TEST_F(DeviceLinksTest, RecordWithoutAnOriginFieldPasses) {
  rebuild(std::vector<SouthDevice>{{12, "NE=12", "S2", {}}});
  EXPECT_THAT(links, ElementsAre(Pair(12, "Region/City")));
  EXPECT_THAT(traces.events, ElementsAre("no origin field"));
}

TEST_F(DeviceLinksTest, FirstOriginFieldCounts) {
  EXPECT_TRUE(isOriginElement({{"Origin", "1"}, {"Origin", "0"}}, traces));
  EXPECT_FALSE(isOriginElement({{"Origin", "0"}, {"Origin", "1"}}, traces));
  EXPECT_FALSE(isOriginElement({{"Origin", "01"}}, traces));
  EXPECT_FALSE(isOriginElement({{"Origin", ""}}, traces));
  EXPECT_THAT(traces.events, IsEmpty());
  EXPECT_TRUE(isOriginElement({{"origin", "0"}}, traces));
  EXPECT_THAT(traces.events, ElementsAre("no origin field"));
}

}  // namespace
}  // namespace emf::test
