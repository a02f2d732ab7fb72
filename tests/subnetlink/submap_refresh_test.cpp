// One refresh against the topology node service.
#include "node_service.h"
#include "processexception.h"
#include "submap_fixture.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using emf::doubles::TraceLine;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

constexpr char kNodesPath[] = "/rest/topology/v3/tsnodes";

auto trace(const std::string& text) {
  return FieldsAre("TaTrace", 0, "submapbufmgr", "unknown", Gt(0), text);
}

auto linkTrace(const std::string& link) {
  return FieldsAre("TaDebugWithPara", 3, "submapbufmgr", "unknown", Gt(0), "strSNLink = " + link);
}

Objects threeLevels() {
  return {subnet("3", "Site", "2"), subnet("2", "City", "1"), subnet("1", "Region", "1")};
}

class SubmapRefresh : public SubmapTest {};

TEST_F(SubmapRefresh, NodesAreAskedForByClass) {
  platform().rest.answers(kNodesPath, nodePage({Json::Value(1)}, "m1"));
  platform().rest.answers(kNodesPath, nodePage({Json::Value(2), Json::Value(3)}));
  std::vector<Json::Value> objects = {Json::Value(0)};
  EXPECT_TRUE(buffer().QueryNodesByClass({"ne", "container"}, objects));
  EXPECT_THAT(objects, ElementsAre(Json::Value(0), Json::Value(1), Json::Value(2), Json::Value(3)));
  const std::vector<Nimbola::RestReq> requests = platform().rest.requests();
  ASSERT_EQ(requests.size(), 2U);
  const std::string condition =
      R"({"conditions":[{"logOp":"and","simple":{"caseSensitive":false,"name":"nodeClass",)"
      R"("operator":"operator4","value":["ne","container"]}}],"limit":200)";
  EXPECT_EQ(compact(requests[0].params), condition + "}");
  EXPECT_EQ(compact(requests[1].params), condition + R"(,"marker":"m1"})");
  for (const Nimbola::RestReq& request : requests) {
    EXPECT_EQ(request.url, kNodesPath);
    EXPECT_EQ(request.method, 1U);
    EXPECT_EQ(request.mode, 8);  // as made
    EXPECT_TRUE(request.body.isNull());
  }
}

TEST_F(SubmapRefresh, FailureOnALaterPageKeepsTheEarlierOnes) {
  platform().rest.answers(kNodesPath, nodePage({Json::Value(1)}, "m1"));
  platform().rest.fails(kNodesPath);
  std::vector<Json::Value> objects;
  EXPECT_FALSE(buffer().QueryNodesByClass({"subnet"}, objects));
  EXPECT_THAT(objects, ElementsAre(Json::Value(1)));
}

TEST_F(SubmapRefresh, PageWithoutAListHoldsNothing) {
  platform().rest.answers(kNodesPath, json(R"({"isTruncated":true,"marker":"m"})"));
  platform().rest.answers(kNodesPath, json(R"({"dataList":"none"})"));
  std::vector<Json::Value> objects;
  EXPECT_TRUE(buffer().QueryNodesByClass({"subnet"}, objects));
  EXPECT_THAT(objects, IsEmpty());
}

TEST_F(SubmapRefresh, NodesComeBeforeSubnets) {
  NodeService service;
  buffer().QuerySubnetAndNodesInfo();
  std::vector<std::string> classes;
  for (const auto& request : platform().rest.requests()) {
    classes.push_back(compact(request.params["conditions"][0]["simple"]["value"]));
  }
  EXPECT_THAT(classes, ElementsAre(R"(["ne","container"])", R"(["subnet"])"));
}

TEST_F(SubmapRefresh, EveryMessageInItsOrder) {
  NodeService service;
  service.subnets({subnet("3", "Site", "2"), subnet("2", "City", "9"), subnet("5", "x", "6"),
                   subnet("6", "y", "5")});
  service.nodes({node("NE=12", "1", "3"), node("NE=13,FR=1", "1", "3"), node("NE=14", "0", "3"),
                 node("NE=15", "1", "77")});
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_THAT(
      platform().trace.lines(),
      ElementsAre(
          trace("getParentLinkSubnetName strSubnetworkID[S9] is not exists"),
          linkTrace("City/Site"),
          trace("getParentLinkSubnetName strSubnetworkID[S9] is not exists"), linkTrace("City"),
          trace("getParentLinkSubnetName strSubnetworkID[S5] is its own ancestor"),
          linkTrace("y/x"),
          trace("getParentLinkSubnetName strSubnetworkID[S6] is its own ancestor"),
          linkTrace("x/y"),
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink pass not real NE device[NE=13,FR=1]"),
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink pass not origin NE device[NE=14]"),
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink device[NE=15]'s parentId[S77] not "
                "exists")));
  EXPECT_EQ(link(12), "City/Site");
  EXPECT_EQ(link(13), "");
  EXPECT_EQ(link(14), "");
  EXPECT_EQ(link(15), "");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(SubmapRefresh, DataIsNeverAFormat) {
  NodeService service;
  service.subnets({subnet("%s%n", "%d%s", "%n")});
  service.nodes({node("%s", "1", "1"), node("NE=%n", "", "1"), node("NE=%s", "1", "%s")});
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_THAT(
      platform().trace.texts(),
      ElementsAre("getParentLinkSubnetName strSubnetworkID[S%n] is not exists", "strSNLink = %d%s",
                  "SubmapBufMgr::refreshDeviceSubnetNameLink pass not real NE device[%s]",
                  "SubmapBufMgr::refreshDeviceSubnetNameLink pass not origin NE device[NE=%n]",
                  "SubmapBufMgr::refreshDeviceSubnetNameLink device[NE=%s]'s parentId[S%s] not "
                  "exists"));
}

TEST_F(SubmapRefresh, EachRefreshMirrorsTheLastRead) {
  NodeService service;
  service.subnets(threeLevels());
  service.nodes({node("NE=12", "1", "3"), node("NE=13", "1", "2")});
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "Region/City/Site");
  EXPECT_EQ(link(13), "Region/City");
  service.subnets({subnet("3", "Place", "3")});
  service.nodes({node("NE=12", "1", "3")});
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "Place");
  EXPECT_EQ(link(13), "");
  EXPECT_EQ(subnetLink("S2"), "");
}

TEST_F(SubmapRefresh, NumberAboveAnIntIsLookedUpSignExtended) {
  NodeService service;
  service.subnets(threeLevels());
  service.nodes({node("NE=4294967295", "1", "2")});
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(0xFFFFFFFFFFFFFFFFUL), "Region/City");
  EXPECT_EQ(link(0xFFFFFFFFUL), "");
}

TEST_F(SubmapRefresh, WithoutSubnetsEveryDeviceMissesItsParent) {
  NodeService service;
  service.subnets(threeLevels());
  service.nodes({node("NE=12", "1", "3"), node("NE=13", "1", "2")});
  buffer().QuerySubnetAndNodesInfo();
  service.outage(true, false);
  platform().trace.reset();
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "");
  EXPECT_EQ(link(13), "");
  EXPECT_THAT(
      platform().trace.lines(),
      ElementsAre(
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink device[NE=12]'s parentId[S3] not "
                "exists"),
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink device[NE=13]'s parentId[S2] not "
                "exists")));
}

TEST_F(SubmapRefresh, WithoutNodesNoDeviceHasALink) {
  NodeService service;
  service.subnets(threeLevels());
  service.nodes({node("NE=12", "1", "3")});
  buffer().QuerySubnetAndNodesInfo();
  service.outage(false, true);
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "");
  EXPECT_EQ(subnetLink("S3"), "Region/City/Site");
}

TEST_F(SubmapRefresh, WithoutAnyAnswerAllIsGoneAndNothingSaid) {
  NodeService service;
  service.subnets(threeLevels());
  service.nodes({node("NE=12", "1", "3")});
  buffer().QuerySubnetAndNodesInfo();
  service.outage(true, true);
  platform().trace.reset();
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "");
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
  EXPECT_EQ(subnetLink("S3"), "");
}

TEST_F(SubmapRefresh, ReadThatBreaksOffPartWayIsUsed) {
  platform().rest.answers(kNodesPath, nodePage({node("NE=12", "1", "2")}, "m1"));
  platform().rest.fails(kNodesPath);
  platform().rest.answers(kNodesPath, nodePage({subnet("2", "City", "1")}, "m1"));
  platform().rest.fails(kNodesPath);
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "City");
  EXPECT_THAT(
      platform().trace.texts(),
      ElementsAre("getParentLinkSubnetName strSubnetworkID[S1] is not exists", "strSNLink = City"));
}

TEST_F(SubmapRefresh, ProcessExceptionEndsItWithItsCode) {
  NodeService service;
  service.onRequest([] {
    ProcessException failure;
    failure.errCode = 0x41180004;
    throw failure;
  });
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace("QuerySubnetAndNodesInfo processException,errCode = 1092091908")));
}

TEST_F(SubmapRefresh, MissingInterfaceIsAProcessException) {
  NodeService service;
  service.onRequest([] { throw InterfaceNotExistException(); });
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_THAT(platform().trace.texts(),
              ElementsAre("QuerySubnetAndNodesInfo processException,errCode = 1092091908"));
}

TEST_F(SubmapRefresh, AnythingElseThrownEndsItToo) {
  NodeService service;
  service.onRequest([] { throw 5; });
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace("QuerySubnetAndNodesInfo Catch unknown exception")));
}

TEST_F(SubmapRefresh, ExceptionInAReadLeavesTheOldLinks) {
  NodeService service;
  service.subnets(threeLevels());
  service.nodes({node("NE=12", "1", "3")});
  buffer().QuerySubnetAndNodesInfo();
  service.onRequest([] { throw 5; });
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "Region/City/Site");
}

TEST_F(SubmapRefresh, ObjectThatCannotBeReadLeavesTheMapsAsFarAsTheyGot) {
  NodeService service;
  service.subnets(threeLevels());
  service.nodes({node("NE=12", "1", "3"), Json::Value("text"), node("NE=13", "1", "3")});
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(link(12), "Region/City/Site");
  EXPECT_EQ(link(13), "");
  service.subnets({subnet("1", "Land", "1"), Json::Value("text"), subnet("2", "Town", "1")});
  platform().trace.reset();
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_EQ(subnetLink("S1"), "Land");
  EXPECT_EQ(subnetLink("S2"), "");
  EXPECT_EQ(link(12), "Region/City/Site");  // the devices' turn did not come
  EXPECT_EQ(platform().trace.texts().at(1), "QuerySubnetAndNodesInfo Catch unknown exception");
}

TEST_F(SubmapRefresh, LockIsFreeAfterAnException) {
  EXPECT_THROW(buffer().refreshSubnetNameLink(Objects{Json::Value("text")}), Json::LogicError);
  EXPECT_THROW(buffer().refreshDeviceSubnetNameLink(Objects{Json::Value("text")}),
               Json::LogicError);
  buffer().refreshSubnetNameLink(threeLevels());
  EXPECT_EQ(subnetLink("S3"), "Region/City/Site");
}

TEST_F(SubmapRefresh, RecordsHaveMessagesOfTheirOwn) {
  buffer().refreshSubnetNameLink(std::vector<SouthSubnet>{{"3", "Site", "9"}, {"4", "x", "4"}});
  buffer().refreshDeviceSubnetNameLink(
      std::vector<SouthDevice>{{12, "NE=12", "3", {{"Origin", "1"}}},
                               {13, "NE=13", "4", {}},
                               {-1, "NE=14", "S3", {{"Origin", "1"}}},
                               {15, "NE=15", "3", {{"Origin", "0"}}},
                               {16, "FR=16", "3", {{"Origin", "1"}}}});
  EXPECT_EQ(link(12), "Site");
  EXPECT_EQ(link(13), "x");
  EXPECT_THAT(
      platform().trace.lines(),
      ElementsAre(
          trace("getParentLinkSubnetName  strSubnetworkID[9] is not exists"), linkTrace("Site"),
          linkTrace("x"),
          trace("[SubmapBufMgr::OriginNE] Failed to find Origin field from asnKeyVal"),
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink device[-1]'s parent submapID[S3] not "
                "exists"),
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink pass not origin NE device[NE=15]"),
          trace("SubmapBufMgr::refreshDeviceSubnetNameLink pass not real NE device[FR=16]")));
  platform().trace.reset();
  EXPECT_EQ(buffer().getParentLinkSubnetName("8", std::vector<SouthSubnet>{{"8", "y", "3"}}),
            "Site/y");
  EXPECT_EQ(buffer().getParentLinkSubnetName("7", std::vector<SouthSubnet>{}), "");
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace("getParentLinkSubnetName  strSubnetworkID[7] is not exists")));
}

TEST_F(SubmapRefresh, OneLinkOfAMissingSubnetIsTraced) {
  EXPECT_EQ(buffer().getParentLinkSubnetName("S7", Objects{}), "");
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace("getParentLinkSubnetName strSubnetworkID[S7] is not exists")));
}

TEST_F(SubmapRefresh, TestsOfElements) {
  EXPECT_TRUE(SubmapBufMgr::IsRealNE("NE=12"));
  EXPECT_FALSE(SubmapBufMgr::IsRealNE("NE=12,FR=1"));
  EXPECT_TRUE(SubmapBufMgr::OriginNE({{"Origin", "1"}}));
  EXPECT_FALSE(SubmapBufMgr::OriginNE({{"Origin", "0"}}));
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
  EXPECT_TRUE(SubmapBufMgr::OriginNE({}));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace("[SubmapBufMgr::OriginNE] Failed to find Origin field from "
                                "asnKeyVal")));
}

}  // namespace
}  // namespace emf::test
