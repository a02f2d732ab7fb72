#include "containedresources.h"

#include <json/value.h>

#include <list>
#include <string>
#include <type_traits>
#include <vector>

#include "emfresinterface.h"
#include "orma/ident/resource_ids.h"
#include "platform_test.h"
#include "resource_records.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Ids = std::vector<std::int64_t>;
using Resources = std::list<Resource>;

static_assert(std::is_same_v<decltype(EMFResMgrI::getContainedResourceByMainType),
                             std::int64_t(const Ids&, std::int64_t, Resources&)>);
static_assert(std::is_same_v<decltype(EMFResMgrI::getContainedResourceByType),
                             std::int64_t(const Ids&, ResTypeID, Resources&)>);

constexpr char kPath[] = "/rest/resource/v3/instances/objects";

std::int64_t idOf(const std::string& fdn) { return resid_compat::ResDN2ResID(fdn); }

Resource resource(const std::string& fdn, const std::string& name, std::int64_t mainType,
                  std::int64_t subType) {
  return {resid_compat::ExtractResIdsFromFDN(fdn),
          NS_UTIL::compat::ResID2IID(idOf(fdn)),
          name,
          {mainType, subType}};
}

class ContainedResources : public emf::doubles::PlatformTest {
 protected:
  ContainedResources() {
    platform().rest.mainType(kFrame, Nimbola::MAIN_TYPE_FRAME);
    platform().rest.mainType(kOtherFrame, Nimbola::MAIN_TYPE_FRAME);
    platform().rest.mainType(kPortFdn, Nimbola::MAIN_TYPE_PORT);
    platform().rest.mainType(kSlot, Nimbola::MAIN_TYPE_SLOT);
  }

  static constexpr char kFrame[] = "NE=2,FR=1";
  static constexpr char kOtherFrame[] = "NE=2,FR=2";
  static constexpr char kPortFdn[] = "NE=2,FR=1,PP=1";
  static constexpr char kSlot[] = "NE=2,FR=1,S=3";
  static constexpr char kPage[] =
      R"({"objList":[{"nativeId":"NE=2,FR=1","name":"f1","subTypeOf3":7},
                     {"nativeId":"NE=2,FR=2","name":"f2","subTypeOf3":8},
                     {"nativeId":"NE=2,FR=1,PP=1","name":"p","subTypeOf6":7},
                     {"nativeId":null,"slotNativeId":"NE=2,FR=1,S=3","name":"s","subTypeOf4":9}]})";
};

TEST_F(ContainedResources, MainTypeSelects) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), 0);
  EXPECT_THAT(out, ElementsAre(resource(kFrame, "f1", 3, 7), resource(kOtherFrame, "f2", 3, 8)));
}

TEST_F(ContainedResources, ExactTypeSelectsBothParts) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByType({2}, {3, 8}, out), 0);
  EXPECT_THAT(out, ElementsAre(resource(kOtherFrame, "f2", 3, 8)));
}

TEST_F(ContainedResources, SubTypeZeroByTypeIsASubType) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByType({2}, {3, 0}, out), 0);
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(ContainedResources, TypesAreComparedInAllTheir64Bits) {
  constexpr std::int64_t kBit32 = std::int64_t{1} << 32;
  for (int i = 0; i < 3; ++i) platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3 + kBit32, out), 0);
  EXPECT_EQ(EMFResMgrI::getContainedResourceByType({2}, {3 + kBit32, 8}, out), 0);
  EXPECT_EQ(EMFResMgrI::getContainedResourceByType({2}, {3, 8 + kBit32}, out), 0);
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(ContainedResources, SlotNativeIdStandsInForANullNativeId) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 4, out), 0);
  EXPECT_THAT(out, ElementsAre(resource(kSlot, "s", 4, 9)));
}

TEST_F(ContainedResources, EmptyNativeIdIsNotNull) {
  platform().rest.answers(
      kPath, json(R"({"objList":[{"nativeId":"","slotNativeId":"NE=2,FR=1,S=3","name":"s"}]})"));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 4, out), 0);
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(ContainedResources, RequestsAreAsAgreed) {
  platform().rest.answers(kPath, json(R"({"objList":[],"queryId":"cursor"})"));
  platform().rest.answers(kPath, json(R"({"objList":[]})"));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2, 3}, 4, out), 0);
  const auto requests = platform().rest.requests();
  ASSERT_THAT(requests, SizeIs(2));
  // The value of "query-text" is itself a JSON string, with its quotes.
  EXPECT_EQ(compact(requests[0].body),
            R"({"limit":1000,"query-text":)"
            R"("\"g.V('NE=2').hasLabel('FixedNetworkElement').out('Has')\""})");
  EXPECT_EQ(compact(requests[1].body), R"({"query-id":"cursor"})");
  for (const auto& request : requests) {
    EXPECT_EQ(request.url, kPath);
    EXPECT_EQ(request.method, 2U);
    EXPECT_EQ(request.mode, 4U);
    EXPECT_TRUE(request.params.isNull());
  }
  EXPECT_THAT(platform().rest.documents(), IsEmpty());  // not made into post data
}

TEST_F(ContainedResources, BodyOfAMadeRequestIsReplacedAndTheRestOfItStays) {
  Nimbola::RestReq made;
  made.target = "made-target";
  made.body["made"] = true;
  made.extra["made"] = true;
  made.option = 7;
  platform().rest.madeRequest(made);
  Resources out;
  EMFResMgrI::getContainedResourceByMainType({2}, 4, out);
  ASSERT_THAT(platform().rest.requests(), SizeIs(1));
  const Nimbola::RestReq request = platform().rest.requests()[0];
  EXPECT_THAT(request.body.getMemberNames(), ElementsAre("limit", "query-text"));
  EXPECT_EQ(request.target, "made-target");
  EXPECT_EQ(compact(request.extra), R"({"made":true})");
  EXPECT_EQ(request.option, 7U);
}

TEST_F(ContainedResources, EveryIdOfTheElementIsWrittenInDecimal) {
  Resources out;
  EMFResMgrI::getContainedResourceByMainType({-5}, 4, out);
  EMFResMgrI::getContainedResourceByMainType({9223372036854775807}, 4, out);
  EXPECT_EQ(platform().rest.requests()[0].body["query-text"].asString(),
            "\"g.V('NE=-5').hasLabel('FixedNetworkElement').out('Has')\"");
  EXPECT_EQ(platform().rest.requests()[1].body["query-text"].asString(),
            "\"g.V('NE=9223372036854775807').hasLabel('FixedNetworkElement').out('Has')\"");
}

TEST_F(ContainedResources, NoIdsAskNothing) {
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({}, 3, out), 1);
  EXPECT_EQ(EMFResMgrI::getContainedResourceByType({}, {3, 7}, out), 1);
  EXPECT_THAT(platform().rest.requests(), IsEmpty());
}

TEST_F(ContainedResources, ByMainTypeThePathStartsWithEveryId) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2, idOf(kFrame)}, 3, out), 0);
  EXPECT_THAT(out, ElementsAre(resource(kFrame, "f1", 3, 7)));
}

TEST_F(ContainedResources, ByMainTypeAPathShorterThanTheIdsIsLeftOut) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2, idOf(kFrame), idOf(kSlot)}, 3, out), 0);
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(ContainedResources, ByTypeOnlyTheFirstIdCounts) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByType({2, idOf(kFrame)}, {3, 8}, out), 0);
  EXPECT_THAT(out, ElementsAre(resource(kOtherFrame, "f2", 3, 8)));
}

// A name that starts with no element still has a type by its last key.
TEST_F(ContainedResources, NameWithoutAnElementHasNoPathAndNoId) {
  platform().rest.mainType("X=1,FR=1", Nimbola::MAIN_TYPE_FRAME);
  const char* const page = R"({"objList":[{"nativeId":"X=1,FR=1","name":"f","subTypeOf3":7}]})";
  platform().rest.answers(kPath, json(page));
  platform().rest.answers(kPath, json(page));
  Resources byType;
  EMFResMgrI::getContainedResourceByType({2}, {3, 7}, byType);
  EXPECT_THAT(byType, ElementsAre(Resource{{}, NS_UTIL::compat::ResID2IID(0), "f", {3, 7}}));
  Resources byMainType;
  EMFResMgrI::getContainedResourceByMainType({2}, 3, byMainType);
  EXPECT_THAT(byMainType, IsEmpty());
}

// By the element that was asked for nothing is filtered but by the path, so another's can come.
TEST_F(ContainedResources, ByTypeAnotherElementsResourceStays) {
  platform().rest.mainType("NE=7,FR=1", Nimbola::MAIN_TYPE_FRAME);
  const char* const page = R"({"objList":[{"nativeId":"NE=7,FR=1","name":"f","subTypeOf3":7}]})";
  platform().rest.answers(kPath, json(page));
  platform().rest.answers(kPath, json(page));
  Resources byType;
  EMFResMgrI::getContainedResourceByType({2}, {3, 7}, byType);
  EXPECT_THAT(byType, SizeIs(1));
  Resources byMainType;
  EMFResMgrI::getContainedResourceByMainType({2}, 3, byMainType);
  EXPECT_THAT(byMainType, IsEmpty());
}

TEST_F(ContainedResources, OutputIsNotCleared) {
  platform().rest.answers(kPath, json(kPage));
  Resources out = {resource(kSlot, "before", 4, 0)};
  EMFResMgrI::getContainedResourceByType({2}, {3, 8}, out);
  EXPECT_THAT(out, ElementsAre(resource(kSlot, "before", 4, 0), resource(kOtherFrame, "f2", 3, 8)));
}

TEST_F(ContainedResources, EveryPageIsWalkedUntilTheCursorIsEmpty) {
  platform().rest.answers(kPath, json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":"a"}],
                                          "queryId":"c1"})"));
  platform().rest.answers(kPath, json(R"({"objList":[{"nativeId":"NE=2,FR=2","name":"b"}],
                                          "queryId":"c2"})"));
  platform().rest.answers(kPath, json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":"c"}],
                                          "queryId":""})"));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), 0);
  EXPECT_THAT(out, ElementsAre(resource(kFrame, "a", 3, 0), resource(kOtherFrame, "b", 3, 0),
                               resource(kFrame, "c", 3, 0)));
  ASSERT_THAT(platform().rest.requests(), SizeIs(3));
  EXPECT_EQ(compact(platform().rest.requests()[2].body), R"({"query-id":"c2"})");
}

TEST_F(ContainedResources, EmptyCursorOfTheFirstAnswerEndsTheWalk) {
  platform().rest.answers(kPath, json(R"({"objList":[],"queryId":""})"));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), 0);
  EXPECT_THAT(platform().rest.requests(), SizeIs(1));
}

// A cursor that has expired is a failed exchange: what came before it stays.
TEST_F(ContainedResources, FailedPageLeavesTheEarlierOnesAndNoTrace) {
  platform().rest.answers(kPath, json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":"a"}],
                                          "queryId":"c1"})"));
  platform().rest.fails(kPath, json(R"({"reason":"the cursor has expired"})"));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), -1);
  EXPECT_THAT(out, ElementsAre(resource(kFrame, "a", 3, 0)));
  EXPECT_THAT(platform().trace.texts(), IsEmpty());
  EXPECT_THAT(platform().log.texts(), IsEmpty());
}

TEST_F(ContainedResources, FailedFirstPageLeavesNothing) {
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByType({2}, {3, 7}, out), -1);
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(ContainedResources, RepeatedPageIsTakenAgain) {
  for (int i = 0; i < 2; ++i) {
    platform().rest.answers(kPath, json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":"a"}],
                                            "queryId":"same"})"));
  }
  platform().rest.answers(kPath, json(R"({"objList":[]})"));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), 0);
  EXPECT_THAT(out, SizeIs(2));
}

TEST_F(ContainedResources, NameIsConverted) {
  platform().text.characterSetSwitch(1);
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EMFResMgrI::getContainedResourceByType({2}, {3, 8}, out);
  EXPECT_THAT(out, ElementsAre(resource(kOtherFrame, "UTF-8>GBK:f2", 3, 8)));
}

TEST_F(ContainedResources, PageWithoutAListHoldsNothing) {
  for (const char* page : {"{}", R"({"objList":null})", R"({"objList":{}})", R"({"objList":7})"}) {
    platform().rest.answers(kPath, json(page));
    Resources out;
    EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), 0) << page;
    EXPECT_THAT(out, IsEmpty()) << page;
  }
}

TEST_F(ContainedResources, AbsentNameIsEmptyAndAbsentFdnNoMatch) {
  platform().rest.answers(kPath, json(R"({"objList":[null,{},{"nativeId":"NE=2,FR=1"}]})"));
  Resources out;
  EXPECT_EQ(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), 0);
  EXPECT_THAT(out, ElementsAre(resource(kFrame, "", 3, 0)));
}

TEST_F(ContainedResources, MemberOfAWrongTypeReachesTheCaller) {
  for (const char* object :
       {R"({"nativeId":["NE=2"]})", R"({"nativeId":"NE=2,FR=1","name":{"a":1}})",
        R"({"nativeId":null,"slotNativeId":{}})", "7",
        R"({"nativeId":"NE=2,FR=1","name":"b","subTypeOf3":"x"})"}) {
    platform().rest.answers(kPath, json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":"a"},)" +
                                        std::string(object) + "]}"));
    Resources out;
    EXPECT_THROW(EMFResMgrI::getContainedResourceByMainType({2}, 3, out), Json::LogicError)
        << object;
    EXPECT_THAT(out, ElementsAre(resource(kFrame, "a", 3, 0))) << object;
  }
}

TEST_F(ContainedResources, SubTypeIsReadBeforeTheMainTypeIsLookedAt) {
  const char* const page = R"({"objList":[{"nativeId":"NE=2,FR=1","name":"f","subTypeOf3":"x"}]})";
  platform().rest.answers(kPath, json(page));
  Resources out;
  EXPECT_THROW(EMFResMgrI::getContainedResourceByMainType({2}, 6, out), Json::LogicError);
}

TEST_F(ContainedResources, NameIsReadBeforeThePathIsLookedAt) {
  platform().rest.answers(kPath, json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":[]}]})"));
  Resources out;
  EXPECT_THROW(EMFResMgrI::getContainedResourceByMainType({7}, 3, out), Json::LogicError);
}

TEST_F(ContainedResources, SharedBodyTakesTheFlagAndBothTypes) {
  platform().rest.answers(kPath, json(kPage));
  Resources out;
  EXPECT_EQ(QueryContainedResources({2}, out, true, 3, 7), 0);
  EXPECT_THAT(out, ElementsAre(resource(kFrame, "f1", 3, 7)));
}

}  // namespace
}  // namespace emf::test
