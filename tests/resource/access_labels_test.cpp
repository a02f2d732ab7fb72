#include <json/value.h>

#include <map>
#include <string>
#include <type_traits>

#include "accessresources.h"
#include "emfresinterface.h"
#include "platform_test.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::Conversion;
using emf::doubles::json;
using emf::doubles::platform;
using emf::doubles::ResourceQuery;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

static_assert(std::is_same_v<decltype(EMFResMgrI::getAccessResourceLabels),
                             std::int64_t(std::map<int, ResourceEightLoc>&)>);

constexpr char kFramePath[] = "/rest/resource/v3/instances/objects/FixedNetworkFrame/actions/query";
constexpr char kCardPath[] = "/rest/resource/v3/instances/objects/FixedNetworkCard/actions/query";

using Locations = std::map<int, ResourceEightLoc>;
using Labels = std::map<int, std::string>;

ResourceEightLoc at(const std::string& fdn, const std::string& label = "came with it") {
  ResourceEightLoc location;
  location.fdn = fdn;
  location.label = label;
  return location;
}

Labels labelsOf(const Locations& locations) {
  Labels labels;
  for (const auto& [key, location] : locations) labels[key] = location.label;
  return labels;
}

class LocationLabel : public emf::doubles::PlatformTest {};

TEST_F(LocationLabel, EnglishWordsStayAsTheyAre) {
  EXPECT_EQ(BuildLocationLabel("CP", "1", "2", "3"), "Frame:1/Slot:2");
  EXPECT_EQ(BuildLocationLabel("PP", "1", "2", "3"), "Frame:1/Slot:2/Port:3");
  EXPECT_EQ(BuildLocationLabel("", "", "", ""), "Frame:/Slot:/Port:");
  EXPECT_THAT(platform().text.conversions(), IsEmpty());
}

// The words are GBK; the conversion makes them the UTF-8 that the northbound conversion starts
// from.
TEST_F(LocationLabel, ChineseWordsAreConvertedFromGbk) {
  platform().text.language("zh_CN");
  EXPECT_EQ(BuildLocationLabel("CP", "1", "2", "3"), "GBK>UTF-8:\xBF\xF2:1/\xB2\xDB:2");
  BuildLocationLabel("LP", "1", "2", "3");
  EXPECT_THAT(platform().text.conversions(),
              ElementsAre(Conversion{"GBK", "UTF-8", "\xBF\xF2:1/\xB2\xDB:2"},
                          Conversion{"GBK", "UTF-8", "\xBF\xF2:1/\xB2\xDB:2/\xB6\xCB\xBF\xDA:3"}));
}

TEST_F(LocationLabel, ChineseWordsReadAsMeant) {
  platform().text.language("zh_CN");
  platform().text.convertsTruly();
  EXPECT_EQ(BuildLocationLabel("PP", "1", "2", "3"), "框:1/槽:2/端口:3");
}

TEST_F(LocationLabel, AnyOtherLanguageHasNoWords) {
  for (const char* language : {"", "zh", "en", "EN_US", "fr_FR"}) {
    platform().text.language(language);
    EXPECT_EQ(BuildLocationLabel("CP", "1", "2", "3"), "") << language;
    EXPECT_EQ(BuildLocationLabel("PP", "1", "2", "3"), "") << language;
  }
}

class AccessLabel : public emf::doubles::PlatformTest {};

struct LabelCase {
  const char* fdn;
  const char* label;
};

TEST_F(AccessLabel, SegmentsMakeTheLabel) {
  const LabelCase kCases[] = {
      {"NE=2,FR=1,S=2,CP=1", "Frame:1/Slot:2"},
      {"NE=2,CP=1", "Frame:/Slot:"},
      {"NE=2,FR=1,S=2,CP=1,PP=0-1-7", "Frame:1/Slot:2/Port:7"},
      {"NE=2,FR=1,S=2,LP=0/1/8", "Frame:1/Slot:2/Port:8"},
      {"NE=2,FR=1,S=2,PP=0-1", "Frame:1/Slot:2/Port:"},
      {"NE=2,FR=1,S=2,PP=,LP=0-1-9", "Frame:1/Slot:2/Port:9"},
      {"NE=2,FR=1,S=2,PP=0-1-4,LP=0-1-9", "Frame:1/Slot:2/Port:4"},
      {"NE=2,FR=1,S=2,PP=", ""},
      {"NE=2,FR=1,S=2,PP=,LP=", ""},
      {"NE=2,FR=1,FR=3,S=2,CP=1", "Frame:3/Slot:2"},
      {"", "Frame:/Slot:/Port:"},
  };
  for (const auto& [fdn, label] : kCases) EXPECT_EQ(BuildAccessLabel(fdn), label) << fdn;
}

TEST_F(AccessLabel, LabelIsConvertedNorthbound) {
  platform().text.characterSetSwitch(1);
  EXPECT_EQ(BuildAccessLabel("NE=2,FR=1,S=2,CP=1"), "UTF-8>GBK:Frame:1/Slot:2");
}

TEST_F(AccessLabel, ChineseLabelInEveryCharacterSet) {
  platform().text.language("zh_CN");
  platform().text.convertsTruly();
  const std::string expected[] = {"框:1/槽:2/端口:7", "\xBF\xF2:1/\xB2\xDB:2/\xB6\xCB\xBF\xDA:7",
                                  "?:1/?:2/?\?:7"};
  for (int value = 0; value < 3; ++value) {
    platform().text.characterSetSwitch(value);
    EXPECT_EQ(BuildAccessLabel("NE=2,FR=1,S=2,PP=0-1-7"), expected[value]) << value;
  }
}

class AccessQuery : public emf::doubles::PlatformTest {};

TEST_F(AccessQuery, FramesAndDaughterCardsBecomeExpressionsInTheOrderOfTheirFdns) {
  AccessResources byFdn;
  for (const char* fdn : {"NE=2,FR=9", "NE=2,FR=1", "NE=2,S=1,SC=1", "NE=2,S=1,CP=1"}) {
    byFdn[fdn] = at(fdn);
  }
  Json::Value frames;
  Json::Value cards;
  FillAccessQuery(byFdn, frames, cards);
  EXPECT_EQ(compact(frames),
            R"({"simple":[{"caseSensitive":"false","name":"nativeId","operator":"equal",)"
            R"("value":"NE=2,FR=1"},{"caseSensitive":"false","name":"nativeId",)"
            R"("operator":"equal","value":"NE=2,FR=9"}]})");
  EXPECT_EQ(compact(cards),
            R"({"simple":[{"caseSensitive":"false","name":"nativeId","operator":"equal",)"
            R"("value":"NE=2,S=1,SC=1"}]})");
  EXPECT_EQ(byFdn["NE=2,S=1,CP=1"].label, "Frame:/Slot:1");
  EXPECT_EQ(byFdn["NE=2,FR=1"].label, "came with it");
}

TEST_F(AccessQuery, AnyOtherKindIsTracedAndKept) {
  AccessResources byFdn;
  for (const char* fdn : {"", "NE=2", "NE=2,S=1", "NE=2,SS=1", "NE=2,XX"}) {
    byFdn[fdn] = at(fdn);
    byFdn[fdn].resMainTypeID = 4;
  }
  Json::Value frames;
  Json::Value cards;
  FillAccessQuery(byFdn, frames, cards);
  EXPECT_TRUE(frames.isNull());
  EXPECT_TRUE(cards.isNull());
  EXPECT_THAT(platform().trace.lines(), SizeIs(5));
  for (const auto& line : platform().trace.lines()) {
    EXPECT_THAT(line, FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0),
                                "getAccessResourceLabels not supported resMainTypeID = 4"));
  }
  for (const auto& [fdn, resource] : byFdn) EXPECT_EQ(resource.label, "came with it") << fdn;
}

class AccessAnswer : public emf::doubles::PlatformTest {};

TEST_F(AccessAnswer, NameBecomesTheLabelOfItsFdn) {
  platform().resources.answers(json(R"({"objList":[{"nativeId":"A","name":"a"},
                                                   {"nativeId":"B","name":"b"}]})"));
  AccessResources byFdn = {{"A", at("A")}};
  QueryAccessResource("/path", "body", byFdn);
  EXPECT_EQ(byFdn["A"].label, "a");
  EXPECT_EQ(byFdn["B"].label, "b");
  EXPECT_THAT(byFdn, SizeIs(2));
  EXPECT_THAT(
      platform().resources.queries(),
      ElementsAre(FieldsAre("GetAcessResource", IsEmpty(), "/path", "body", Json::Value())));
}

TEST_F(AccessAnswer, ObjectWithoutAMemberTakesThatOfTheOneBefore) {
  platform().resources.answers(json(R"({"objList":[{"nativeId":"A","name":"a"},{"nativeId":"B"},
                                                   {"name":"c"},{"nativeId":"D","name":null},{}]})"));
  AccessResources byFdn;
  QueryAccessResource("/path", "body", byFdn);
  EXPECT_THAT(byFdn, SizeIs(3));
  EXPECT_EQ(byFdn["A"].label, "a");
  EXPECT_EQ(byFdn["B"].label, "c");
  EXPECT_EQ(byFdn["D"].label, "c");
  const auto unknown =
      FieldsAre("TaDebug", 1, "emfresinterface", "unknown", Gt(0), "getResultFromJson unknown RSP");
  EXPECT_THAT(platform().trace.lines(), Contains(unknown).Times(3));
}

TEST_F(AccessAnswer, EmptyMemberIsAMember) {
  platform().resources.answers(json(R"({"objList":[{"nativeId":"A","name":"a"},
                                                   {"nativeId":"B","name":""},
                                                   {"nativeId":"","name":"c"}]})"));
  AccessResources byFdn = {{"B", at("B")}};
  QueryAccessResource("/path", "body", byFdn);
  EXPECT_EQ(byFdn["A"].label, "a");
  EXPECT_EQ(byFdn["B"].label, "");
  EXPECT_EQ(byFdn[""].label, "c");
  EXPECT_THAT(platform().trace.texts(), Not(Contains("getResultFromJson unknown RSP")));
}

TEST_F(AccessAnswer, NothingBeforeTheFirstObjectIsEmpty) {
  platform().resources.answers(json(R"({"objList":[{}]})"));
  AccessResources byFdn;
  QueryAccessResource("/path", "body", byFdn);
  ASSERT_THAT(byFdn, SizeIs(1));
  EXPECT_EQ(byFdn[""].label, "");
}

TEST_F(AccessAnswer, AnswerIsTracedInOrder) {
  platform().resources.answers(json(R"({"objList":[{"nativeId":"A%n","name":"a"}]})"));
  AccessResources byFdn;
  QueryAccessResource("/path", "body", byFdn);
  EXPECT_THAT(
      platform().trace.lines(),
      ElementsAre(
          FieldsAre("TaTrace", 0, "emfresinterface", "unknown", Gt(0), "getResultFromJson Entered"),
          FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0),
                    "getResultFromJson rsp size = 1,detail = [\n\t{\n\t\t\"name\" : "
                    "\"a\",\n\t\t\"nativeId\" : \"A%n\"\n\t}\n]\n"),
          FieldsAre("TaTrace", 0, "emfresinterface", "unknown", Gt(0),
                    "getResultFromJson leaved")));
}

TEST_F(AccessAnswer, FailureIsTracedAndTheAnswerLookedAtAllTheSame) {
  platform().resources.answers(json(R"({"objList":[{"nativeId":"A","name":"a"}]})"), false);
  AccessResources byFdn;
  QueryAccessResource("/path", "body", byFdn);
  EXPECT_EQ(byFdn["A"].label, "a");
  EXPECT_THAT(platform().trace.lines(),
              Contains(FieldsAre("TaDebug", 1, "emfresinterface", "unknown", Gt(0),
                                 "getAccessResource is failed")));
}

TEST_F(AccessAnswer, FailureWithoutAnAnswerChangesNothing) {
  AccessResources byFdn = {{"A", at("A")}};
  QueryAccessResource("/path", "body", byFdn);
  EXPECT_EQ(byFdn["A"].label, "came with it");
  EXPECT_THAT(platform().trace.texts(),
              ElementsAre("getResultFromJson Entered", "getAccessResource is failed",
                          "getResultFromJson leaved"));
}

TEST_F(AccessAnswer, ListThatIsNoneChangesNothing) {
  for (const char* answer :
       {"{}", R"({"objList":null})", R"({"objList":7})", R"({"objList":{}})", "[]", "7"}) {
    platform().resources.answers(json(answer));
    AccessResources byFdn = {{"A", at("A")}};
    QueryAccessResource("/path", "body", byFdn);
    EXPECT_EQ(byFdn["A"].label, "came with it") << answer;
    EXPECT_THAT(byFdn, SizeIs(1)) << answer;
  }
}

TEST_F(AccessAnswer, MemberOfAWrongTypeReachesTheCaller) {
  for (const char* object :
       {R"({"nativeId":7,"name":"b"})", R"({"nativeId":"B","name":[]})", "\"text\""}) {
    platform().resources.answers(
        json(R"({"objList":[{"nativeId":"A","name":"a"},)" + std::string(object) + "]}"));
    AccessResources byFdn;
    EXPECT_THROW(QueryAccessResource("/path", "body", byFdn), Json::LogicError) << object;
    EXPECT_EQ(byFdn["A"].label, "a") << object;
  }
}

TEST_F(AccessAnswer, LabelIsConvertedNorthbound) {
  platform().text.characterSetSwitch(1);
  platform().resources.answers(json(R"({"objList":[{"nativeId":"A","name":"a"}]})"));
  AccessResources byFdn;
  QueryAccessResource("/path", "body", byFdn);
  EXPECT_EQ(byFdn["A"].label, "UTF-8>GBK:a");
}

class AccessLabels : public emf::doubles::PlatformTest {};

constexpr char kFrameBody[] =
    "{\n\t\"condition\" : \n\t{\n\t\t\"filter\" : \n\t\t{\n\t\t\t\"logOp\" : \"or\",\n\t\t\t"
    "\"simple\" : \n\t\t\t[\n\t\t\t\t{\n\t\t\t\t\t\"caseSensitive\" : \"false\",\n\t\t\t\t\t"
    "\"name\" : \"nativeId\",\n\t\t\t\t\t\"operator\" : \"equal\",\n\t\t\t\t\t\"value\" : "
    "\"NE=2,FR=1\"\n\t\t\t\t}\n\t\t\t]\n\t\t}\n\t},\n\t\"content-selector\" : \n\t[\n\t\t"
    "\"nativeId\",\n\t\t\"name\"\n\t],\n\t\"limit\" : 1000\n}\n";

std::string cardBody() {
  std::string body = kFrameBody;
  const std::string frame = "NE=2,FR=1\"";
  return body.replace(body.find(frame), frame.size(), "NE=2,S=1,SC=1\"");
}

TEST_F(AccessLabels, FramesAndDaughterCardsAreAskedForOnceEach) {
  platform().resources.answersBy([](const ResourceQuery& query, Json::Value& answer) {
    answer = json(query.path == kFramePath
                      ? R"({"objList":[{"nativeId":"NE=2,FR=1","name":"frame"}]})"
                      : R"({"objList":[{"nativeId":"NE=2,S=1,SC=1","name":"daughter"}]})");
    return true;
  });
  Locations locations = {{4, at("NE=2,FR=1")}, {7, at("NE=2,S=1,SC=1")}, {9, at("NE=2,S=1,CP=1")}};
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_EQ(labelsOf(locations), (Labels{{4, "frame"}, {7, "daughter"}, {9, "Frame:/Slot:1"}}));
  EXPECT_THAT(
      platform().resources.queries(),
      ElementsAre(FieldsAre("GetAcessResource", IsEmpty(), kFramePath, kFrameBody, Json::Value()),
                  FieldsAre("GetAcessResource", IsEmpty(), kCardPath, cardBody(), Json::Value())));
}

TEST_F(AccessLabels, RequestsAreTraced) {
  Locations locations = {{4, at("NE=2,FR=1")}, {7, at("NE=2,S=1,SC=1")}};
  EMFResMgrI::getAccessResourceLabels(locations);
  const auto request = [](const std::string& text) {
    return FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0), text);
  };
  EXPECT_THAT(platform().trace.lines(),
              Contains(request("JsonAccessResFrame strFrameUrl = " + std::string(kFramePath) +
                               ", JsonReqBody = " + kFrameBody)));
  EXPECT_THAT(platform().trace.lines(),
              Contains(request("JsonDaughterCard strDaughterCardUrl = " + std::string(kCardPath) +
                               ", JsonReqBody = " + cardBody())));
}

TEST_F(AccessLabels, EmptyMapAsksNothing) {
  Locations locations;
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_THAT(platform().resources.queries(), IsEmpty());
  EXPECT_THAT(platform().trace.texts(), IsEmpty());
}

TEST_F(AccessLabels, CardsAndPortsAloneAskNothing) {
  Locations locations = {{0, at("NE=2,FR=1,S=2,CP=1")}, {1, at("NE=2,FR=1,S=2,PP=0-0-3")}};
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_THAT(platform().resources.queries(), IsEmpty());
  EXPECT_EQ(labelsOf(locations), (Labels{{0, "Frame:1/Slot:2"}, {1, "Frame:1/Slot:2/Port:3"}}));
}

TEST_F(AccessLabels, OnlyFramesAskOnlyForThem) {
  Locations locations = {{0, at("NE=2,FR=1")}};
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_THAT(
      platform().resources.queries(),
      ElementsAre(FieldsAre("GetAcessResource", IsEmpty(), kFramePath, kFrameBody, Json::Value())));
}

TEST_F(AccessLabels, OnlyDaughterCardsAskOnlyForThem) {
  Locations locations = {{0, at("NE=2,S=1,SC=1")}};
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_THAT(
      platform().resources.queries(),
      ElementsAre(FieldsAre("GetAcessResource", IsEmpty(), kCardPath, cardBody(), Json::Value())));
}

TEST_F(AccessLabels, WhatIsNotAnsweredKeepsItsLabel) {
  platform().resources.answers(json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":"frame"}]})"));
  Locations locations = {
      {0, at("NE=2,FR=1", "a")}, {1, at("NE=2,FR=2", "b")}, {2, at("NE=2,S=1", "c")}};
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_EQ(labelsOf(locations), (Labels{{0, "frame"}, {1, "b"}, {2, "c"}}));
}

TEST_F(AccessLabels, FailedQueriesKeepEveryLabel) {
  Locations locations = {{0, at("NE=2,FR=1", "a")}, {1, at("NE=2,S=1,SC=1", "b")}};
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_EQ(labelsOf(locations), (Labels{{0, "a"}, {1, "b"}}));
  EXPECT_THAT(platform().resources.queries(), SizeIs(2));
}

TEST_F(AccessLabels, EntriesOfOneFdnShareTheLabelAndTheLaterOneIsItsStart) {
  Locations locations = {{0, at("NE=2,FR=1", "a")}, {1, at("NE=2,FR=1", "b")}};
  EXPECT_EQ(EMFResMgrI::getAccessResourceLabels(locations), 0);
  EXPECT_EQ(labelsOf(locations), (Labels{{0, "b"}, {1, "b"}}));
  platform().resources.answers(json(R"({"objList":[{"nativeId":"NE=2,FR=1","name":"frame"}]})"));
  EMFResMgrI::getAccessResourceLabels(locations);
  EXPECT_EQ(labelsOf(locations), (Labels{{0, "frame"}, {1, "frame"}}));
}

TEST_F(AccessLabels, PortWithoutAValueLosesItsLabel) {
  Locations locations = {{0, at("NE=2,FR=1,PP=,LP=")}};
  EMFResMgrI::getAccessResourceLabels(locations);
  EXPECT_EQ(labelsOf(locations), (Labels{{0, ""}}));
}

TEST_F(AccessLabels, InAnotherLanguageCardsAndPortsHaveNone) {
  platform().text.language("fr_FR");
  Locations locations = {{0, at("NE=2,S=2,CP=1")}, {1, at("NE=2,S=2,PP=0-0-3")}};
  EMFResMgrI::getAccessResourceLabels(locations);
  EXPECT_EQ(labelsOf(locations), (Labels{{0, ""}, {1, ""}}));
}

TEST_F(AccessLabels, NothingButTheLabelIsWritten) {
  ResourceEightLoc location = at("NE=2,S=2,CP=1");
  for (int i = 0; i < 8; ++i) location.levels[i] = 10 + i;
  location.spareNumber = 20;
  location.resMainTypeID = 21;
  location.resSubTypeID = 22;
  Locations locations = {{0, location}};
  EMFResMgrI::getAccessResourceLabels(locations);
  EXPECT_THAT(locations.at(0), FieldsAre(ElementsAre(10, 11, 12, 13, 14, 15, 16, 17),
                                         "NE=2,S=2,CP=1", 20, "Frame:/Slot:2", 21, 22));
}

}  // namespace
}  // namespace emf::test
