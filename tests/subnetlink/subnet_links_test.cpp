#include "subnetlinks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/value.h>

#include "recorded_traces.h"
#include "topology_objects.h"

namespace emf::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

class SubnetLinksTest : public ::testing::Test {
 protected:
  void rebuild(const Objects& subnets) {
    traces.events.clear();
    SubnetLinks(JsonSubnets(subnets), traces).rebuild(links);
  }

  std::string linkOf(const std::string& key, const Objects& subnets) {
    return SubnetLinks(JsonSubnets(subnets), traces).linkOf(key, links);
  }

  std::map<std::string, std::string> links;
  RecordedTraces traces;
};

TEST_F(SubnetLinksTest, EmptyListGivesNothing) {
  rebuild({});
  EXPECT_THAT(links, IsEmpty());
  EXPECT_THAT(traces.events, IsEmpty());
}

TEST_F(SubnetLinksTest, LinksOfBeforeAreGone) {
  links = {{"S1", "old"}, {"S2", "old"}};
  rebuild({subnet("1", "Region", "2")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", "Region")));
  EXPECT_THAT(traces.events, ElementsAre("missing S2", "link Region"));
}

TEST_F(SubnetLinksTest, RootHasItsOwnLabel) {
  rebuild({subnet("1", "Region", "1")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", "Region")));
  EXPECT_THAT(traces.events, ElementsAre("link Region"));
}

TEST_F(SubnetLinksTest, ThreeLevelsInEveryOrder) {
  Objects list = {subnet("1", "Region", "1"), subnet("2", "City", "1"), subnet("3", "Site", "2")};
  std::vector<std::size_t> order = {0, 1, 2};
  do {
    rebuild({list[order[0]], list[order[1]], list[order[2]]});
    EXPECT_THAT(links, ElementsAre(Pair("S1", "Region"), Pair("S2", "Region/City"),
                                   Pair("S3", "Region/City/Site")));
    std::vector<std::string> said;
    for (const std::size_t place : order) {
      said.push_back("link " + links["S" + std::to_string(place + 1)]);
    }
    EXPECT_EQ(traces.events, said);
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(SubnetLinksTest, FirstOfTwoWithOneIdentityWins) {
  rebuild({subnet("1", "first", "1"), subnet("2", "child", "1"), subnet("1", "second", "2")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", "first"), Pair("S2", "first/child")));
  EXPECT_THAT(traces.events, ElementsAre("link first", "link first/child"));
}

TEST_F(SubnetLinksTest, FirstWinsAsParentOfAnEarlierSubnetToo) {
  rebuild({subnet("2", "child", "1"), subnet("1", "first", "1"), subnet("1", "second", "1")});
  EXPECT_EQ(links["S2"], "first/child");
}

TEST_F(SubnetLinksTest, MissingParentLeavesTheLabelAndATrace) {
  rebuild({subnet("3", "Site", "9")});
  EXPECT_THAT(links, ElementsAre(Pair("S3", "Site")));
  EXPECT_THAT(traces.events, ElementsAre("missing S9", "link Site"));
}

// A walk says that the parent is missing only when it gets there.
TEST_F(SubnetLinksTest, MissingParentIsTracedForEachWalkThatReachesIt) {
  const Json::Value top = subnet("1", "a", "9");
  const Json::Value middle = subnet("2", "b", "1");
  const Json::Value bottom = subnet("3", "c", "2");
  rebuild({bottom, middle, top});
  EXPECT_THAT(traces.events, ElementsAre("missing S9", "link a/b/c", "missing S9", "link a/b",
                                         "missing S9", "link a"));
  rebuild({top, middle, bottom});
  EXPECT_THAT(traces.events, ElementsAre("missing S9", "link a", "link a/b", "link a/b/c"));
  rebuild({middle, bottom, top});
  EXPECT_THAT(traces.events,
              ElementsAre("missing S9", "link a/b", "link a/b/c", "missing S9", "link a"));
}

TEST_F(SubnetLinksTest, BranchesBelowOneAncestorEachReachTheMissingParent) {
  rebuild(
      {subnet("3", "x", "1"), subnet("4", "y", "1"), subnet("1", "a", "9"), subnet("5", "z", "1")});
  EXPECT_THAT(traces.events, ElementsAre("missing S9", "link a/x", "missing S9", "link a/y",
                                         "missing S9", "link a", "link a/z"));
}

TEST_F(SubnetLinksTest, EmptyLabelLeavesAnEmptyPiece) {
  rebuild({subnet("1", "Region", "1"), subnet("2", "", "1"), subnet("3", "Site", "2")});
  EXPECT_THAT(links,
              ElementsAre(Pair("S1", "Region"), Pair("S2", "Region/"), Pair("S3", "Region//Site")));
}

TEST_F(SubnetLinksTest, EmptyLabelAtTheTopLeavesNone) {
  rebuild({subnet("3", "Site", "2"), subnet("2", "", "1"), subnet("1", "", "1")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", ""), Pair("S2", ""), Pair("S3", "Site")));
}

// Without identities each is its own parent.
TEST_F(SubnetLinksTest, MissingMembersReadAsEmpty) {
  rebuild({Json::Value(Json::objectValue), Json::Value()});
  EXPECT_THAT(links, ElementsAre(Pair("S", "")));
  EXPECT_THAT(traces.events, ElementsAre("link "));
}

TEST_F(SubnetLinksTest, NumbersAreReadAsTheirText) {
  Json::Value object(Json::objectValue);
  object["objId"] = 7;
  object["label"] = 5;
  object["parentId"] = "7";
  rebuild({object});
  EXPECT_THAT(links, ElementsAre(Pair("S7", "5")));
}

TEST_F(SubnetLinksTest, KeysTellPrefixesApart) {
  rebuild({subnet("1", "one", "1"), subnet("11", "eleven", "1"), subnet("S1", "esone", "11")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", "one"), Pair("S11", "one/eleven"),
                                 Pair("SS1", "one/eleven/esone")));
}

TEST_F(SubnetLinksTest, EachChainOfACycleEndsWhereItWouldMeetItsStartAgain) {
  rebuild({subnet("1", "a", "2"), subnet("2", "b", "3"), subnet("3", "c", "1")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", "c/b/a"), Pair("S2", "a/c/b"), Pair("S3", "b/a/c")));
  EXPECT_THAT(traces.events, ElementsAre("repeated S1", "link c/b/a", "repeated S2", "link a/c/b",
                                         "repeated S3", "link b/a/c"));
}

TEST_F(SubnetLinksTest, ChainIntoACycleEndsAtTheSubnetThatItMeetsTwice) {
  rebuild({subnet("5", "y", "4"), subnet("4", "x", "1"), subnet("1", "a", "2"),
           subnet("2", "b", "1"), subnet("6", "z", "2")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", "b/a"), Pair("S2", "a/b"), Pair("S4", "b/a/x"),
                                 Pair("S5", "b/a/x/y"), Pair("S6", "a/b/z")));
  EXPECT_THAT(traces.events,
              ElementsAre("repeated S1", "link b/a/x/y", "repeated S1", "link b/a/x", "repeated S1",
                          "link b/a", "repeated S2", "link a/b", "link a/b/z"));
}

TEST_F(SubnetLinksTest, LinksBesideACycleAreRight) {
  rebuild({subnet("1", "a", "2"), subnet("2", "b", "1"), subnet("7", "Region", "7"),
           subnet("8", "City", "7")});
  EXPECT_EQ(links["S7"], "Region");
  EXPECT_EQ(links["S8"], "Region/City");
}

TEST_F(SubnetLinksTest, CycleWithEmptyLabels) {
  rebuild({subnet("1", "", "2"), subnet("2", "b", "3"), subnet("3", "", "1")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", "b/"), Pair("S2", "b"), Pair("S3", "b//")));
  rebuild({subnet("1", "", "2"), subnet("2", "", "1")});
  EXPECT_THAT(links, ElementsAre(Pair("S1", ""), Pair("S2", "")));
}

TEST_F(SubnetLinksTest, ObjectThatCannotBeReadEndsTheWorkAtItsTurn) {
  EXPECT_THROW(rebuild({subnet("1", "a", "1"), Json::Value("text"), subnet("2", "b", "2")}),
               Json::LogicError);
  EXPECT_THAT(links, ElementsAre(Pair("S1", "a")));
  EXPECT_THAT(traces.events, ElementsAre("link a"));
}

TEST_F(SubnetLinksTest, ObjectThatCannotBeReadEndsTheSearchForAParentBehindIt) {
  EXPECT_THROW(rebuild({subnet("1", "a", "2"), Json::Value("text"), subnet("2", "b", "2")}),
               Json::LogicError);
  EXPECT_THAT(links, IsEmpty());
  EXPECT_THAT(traces.events, IsEmpty());
}

TEST_F(SubnetLinksTest, LabelThatIsNoTextEndsTheWorkWhereItIsRead) {
  Json::Value odd = subnet("2", "", "2");
  odd["label"] = Json::Value(Json::arrayValue);
  EXPECT_THROW(rebuild({subnet("1", "a", "1"), subnet("3", "c", "2"), odd}), Json::LogicError);
  EXPECT_THAT(links, ElementsAre(Pair("S1", "a")));
}

TEST_F(SubnetLinksTest, OneLinkIsComputedWithoutBeingKept) {
  const Objects list = {subnet("3", "Site", "2"), subnet("2", "City", "1"),
                        subnet("1", "Region", "1")};
  EXPECT_EQ(linkOf("S3", list), "Region/City/Site");
  EXPECT_THAT(links, IsEmpty());
  EXPECT_THAT(traces.events, IsEmpty());
}

TEST_F(SubnetLinksTest, OneLinkStopsAtAKnownOne) {
  const Objects list = {subnet("3", "Site", "2"), subnet("2", "City", "1"),
                        subnet("1", "Region", "1")};
  links = {{"S2", "known"}};
  EXPECT_EQ(linkOf("S2", list), "known");
  EXPECT_EQ(linkOf("S3", list), "known/Site");
  links = {{"S9", "known"}};
  EXPECT_EQ(linkOf("S3", {subnet("3", "Site", "9")}), "known/Site");
  EXPECT_THAT(traces.events, IsEmpty());
}

TEST_F(SubnetLinksTest, OneLinkOfAMissingSubnetIsEmpty) {
  EXPECT_EQ(linkOf("S4", {subnet("3", "Site", "2")}), "");
  EXPECT_EQ(linkOf("S3", {subnet("3", "Site", "2")}), "Site");
  EXPECT_EQ(linkOf("S1", {subnet("1", "a", "2"), subnet("2", "b", "1")}), "b/a");
  EXPECT_THAT(traces.events, ElementsAre("missing S4", "missing S2", "repeated S1"));
}

TEST_F(SubnetLinksTest, OneLinkTracesTheMissingParentOfItsChain) {
  EXPECT_EQ(linkOf("S3", {subnet("2", "City", "9"), subnet("3", "Site", "2")}), "City/Site");
  EXPECT_THAT(traces.events, ElementsAre("missing S9"));
}

TEST_F(SubnetLinksTest, RecordsAreTakenAsTheyStand) {
  const std::vector<SouthSubnet> records = {
      {"S3", "Site", "2"}, {"2", "City", "/"}, {"/", "Region", "/"}, {"7", "Lost", "S9"}};
  SubnetLinks(RecordSubnets(records), traces).rebuild(links);
  EXPECT_THAT(links, UnorderedElementsAre(Pair("S3", "Region/City/Site"), Pair("2", "Region/City"),
                                          Pair("/", "Region"), Pair("7", "Lost")));
  EXPECT_THAT(traces.events, ElementsAre("link Region/City/Site", "link Region/City", "link Region",
                                         "missing S9", "link Lost"));
}

}  // namespace
}  // namespace emf::test
