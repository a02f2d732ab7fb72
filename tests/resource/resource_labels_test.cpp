#include <json/value.h>

#include <list>
#include <string>
#include <type_traits>
#include <vector>

#include "emfresinterface.h"
#include "label_scripts.h"
#include "platform_test.h"
#include "resource_records.h"

namespace emf::test {
namespace {

using emf::doubles::json;
using emf::doubles::platform;
using emf::doubles::ResourceQuery;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

static_assert(std::is_same_v<decltype(EMFResMgrI::getResourceLabelsByRest),
                             std::int64_t(Records&, const Fdns&, const std::string&)>);

// One row of what tells the kinds apart, written down once more.
struct Kind {
  const char* word;
  const char* operation;
  const char* read;
  std::int64_t (*labels)(Records&, const Fdns&);
  const char* object;             // of the answer
  ResourceDn record;              // that it becomes
  const char* nullType;           // the same object as far as it counts as absent
  std::vector<const char*> keys;  // that are read of the object, the sub type's last
};

const Kind kPort = {"PORT",
                    "getPortResourceLabelsByRest",
                    "GetPortResourcePropertyByFDNs",
                    EMFResMgrI::getPortResourceLabelsByRest,
                    R"({"nativeId":"NE=2,PP=1","slotNativeId":"no","name":"GE 1","portType":65})",
                    {"NE=2,PP=1", 0, "GE 1", {6, 65}},
                    R"({"nativeId":"NE=2,PP=1","name":"GE 1","portType":null})",
                    {"nativeId", "name", "portType"}};
const Kind kCard = {"CARD",
                    "getCardResourceLabelsByRest",
                    "GetCardResourcePropertyByFDNs",
                    EMFResMgrI::getCardResourceLabelsByRest,
                    R"({"nativeId":"NE=2,CP=1","slotNativeId":"no","name":"Card 1",)"
                    R"("isDaughterCard":false,"cardType":7,"daughterCardType":8})",
                    {"NE=2,CP=1", 0, "Card 1", {20, 7}},
                    R"({"nativeId":"NE=2,CP=1","name":"Card 1","cardType":7})",
                    {"nativeId", "name", "isDaughterCard", "cardType"}};
const Kind kDaughterCard = {"CARD",
                            "getCardResourceLabelsByRest",
                            "GetCardResourcePropertyByFDNs",
                            EMFResMgrI::getCardResourceLabelsByRest,
                            R"({"nativeId":"NE=2,SC=1","slotNativeId":"no","name":"Sub 1",)"
                            R"("isDaughterCard":true,"cardType":7,"daughterCardType":8})",
                            {"NE=2,SC=1", 0, "Sub 1", {21, 8}},
                            R"({"nativeId":"NE=2,SC=1","isDaughterCard":null})",
                            {"nativeId", "name", "isDaughterCard", "daughterCardType"}};
const Kind kSlot = {"SLOT",
                    "getSlotResourceLabelsByRest",
                    "GetSlotResourcePropertyByFDNs",
                    EMFResMgrI::getSlotResourceLabelsByRest,
                    R"({"slotNativeId":"NE=2,S=1","nativeId":"no","name":"Slot 1",)"
                    R"("isDaughterCard":false,"cardType":7,"daughterCardType":8})",
                    {"NE=2,S=1", 0, "Slot 1", {4, 7}},
                    R"({"slotNativeId":"NE=2,S=1","name":"Slot 1","cardType":7})",
                    {"slotNativeId", "name", "isDaughterCard", "cardType"}};
const Kind kDaughterSlot = {"SLOT",
                            "getSlotResourceLabelsByRest",
                            "GetSlotResourcePropertyByFDNs",
                            EMFResMgrI::getSlotResourceLabelsByRest,
                            R"({"slotNativeId":"NE=2,SS=1","nativeId":"no","name":"Slot 1",)"
                            R"("isDaughterCard":true,"cardType":7,"daughterCardType":8})",
                            {"NE=2,SS=1", 0, "Slot 1", {5, 8}},
                            R"({"slotNativeId":"NE=2,SS=1","isDaughterCard":null})",
                            {"slotNativeId", "name", "isDaughterCard", "daughterCardType"}};
const Kind kFrame = {"FRAME",
                     "getFrameResourceLabelsByRest",
                     "GetFrameResourcePropertyByFDNs",
                     EMFResMgrI::getFrameResourceLabelsByRest,
                     R"({"nativeId":"NE=2,FR=1","name":"Frame 1","frameType":"12"})",
                     {"NE=2,FR=1", 0, "Frame 1", {3, 12}},
                     R"({"nativeId":"NE=2,FR=1","name":"Frame 1"})",
                     {"nativeId", "name", "frameType"}};
const Kind kElement = {"NE",
                       "getNEResourceLabelsByRest",
                       "GetNEResourcePropertyByFDNs",
                       EMFResMgrI::getNEResourceLabelsByRest,
                       R"({"nativeId":"NE=2","name":"core-1","detailDevType":131077})",
                       {"NE=2", 0, "core-1", {1, 131077}},
                       R"({"nativeId":"NE=2","name":"core-1","detailDevType":null})",
                       {"nativeId", "name", "detailDevType"}};

Fdns numberedNames(std::size_t count) {
  Fdns names;
  for (std::size_t i = 0; i < count; ++i) names.push_back("NE=" + std::to_string(i));
  return names;
}

class ResourceLabels : public emf::doubles::PlatformTest {};

class LabelKind : public ResourceLabels, public ::testing::WithParamInterface<Kind> {};

TEST_P(LabelKind, ObjectBecomesItsRecord) {
  const Kind& kind = GetParam();
  platform().resources.answers(answerWith(kind.object));
  Records out;
  EXPECT_EQ(kind.labels(out, {"NE=2,any"}), 0);
  EXPECT_THAT(out, ElementsAre(kind.record));
  EXPECT_THAT(platform().resources.queries(),
              ElementsAre(FieldsAre(kind.read, ElementsAre("NE=2,any"), "", "", Json::Value())));
}

TEST_P(LabelKind, ObjectWithoutItsTypeKeyIsSkippedAndCounted) {
  const Kind& kind = GetParam();
  platform().resources.answers(answerWith(std::string(kind.nullType) + ",null,{}," + kind.object));
  Records out;
  EXPECT_EQ(kind.labels(out, {"NE=2"}), 0);
  EXPECT_THAT(out, ElementsAre(kind.record));
  EXPECT_THAT(
      platform().trace.lines(),
      Contains(FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0),
                         "EMFResMgrI::" + std::string(kind.operation) + " jsonInfos size = 4")));
}

TEST_P(LabelKind, WordOfTheKindLeadsToIt) {
  const Kind& kind = GetParam();
  platform().resources.answers(answerWith(kind.object));
  Records out = {ResourceDn()};
  EXPECT_EQ(EMFResMgrI::getResourceLabelsByRest(out, {"NE=2"}, kind.word), 0);
  EXPECT_THAT(out, ElementsAre(ResourceDn(), kind.record));
  EXPECT_THAT(platform().resources.queries(),
              ElementsAre(Field(&ResourceQuery::operation, kind.read)));
  EXPECT_EQ(platform().trace.texts().front(), "EMFResMgrI::getResourceLabelsByRest called");
}

TEST_P(LabelKind, NoNamesAskNothing) {
  Records out;
  EXPECT_EQ(GetParam().labels(out, {}), 0);
  EXPECT_THAT(out, IsEmpty());
  EXPECT_THAT(platform().resources.queries(), IsEmpty());
}

TEST_P(LabelKind, OnlyPortsAnnounceTheirCall) {
  const Kind& kind = GetParam();
  Records out;
  kind.labels(out, {"NE=2"});
  const std::string called = "EMFResMgrI::" + std::string(kind.operation) + " called";
  if (kind.word == std::string("PORT")) {
    EXPECT_THAT(
        platform().trace.lines(),
        ElementsAre(FieldsAre("TaDebugWithPara", 3, "emfresinterface", "unknown", Gt(0), called)));
  } else {
    EXPECT_THAT(platform().trace.lines(), IsEmpty());
  }
}

// The call is announced before it is seen that nothing is to be done.
TEST_F(ResourceLabels, PortsAnnounceTheirCallWithoutNamesToo) {
  Records out;
  EMFResMgrI::getPortResourceLabelsByRest(out, {});
  EXPECT_THAT(platform().trace.texts(),
              ElementsAre("EMFResMgrI::getPortResourceLabelsByRest called"));
}

TEST_P(LabelKind, AbsentNameOrDnGivesAnEmptyText) {
  const Kind& kind = GetParam();
  Json::Value object = json(kind.object);
  object.removeMember("nativeId");
  object["slotNativeId"] = "";
  object["name"] = Json::Value();
  Json::Value answer;
  answer["objList"].append(object);
  platform().resources.answers(answer);
  Records out;
  kind.labels(out, {"NE=2"});
  EXPECT_THAT(out, ElementsAre(ResourceDn{"", 0, "", kind.record.type}));
}

TEST_P(LabelKind, LabelIsConvertedAndTheDnIsNot) {
  const Kind& kind = GetParam();
  platform().text.characterSetSwitch(1);
  platform().resources.answers(answerWith(kind.object));
  Records out;
  kind.labels(out, {"NE=2"});
  ResourceDn expected = kind.record;
  expected.label = "UTF-8>GBK:" + expected.label;
  EXPECT_THAT(out, ElementsAre(expected));
}

TEST_P(LabelKind, ListThatIsNoneAddsNothing) {
  const Kind& kind = GetParam();
  for (const char* answer : {"null", "{}", R"({"objList":null})", R"({"objList":{"a":{}}})",
                             R"({"objList":"text"})", R"({"objList":7})", "[]", "\"text\"", "3"}) {
    platform().trace.reset();
    platform().resources.answers(json(answer));
    Records out;
    EXPECT_EQ(kind.labels(out, {"NE=2"}), 0) << answer;
    EXPECT_THAT(out, IsEmpty()) << answer;
    EXPECT_THAT(platform().trace.texts(), Each(::testing::Not(::testing::HasSubstr("jsonInfos"))))
        << answer;
  }
}

TEST_P(LabelKind, ResultOfTheReadIsNotLookedAt) {
  const Kind& kind = GetParam();
  platform().resources.answers(answerWith(kind.object), false);
  Records out;
  EXPECT_EQ(kind.labels(out, {"NE=2"}), 0);
  EXPECT_THAT(out, ElementsAre(kind.record));
}

TEST_P(LabelKind, MemberOfAWrongTypeReachesTheCallerBehindTheRecordsBeforeIt) {
  const Kind& kind = GetParam();
  for (const char* key : kind.keys) {
    Json::Value wrong = json(kind.object);
    wrong[key] = Json::Value(Json::arrayValue);
    Json::Value answer;
    answer["objList"].append(json(kind.object));
    answer["objList"].append(wrong);
    platform().resources.answers(answer);
    Records out;
    EXPECT_THROW(kind.labels(out, {"NE=2"}), Json::LogicError) << key;
    EXPECT_THAT(out, ElementsAre(kind.record)) << key;
  }
}

TEST_P(LabelKind, ObjectThatIsNoneReachesTheCaller) {
  platform().resources.answers(answerWith("\"text\""));
  Records out;
  EXPECT_THROW(GetParam().labels(out, {"NE=2"}), Json::LogicError);
  EXPECT_THAT(out, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, LabelKind,
                         ::testing::Values(kPort, kCard, kDaughterCard, kSlot, kDaughterSlot,
                                           kFrame, kElement),
                         [](const auto& one) {
                           return std::string(one.param.word) +
                                  std::to_string(one.param.record.type.resMainTypeID);
                         });

TEST_F(ResourceLabels, FrameTypeIsADecimalTextReadAsFarAsItGoes) {
  const std::pair<const char*, std::int64_t> kCases[] = {
      {"12", 12}, {" 12", 12}, {"12x", 12}, {"", 0},
      {"x", 0},   {"-3", -3},  {"0x10", 0}, {"4294967296", 4294967296}};
  for (const auto& [text, type] : kCases) {
    platform().resources.answers(answerWith(R"({"nativeId":"NE=2,FR=1","name":"f","frameType":")" +
                                            std::string(text) + "\"}"));
    Records out;
    EMFResMgrI::getFrameResourceLabelsByRest(out, {"NE=2"});
    EXPECT_THAT(out, ElementsAre(ResourceDn{"NE=2,FR=1", 0, "f", {3, type}})) << text;
  }
}

TEST_F(ResourceLabels, FrameTypeThatIsANumberReachesTheCaller) {
  platform().resources.answers(answerWith(R"({"nativeId":"NE=2,FR=1","frameType":12})"));
  Records out;
  EXPECT_THROW(EMFResMgrI::getFrameResourceLabelsByRest(out, {"NE=2"}), Json::LogicError);
}

TEST_F(ResourceLabels, SubTypeOfMoreThan32BitsReachesTheCaller) {
  for (const Kind& kind : {kPort, kCard, kDaughterCard, kSlot, kDaughterSlot, kElement}) {
    Json::Value object = json(kind.object);
    object[kind.keys.back()] = Json::Int64{4294967297};
    Json::Value answer;
    answer["objList"].append(object);
    platform().resources.answers(answer);
    Records out;
    EXPECT_THROW(kind.labels(out, {"NE=2"}), Json::LogicError) << kind.keys.back();
    EXPECT_THAT(out, IsEmpty()) << kind.keys.back();
  }
}

TEST_F(ResourceLabels, DaughterCardIsOneByItsFlagAsABoolean) {
  const char* const objects =
      R"({"nativeId":"a","slotNativeId":"a","isDaughterCard":1,"cardType":7,"daughterCardType":8},)"
      R"({"nativeId":"b","slotNativeId":"b","isDaughterCard":0,"cardType":7,"daughterCardType":8})";
  platform().resources.answers(answerWith(objects));
  Records cards;
  EMFResMgrI::getCardResourceLabelsByRest(cards, {"NE=2"});
  EXPECT_THAT(cards, ElementsAre(ResourceDn{"a", 0, "", {21, 8}}, ResourceDn{"b", 0, "", {20, 7}}));
  Records slots;
  EMFResMgrI::getSlotResourceLabelsByRest(slots, {"NE=2"});
  EXPECT_THAT(slots, ElementsAre(ResourceDn{"a", 0, "", {5, 8}}, ResourceDn{"b", 0, "", {4, 7}}));
}

TEST_F(ResourceLabels, UnknownWordDoesNothing) {
  for (const char* word : {"", "port", "PORTS", "LINK", "PORT "}) {
    Records out = {ResourceDn{"kept", 0, "", {}}};
    EXPECT_EQ(EMFResMgrI::getResourceLabelsByRest(out, {"NE=2"}, word), 0);
    EXPECT_THAT(out, ElementsAre(ResourceDn{"kept", 0, "", {}}));
  }
  EXPECT_THAT(platform().resources.queries(), IsEmpty());
  EXPECT_THAT(platform().trace.texts(),
              Each(std::string("EMFResMgrI::getResourceLabelsByRest called")));
}

struct BatchCase {
  std::size_t names;
  std::vector<std::size_t> batches;
};

class LabelBatches : public ResourceLabels, public ::testing::WithParamInterface<BatchCase> {};

TEST_P(LabelBatches, BoundDoublesAndEveryNameIsAskedForOnce) {
  const auto& [count, sizes] = GetParam();
  echoNames();
  const Fdns names = numberedNames(count);
  for (const auto labels :
       {EMFResMgrI::getPortResourceLabelsByRest, EMFResMgrI::getSlotResourceLabelsByRest,
        EMFResMgrI::getCardResourceLabelsByRest, EMFResMgrI::getFrameResourceLabelsByRest,
        EMFResMgrI::getNEResourceLabelsByRest}) {
    const std::size_t before = platform().resources.queries().size();
    Records out;
    EXPECT_EQ(labels(out, names), 0);
    EXPECT_EQ(namesOf(out), names);
    const auto queries = platform().resources.queries();
    std::vector<std::size_t> asked;
    Fdns joined;
    for (std::size_t i = before; i < queries.size(); ++i) {
      asked.push_back(queries[i].fdns.size());
      joined.insert(joined.end(), queries[i].fdns.begin(), queries[i].fdns.end());
    }
    EXPECT_EQ(asked, sizes);
    EXPECT_EQ(joined, names);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, LabelBatches,
    ::testing::Values(BatchCase{0, {}}, BatchCase{1, {1}}, BatchCase{99, {99}},
                      BatchCase{100, {100}}, BatchCase{101, {100, 1}}, BatchCase{200, {100, 100}},
                      BatchCase{201, {100, 100, 1}}, BatchCase{250, {100, 100, 50}},
                      BatchCase{400, {100, 100, 200}}, BatchCase{401, {100, 100, 200, 1}},
                      BatchCase{801, {100, 100, 200, 400, 1}}),
    [](const auto& one) { return "Names" + std::to_string(one.param.names); });

TEST_F(ResourceLabels, LostBatchOnlyShortensTheResult) {
  platform().resources.answersBy([](const ResourceQuery& query, Json::Value& answer) {
    if (query.fdns.front() == "NE=100") return false;
    answer = answerWith(R"({"nativeId":")" + query.fdns.front() + R"(","name":"n","portType":1})");
    return true;
  });
  Records out;
  EXPECT_EQ(EMFResMgrI::getPortResourceLabelsByRest(out, numberedNames(250)), 0);
  EXPECT_EQ(namesOf(out), (Fdns{"NE=0", "NE=200"}));
  EXPECT_THAT(platform().resources.queries(), SizeIs(3));
}

struct CharsetCase {
  int value;
  const char* name;
  std::string expected;
};

class LabelCharset : public ResourceLabels, public ::testing::WithParamInterface<CharsetCase> {};

// "端口-1" (port 1), "€" (not in ISO-8859-1), a character beyond the basic plane (not in GBK), "é".
TEST_P(LabelCharset, LabelReachesTheNorthInItsCharacterSet) {
  platform().text.convertsTruly();
  platform().text.characterSetSwitch(GetParam().value);
  platform().resources.answers(
      answerWith("{\"nativeId\":\"NE=2,PP=1\",\"portType\":1,"
                 "\"name\":\"\xE7\xAB\xAF\xE5\x8F\xA3-1 \xF0\x9F\x98\x80 \xC3\xA9\"}"));
  Records out;
  EMFResMgrI::getPortResourceLabelsByRest(out, {"NE=2,PP=1"});
  EXPECT_THAT(out, ElementsAre(ResourceDn{"NE=2,PP=1", 0, GetParam().expected, {6, 1}}));
}

INSTANTIATE_TEST_SUITE_P(
    Switches, LabelCharset,
    ::testing::Values(CharsetCase{0, "Utf8",
                                  "\xE7\xAB\xAF\xE5\x8F\xA3-1 \xF0\x9F\x98\x80 \xC3\xA9"},
                      CharsetCase{1, "Gbk", "\xB6\xCB\xBF\xDA-1 ? \xA8\xA6"},
                      CharsetCase{2, "Latin1", "\?\?-1 ? \xE9"}),
    [](const auto& one) { return one.param.name; });

}  // namespace
}  // namespace emf::test
