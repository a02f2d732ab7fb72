#include <json/value.h>

#include <list>
#include <string>
#include <type_traits>

#include "emfresinterface.h"
#include "platform_test.h"
#include "resource_records.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

static_assert(std::is_same_v<decltype(EMFResMgrI::getAllManagedElements),
                             std::int64_t(std::list<Resource>&)>);

constexpr char kElementsPath[] = "/rest/resource/v3/instances/objects/FixedNetworkElement";
constexpr std::int64_t kReadFailed = 0x411800BA;
static_assert(kReadFailed == 1092092090);
constexpr std::int64_t kIidBit = std::int64_t{1} << 60;

const Resource kSystem = {{1}, 2, "OSS", {1, 0}};

Resource element(std::int64_t id, const std::string& name, std::int64_t subType) {
  return {{id}, id + kIidBit, name, {1, subType}};
}

class ManagedElements : public emf::doubles::PlatformTest {};

TEST_F(ManagedElements, EveryPageIsReadAndTheSystemComesFirst) {
  platform().rest.answers(kElementsPath,
                          json(R"({"objList":[{"nativeId":"NE=2","name":"a","subTypeOf1":5},
                                 {"nativeId":"NE=3","name":"b"}],
                      "isTruncated":true,"marker":"m2"})"));
  platform().rest.answers(kElementsPath, json(R"({"objList":[{"nativeId":"NE=4","name":"c"}]})"));
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0);
  EXPECT_THAT(out,
              ElementsAre(kSystem, element(2, "a", 5), element(3, "b", 0), element(4, "c", 0)));
}

TEST_F(ManagedElements, RequestsCarryTheSelectorTheLimitAndTheMarker) {
  platform().rest.answers(kElementsPath,
                          json(R"({"objList":[],"isTruncated":true,"marker":"m2"})"));
  platform().rest.answers(kElementsPath, json(R"({"objList":[]})"));
  std::list<Resource> out;
  EMFResMgrI::getAllManagedElements(out);
  const auto requests = platform().rest.requests();
  ASSERT_THAT(requests, SizeIs(2));
  EXPECT_EQ(compact(requests[0].body),
            R"({"content-selector":["name","nativeId","subTypeOf1"],"limit":1000})");
  EXPECT_EQ(compact(requests[1].body),
            R"({"content-selector":["name","nativeId","subTypeOf1"],"limit":1000,"marker":"m2"})");
  for (const auto& request : requests) {
    EXPECT_EQ(request.url, kElementsPath);
    EXPECT_EQ(request.method, 2U);
    EXPECT_EQ(request.mode, 4U);
    EXPECT_TRUE(request.params.isNull());
    EXPECT_EQ(request.target, "made-target");
  }
  ASSERT_THAT(platform().rest.documents(), SizeIs(1));
  EXPECT_EQ(compact(platform().rest.documents()[0]),
            R"({"content-selector":["name","nativeId","subTypeOf1"]})");
}

TEST_F(ManagedElements, NoElementsLeaveTheSystemAlone) {
  platform().rest.answers(kElementsPath, json(R"({"objList":[]})"));
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0);
  EXPECT_THAT(out, ElementsAre(kSystem));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaTrace", 0, "emfresinterface", "unknown", Gt(0),
                                    "EMFResMgrI::getAllManagedElements enter")));
}

TEST_F(ManagedElements, RecordsBeforeTheCallStayBehindTheSystem) {
  platform().rest.answers(kElementsPath, json(R"({"objList":[{"nativeId":"NE=2","name":"a"}]})"));
  std::list<Resource> out = {element(9, "before", 0)};
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0);
  EXPECT_THAT(out, ElementsAre(kSystem, element(9, "before", 0), element(2, "a", 0)));
}

TEST_F(ManagedElements, FailureOfASecondPageLeavesTheFirstWithoutTheSystem) {
  platform().rest.answers(kElementsPath, json(R"({"objList":[{"nativeId":"NE=2","name":"a"}],
                                          "isTruncated":true,"marker":"m2"})"));
  platform().rest.fails(kElementsPath);
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), kReadFailed);
  EXPECT_THAT(out, ElementsAre(element(2, "a", 0)));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaTrace", 0, "emfresinterface", "unknown", Gt(0),
                                    "EMFResMgrI::getAllManagedElements enter"),
                          FieldsAre("TaTrace", 0, "emfresinterface", "unknown", Gt(0),
                                    " EMFResMgrI::getAllManagedElements failed"),
                          FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0),
                                    "EMFResMgrI::getAllManagedElements  failed!")));
}

TEST_F(ManagedElements, FailureOfTheFirstPageLeavesNothing) {
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), kReadFailed);
  EXPECT_THAT(out, IsEmpty());
  EXPECT_THAT(platform().rest.requests(), SizeIs(1));
}

TEST_F(ManagedElements, NameIsConvertedAndTheSystemsIsNot) {
  platform().text.characterSetSwitch(2);
  platform().rest.answers(kElementsPath, json(R"({"objList":[{"nativeId":"NE=2","name":"a"}]})"));
  std::list<Resource> out;
  EMFResMgrI::getAllManagedElements(out);
  EXPECT_THAT(out, ElementsAre(kSystem, element(2, "UTF-8>ISO-8859-1:a", 0)));
}

// The service alone ends a walk: a page that comes again is taken again.
TEST_F(ManagedElements, RepeatedPageIsTakenAgain) {
  for (int i = 0; i < 2; ++i) {
    platform().rest.answers(kElementsPath, json(R"({"objList":[{"nativeId":"NE=2","name":"a"}],
                                            "isTruncated":true,"marker":"same"})"));
  }
  platform().rest.answers(kElementsPath, json(R"({"objList":[]})"));
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0);
  EXPECT_THAT(out, ElementsAre(kSystem, element(2, "a", 0), element(2, "a", 0)));
}

TEST_F(ManagedElements, PageWithoutAListHoldsNothing) {
  for (const char* page : {"{}", R"({"objList":null})", R"({"objList":{}})", R"({"objList":7})"}) {
    platform().rest.answers(kElementsPath, json(page));
    std::list<Resource> out;
    EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0) << page;
    EXPECT_THAT(out, ElementsAre(kSystem)) << page;
  }
}

TEST_F(ManagedElements, ListThatIsAnObjectIsGoneThroughLikeOne) {
  platform().rest.answers(kElementsPath,
                          json(R"({"objList":{"x":{"nativeId":"NE=2","name":"a"}}})"));
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0);
  EXPECT_THAT(out, ElementsAre(kSystem, element(2, "a", 0)));
}

// The name is a character string of C, unlike the other texts.
TEST_F(ManagedElements, NameEndsAtItsFirstNul) {
  platform().rest.answers(kElementsPath,
                          json(R"({"objList":[{"nativeId":"NE=2","name":"a\u0000b"}]})"));
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0);
  EXPECT_THAT(out, ElementsAre(kSystem, element(2, "a", 0)));
}

TEST_F(ManagedElements, AbsentIdIsTheIdNothing) {
  platform().rest.answers(kElementsPath, json(R"({"objList":[{"nativeId":null,"name":""}]})"));
  std::list<Resource> out;
  EXPECT_EQ(EMFResMgrI::getAllManagedElements(out), 0);
  EXPECT_THAT(out, ElementsAre(kSystem, element(0, "", 0)));
}

TEST_F(ManagedElements, MemberOfAWrongTypeReachesTheCaller) {
  for (const char* object :
       {R"({"nativeId":["NE=3"],"name":"b"})", R"({"nativeId":"NE=3","name":7})",
        R"({"nativeId":"NE=3"})", R"({"nativeId":"NE=3","name":"b","subTypeOf1":"x"})", "7"}) {
    platform().rest.answers(kElementsPath, json(R"({"objList":[{"nativeId":"NE=2","name":"a"},)" +
                                                std::string(object) + "]}"));
    std::list<Resource> out;
    EXPECT_THROW(EMFResMgrI::getAllManagedElements(out), Json::LogicError) << object;
    EXPECT_THAT(out, ElementsAre(element(2, "a", 0))) << object;
  }
}

}  // namespace
}  // namespace emf::test
