#include <json/value.h>

#include <list>
#include <type_traits>

#include "emfresinterface.h"
#include "mainrestypes.h"
#include "platform_test.h"
#include "resource_records.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

static_assert(
    std::is_same_v<decltype(EMFResMgrI::getResMainType), std::int64_t(std::list<NbiResMainType>&)>);

constexpr char kMainTypesPath[] = "/rest/resource/v2/metadatas/main-resource-type";

class MainResTypes : public emf::doubles::PlatformTest {};

TEST_F(MainResTypes, EveryPageIsReadInOrder) {
  platform().text.characterSetSwitch(1);
  platform().rest.answers(kMainTypesPath,
                          json(R"({"mainResTypes":[{"id":1,"name":"NE"},{"id":3,"name":"F"}],
                                          "objList":[{"id":9,"name":"no"}],
                                          "isTruncated":true,"marker":"m2"})"));
  platform().rest.answers(kMainTypesPath, json(R"({"mainResTypes":[{"id":-6,"name":""}]})"));
  std::list<NbiResMainType> out = {NbiResMainType{7, "before"}};
  EXPECT_EQ(EMFResMgrI::getResMainType(out), 0);
  EXPECT_THAT(out, ElementsAre(NbiResMainType{7, "before"}, NbiResMainType{1, "UTF-8>GBK:NE"},
                               NbiResMainType{3, "UTF-8>GBK:F"}, NbiResMainType{-6, "UTF-8>GBK:"}));
}

TEST_F(MainResTypes, RequestsCarryLimitAndMarkerInTheBody) {
  platform().rest.answers(kMainTypesPath,
                          json(R"({"mainResTypes":[],"isTruncated":true,"marker":"m2"})"));
  platform().rest.answers(kMainTypesPath, json(R"({"mainResTypes":[]})"));
  std::list<NbiResMainType> out;
  EMFResMgrI::getResMainType(out);
  const auto requests = platform().rest.requests();
  ASSERT_THAT(requests, SizeIs(2));
  EXPECT_EQ(compact(requests[0].body), R"({"limit":200})");
  EXPECT_EQ(compact(requests[1].body), R"({"limit":200,"marker":"m2"})");
  for (const auto& request : requests) {
    EXPECT_EQ(request.url, kMainTypesPath);
    EXPECT_EQ(request.method, 2U);
    EXPECT_EQ(request.mode, 8U);  // as made
    EXPECT_TRUE(request.params.isNull());
  }
}

TEST_F(MainResTypes, DocumentIsAnEmptyObjectAndNotNull) {
  platform().rest.postDataBecomes([](const Json::Value& document) {
    Json::Value data;
    data["data"] = document;
    return data;
  });
  std::list<NbiResMainType> out;
  EMFResMgrI::getResMainType(out);
  ASSERT_THAT(platform().rest.documents(), SizeIs(1));
  EXPECT_TRUE(platform().rest.documents()[0].isObject());
  EXPECT_TRUE(platform().rest.documents()[0].empty());
  EXPECT_EQ(compact(platform().rest.requests().at(0).body), R"({"data":{},"limit":200})");
}

TEST_F(MainResTypes, FailureOfASecondPageGivesTheCallerNothing) {
  platform().rest.answers(kMainTypesPath, json(R"({"mainResTypes":[{"id":1,"name":"NE"}],
                                          "isTruncated":true,"marker":"m2"})"));
  platform().rest.fails(kMainTypesPath);
  std::list<NbiResMainType> out;
  EXPECT_EQ(EMFResMgrI::getResMainType(out), -1);
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(MainResTypes, WalkKeepsWhatCameBeforeAFailureForItself) {
  platform().rest.answers(kMainTypesPath, json(R"({"mainResTypes":[{"id":1,"name":"NE"}],
                                          "isTruncated":true,"marker":"m2"})"));
  platform().rest.fails(kMainTypesPath);
  std::vector<std::pair<int, std::string>> types;
  EXPECT_FALSE(QueryMainResTypes(types));
  EXPECT_THAT(types, ElementsAre(Pair(1, "NE")));
}

TEST_F(MainResTypes, FirstPageThatFailsEndsTheWalk) {
  std::list<NbiResMainType> out;
  EXPECT_EQ(EMFResMgrI::getResMainType(out), -1);
  EXPECT_THAT(platform().rest.requests(), SizeIs(1));
}

TEST_F(MainResTypes, AbsentMembersAreZeroAndEmpty) {
  platform().rest.answers(kMainTypesPath,
                          json(R"({"mainResTypes":[{},null,{"id":null,"name":null}]})"));
  std::list<NbiResMainType> out;
  EXPECT_EQ(EMFResMgrI::getResMainType(out), 0);
  EXPECT_THAT(out, ElementsAre(NbiResMainType(), NbiResMainType(), NbiResMainType()));
}

TEST_F(MainResTypes, PageWithoutAListHoldsNothing) {
  for (const char* page : {"{}", R"({"mainResTypes":null})", R"({"mainResTypes":{}})"}) {
    platform().rest.answers(kMainTypesPath, json(page));
    std::list<NbiResMainType> out;
    EXPECT_EQ(EMFResMgrI::getResMainType(out), 0) << page;
    EXPECT_THAT(out, IsEmpty()) << page;
  }
}

TEST_F(MainResTypes, MemberOfAWrongTypeReachesTheCallerWithNothing) {
  for (const char* object : {R"({"id":"x"})", R"({"id":3000000000})", R"({"name":[]})", "7"}) {
    platform().rest.answers(kMainTypesPath, json(R"({"mainResTypes":[{"id":1,"name":"NE"},)" +
                                                 std::string(object) + "]}"));
    std::list<NbiResMainType> out;
    EXPECT_THROW(EMFResMgrI::getResMainType(out), Json::LogicError) << object;
    EXPECT_THAT(out, IsEmpty()) << object;
  }
}

}  // namespace
}  // namespace emf::test
