#include <stdexcept>
#include <type_traits>

#include "emftopointerface.h"
#include "platform_test.h"
#include "submapbufmgr.h"
#include "topology_records.h"

namespace emf::test {
namespace {

using emf::doubles::compact;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

static_assert(
    std::is_same_v<decltype(EMFTopoI::getAllRootSubMaps), std::int64_t(std::list<SubMap>&)>);
static_assert(std::is_same_v<decltype(EMFTopoI::getAllSubMaps),
                             std::int64_t(const std::string&, std::list<SubMap>&)>);
static_assert(
    std::is_same_v<decltype(EMFTopoI::getSubMap), std::int64_t(const std::string&, SubMap&)>);
static_assert(
    std::is_same_v<decltype(EMFTopoI::getSubmapName), void(std::string&, const unsigned long&)>);

constexpr char kPath[] = "/rest/topology/v3/tsnodes";
constexpr char kRoot[] = "ORMAP_PHY_SUBMAP";
constexpr std::int64_t kReadFailed = 0x411800D4;

constexpr char kRootFailed[] = "[EMFTopoI::getAllRootSubMaps] call rest interface failed!";
constexpr char kNoRoot[] = "[EMFTopoI::getAllRootSubMaps] There isn't RootSubmaps";
constexpr char kIdFailed[] = "[NBIHTTPProxy::GetOBJID]:call rest interface failed!";
constexpr char kListFailed[] = "[NBIHTTPProxy::getAllSubMaps]:call rest interface failed!";
constexpr char kOneFailed[] = "[NBIHTTPProxy::getSubMap]:call rest interface failed!";

// One expression of a query, as the doubles write operators.
std::string condition(const std::string& name, const std::string& value) {
  return R"({"logOp":"and","simple":{"caseSensitive":true,"name":")" + name +
         R"(","operator":"operator0","value":)" + value + "}}";
}

std::string conditions(const std::string& first, const std::string& second) {
  return R"("conditions":[)" + first + "," + second + "]";
}

std::string subnetAnd(const std::string& name, const std::string& value) {
  return conditions(condition("nodeClass", R"("subnet")"), condition(name, '"' + value + '"'));
}

constexpr char kChild[] =
    R"({"parentId":"55","objId":"60","label":"City","iconFile":"/a/city.png","typeId":"200",)"
    R"("topoClassId":"31","exInfo":"a ProcID 12 b","posX":"-3","posY":"44","topoId":"9"})";

SubMap child() {
  SubMap map;
  map.parentSubMapId = "S55";
  map.subMapId = "S60";
  map.label = "City";
  map.iconName = "/a/city.png";
  map.mapType = 1;
  map.topoClassId = 31;
  map.procId = 12;
  map.posX = -3;
  map.posY = 44;
  return map;
}

constexpr char kRootObject[] =
    R"({"parentId":"102","objId":"102","label":"Root","iconFile":"/a/root.png","typeId":"7",)"
    R"("topoClassId":2,"exInfo":"ProcID 5","posX":1,"posY":2,"topoId":101})";

SubMap root() {
  SubMap map;
  map.parentSubMapId = kRoot;
  map.subMapId = kRoot;
  map.label = "Root";
  map.iconName = "/a/root.png";
  map.mapType = 101;
  map.topoClassId = 2;
  map.procId = 5;
  map.posX = 1;
  map.posY = 2;
  return map;
}

SubMap leftOver() {
  SubMap map;
  map.parentSubMapId = map.subMapId = map.label = map.iconName = "left over";
  map.spareText1 = map.spareText2 = "left over";
  map.spareNumber = map.mapType = map.zeroField1 = map.topoClassId = map.spareField = 77;
  map.zeroField2 = map.procId = map.posX = map.posY = 77;
  return map;
}

class SubMaps : public emf::doubles::PlatformTest {
 protected:
  ~SubMaps() override { SubmapBufMgr::Destroy(); }

  static void answers(const std::string& answer) { platform().rest.answers(kPath, json(answer)); }
  static void page(const std::string& objects, const std::string& marker = std::string()) {
    answers(R"({"dataList":[)" + objects + R"(],"isTruncated":)" +
            (marker.empty() ? "false}" : R"(true,"marker":")" + marker + R"("})"));
  }
  // The parameters of each request, in order.
  static std::vector<std::string> requested() {
    std::vector<std::string> parameters;
    for (const auto& request : platform().rest.requests()) {
      EXPECT_EQ(request.url, kPath);
      EXPECT_EQ(request.method, 1U);
      EXPECT_EQ(request.mode, 8U);  // as made
      EXPECT_TRUE(request.body.isNull());
      parameters.push_back(compact(request.params));
    }
    return parameters;
  }
  static void expectDomainLine(const char* text) {
    EXPECT_THAT(platform().log.lines(),
                ElementsAre(FieldsAre("ii_domain_bundle/ii_domain_model/debug", "LogFormat",
                                      "emftopointerface", "unknown", Gt(0), 1, text)));
    EXPECT_THAT(platform().trace.lines(), IsEmpty());
  }
  static void expectTrace(const char* text) {
    EXPECT_THAT(
        platform().trace.lines(),
        ElementsAre(FieldsAre("TaDebugWithPara", 3, "emftopointerface", "unknown", Gt(0), text)));
    EXPECT_THAT(platform().log.lines(), IsEmpty());
  }

  std::list<SubMap> maps_;
  SubMap map_ = leftOver();
};

using RootSubMaps = SubMaps;

TEST_F(RootSubMaps, AreAskedForByTheirTopologyId) {
  page(kRootObject);
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0);
  EXPECT_THAT(maps_, ElementsAre(root()));
  EXPECT_THAT(requested(),
              ElementsAre(R"({"conditions":[)" + condition("topoId", "101") + R"(],"limit":200})"));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(RootSubMaps, RootOnTheThirdPageNeedsThreeRequests) {
  page(kChild, "m1");
  page("", "m2");
  page(std::string(kChild) + "," + kRootObject + "," + kRootObject, "m3");
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0);
  EXPECT_THAT(maps_, ElementsAre(root()));
  const std::string query = R"({"conditions":[)" + condition("topoId", "101") + R"(],"limit":200)";
  EXPECT_THAT(requested(),
              ElementsAre(query + "}", query + R"(,"marker":"m1"})", query + R"(,"marker":"m2"})"));
}

TEST_F(RootSubMaps, RootIsTheFirstThatIsItsOwnParent) {
  // The topology id is the query's business; two ids that are absent are equal as well.
  page(R"({"objId":"7","parentId":"7","topoId":"x"},)" + std::string(kRootObject));
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0);
  SubMap expected;
  expected.parentSubMapId = expected.subMapId = kRoot;
  EXPECT_THAT(maps_, ElementsAre(expected));
  for (const char* object : {"{}", R"({"objId":"","parentId":null})", "5", R"("text")", "[]"}) {
    platform().reset();
    maps_.clear();
    page(object);
    EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0);
    EXPECT_THAT(maps_, ElementsAre(expected)) << object;
  }
}

TEST_F(RootSubMaps, IdsAreComparedAsTexts) {
  page(R"({"objId":102,"parentId":"102","topoId":"101 "})");
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0);
  SubMap expected;
  expected.parentSubMapId = expected.subMapId = kRoot;
  expected.mapType = 101;
  EXPECT_THAT(maps_, ElementsAre(expected));
}

TEST_F(RootSubMaps, AreAppended) {
  maps_ = {leftOver()};
  page(kRootObject);
  EMFTopoI::getAllRootSubMaps(maps_);
  EXPECT_THAT(maps_, ElementsAre(leftOver(), root()));
}

TEST_F(RootSubMaps, NoRootIsASuccessWithATrace) {
  page(kChild, "m1");
  page(kChild);
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0);
  EXPECT_THAT(maps_, IsEmpty());
  expectTrace(kNoRoot);
}

TEST_F(RootSubMaps, FailedPageIsMinusOneWithATrace) {
  platform().rest.fails(kPath);
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), -1);
  expectTrace(kRootFailed);
}

TEST_F(RootSubMaps, FailureOnALaterPageIsMinusOneToo) {
  page(kChild, "m1");
  platform().rest.fails(kPath);
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), -1);
  EXPECT_THAT(maps_, IsEmpty());
  expectTrace(kRootFailed);
}

TEST_F(RootSubMaps, PageThatIsNoArrayIsASuccessWithoutARoot) {
  for (const char* list : {"null", "5", R"("text")", "{}"}) {
    platform().reset();
    answers(R"({"dataList":)" + std::string(list) + R"(,"isTruncated":true,"marker":"m"})");
    EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0) << list;
    EXPECT_EQ(platform().rest.requests().size(), 1U) << list;
    EXPECT_THAT(platform().trace.lines(), IsEmpty()) << list;
  }
  answers("{}");
  EXPECT_EQ(EMFTopoI::getAllRootSubMaps(maps_), 0);
  EXPECT_THAT(maps_, IsEmpty());
}

using AllSubMaps = SubMaps;

TEST_F(AllSubMaps, AreAskedForByTheirParent) {
  page(kChild);
  EXPECT_EQ(EMFTopoI::getAllSubMaps("S55", maps_), 0);
  EXPECT_THAT(maps_, ElementsAre(child()));
  EXPECT_THAT(requested(), ElementsAre("{" + subnetAnd("parentId", "55") + R"(,"limit":200})"));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(AllSubMaps, FirstCharacterOfAKeyGoesWhateverItIs) {
  const std::pair<const char*, const char*> kKeys[] = {
      {"S55", "55"}, {"X55", "55"}, {"55", "5"},   {"S", ""},
      {"//", "/"},   {"/ ", " "},   {"SS1", "S1"}, {kRoot, "RMAP_PHY_SUBMAP"}};
  for (const auto& [key, id] : kKeys) {
    platform().reset();
    page("");
    EXPECT_EQ(EMFTopoI::getAllSubMaps(key, maps_), 0);
    EXPECT_THAT(requested(), ElementsAre("{" + subnetAnd("parentId", id) + R"(,"limit":200})"))
        << key;
  }
}

TEST_F(AllSubMaps, EmptyKeyIsOutOfRangeBeforeAnythingIsAsked) {
  EXPECT_THROW(EMFTopoI::getAllSubMaps("", maps_), std::out_of_range);
  EXPECT_THROW(EMFTopoI::getSubMap("", map_), std::out_of_range);
  EXPECT_EQ(map_, leftOver());
  EXPECT_THAT(platform().rest.requests(), IsEmpty());
}

TEST_F(AllSubMaps, SlashAsksTheServiceForTheId) {
  answers(R"({"dataList":[{"objId":"102"},{"objId":"7"}]})");
  page(kChild);
  EXPECT_EQ(EMFTopoI::getAllSubMaps("/", maps_), 0);
  EXPECT_THAT(maps_, ElementsAre(child()));
  EXPECT_THAT(requested(), ElementsAre("{" + subnetAnd("nativeId", "/") + "}",
                                       "{" + subnetAnd("parentId", "102") + R"(,"limit":200})"));
}

TEST_F(AllSubMaps, IdThatTheServiceDoesNotKnowIsEmpty) {
  for (const char* answer :
       {"{}", "null", R"({"dataList":[]})", R"({"dataList":[{}]})", R"({"dataList":{"objId":"5"}})",
        R"({"dataList":"5"})", "[]", "5", R"({"dataList":[7]})", R"({"dataList":[null]})"}) {
    platform().reset();
    answers(answer);
    page("");
    EXPECT_EQ(EMFTopoI::getAllSubMaps("/", maps_), 0) << answer;
    EXPECT_THAT(requested(), ElementsAre("{" + subnetAnd("nativeId", "/") + "}",
                                         "{" + subnetAnd("parentId", "") + R"(,"limit":200})"))
        << answer;
    EXPECT_THAT(platform().log.lines(), IsEmpty()) << answer;
  }
}

TEST_F(AllSubMaps, FailedQuestionForTheIdIsLoggedAndTheWorkGoesOn) {
  platform().rest.fails(kPath);
  page(kChild);
  EXPECT_EQ(EMFTopoI::getAllSubMaps("/", maps_), 0);
  EXPECT_THAT(maps_, ElementsAre(child()));
  expectDomainLine(kIdFailed);
}

TEST_F(AllSubMaps, WhatAFailedQuestionLeavesBehindStillCounts) {
  platform().rest.fails(kPath, json(R"({"dataList":[{"objId":"8"}]})"));
  page("");
  EXPECT_EQ(EMFTopoI::getAllSubMaps("/", maps_), 0);
  EXPECT_EQ(requested().back(), "{" + subnetAnd("parentId", "8") + R"(,"limit":200})");
}

TEST_F(AllSubMaps, EveryPageIsAppended) {
  maps_ = {leftOver()};
  page(kChild, "m1");
  page("", "m2");
  page(std::string(kChild) + "," + kChild);
  EXPECT_EQ(EMFTopoI::getAllSubMaps("S55", maps_), 0);
  EXPECT_THAT(maps_, ElementsAre(leftOver(), child(), child(), child()));
  const std::string query = "{" + subnetAnd("parentId", "55") + R"(,"limit":200)";
  EXPECT_THAT(requested(),
              ElementsAre(query + "}", query + R"(,"marker":"m1"})", query + R"(,"marker":"m2"})"));
}

TEST_F(AllSubMaps, FailedPageKeepsWhatCameBefore) {
  page(kChild, "m1");
  platform().rest.fails(kPath);
  EXPECT_EQ(EMFTopoI::getAllSubMaps("S55", maps_), kReadFailed);
  EXPECT_THAT(maps_, ElementsAre(child()));
  expectDomainLine(kListFailed);
}

TEST_F(AllSubMaps, PageThatIsNoArrayIsMinusOneAndKeepsWhatCameBefore) {
  for (const char* list : {"null", "5", R"("text")", "{}"}) {
    platform().reset();
    maps_.clear();
    page(kChild, "m1");
    answers(R"({"dataList":)" + std::string(list) + R"(,"isTruncated":true,"marker":"m"})");
    EXPECT_EQ(EMFTopoI::getAllSubMaps("S55", maps_), -1) << list;
    EXPECT_THAT(maps_, ElementsAre(child())) << list;
    EXPECT_EQ(platform().rest.requests().size(), 2U) << list;
    EXPECT_THAT(platform().log.lines(), IsEmpty()) << list;
  }
}

TEST_F(AllSubMaps, RootIsNotItsOwnChild) {
  page(std::string(kRootObject) + "," + kChild + R"(,{"parentId":7,"objId":"7"})");
  EXPECT_EQ(EMFTopoI::getAllSubMaps("S102", maps_), 0);
  EXPECT_THAT(maps_, ElementsAre(child()));
}

TEST_F(AllSubMaps, EqualIdsThatAreEmptyOrAbsentAreNoRoot) {
  SubMap expected;
  expected.parentSubMapId = "S";
  expected.subMapId = "S";
  for (const char* object : {"{}", R"({"parentId":"","objId":""})", R"({"objId":""})",
                             R"({"parentId":null,"objId":null})", "5", R"("text")", "[]"}) {
    maps_.clear();
    page(object);
    EXPECT_EQ(EMFTopoI::getAllSubMaps("S55", maps_), 0);
    EXPECT_THAT(maps_, ElementsAre(expected)) << object;
  }
}

TEST_F(AllSubMaps, KeysComeFromTheIds) {
  const std::tuple<const char*, const char*, const char*> kKeys[] = {
      {R"({"parentId":"102","objId":"55"})", kRoot, "S55"},
      {R"({"parentId":102,"objId":55})", kRoot, "S55"},
      {R"({"parentId":"1020","objId":"55"})", "S1020", "S55"},
      {R"({"parentId":"102 ","objId":"55"})", "S102 ", "S55"},
      {R"({"parentId":"55","objId":"102"})", "S55", "S102"},
      {R"({"objId":"55"})", "S", "S55"},
      {R"({"parentId":"55"})", "S55", "S"},
  };
  for (const auto& [object, parent, key] : kKeys) {
    maps_.clear();
    page(object);
    EMFTopoI::getAllSubMaps("S1", maps_);
    SubMap expected;
    expected.parentSubMapId = parent;
    expected.subMapId = key;
    EXPECT_THAT(maps_, ElementsAre(expected)) << object;
  }
}

TEST_F(AllSubMaps, TypeTwoHundredIsOne) {
  const std::pair<const char*, int> kTypes[] = {
      {R"("200")", 1},  {"200", 1},        {R"("201")", 201}, {R"("199")", 199},
      {R"("200x")", 1}, {R"("x")", 0},     {"null", 0},       {"-1", -1},
      {R"(" 200")", 1}, {"4294967496", 1}, {"200.9", 1},      {"true", 0}};
  for (const auto& [typeId, mapType] : kTypes) {
    maps_.clear();
    page(R"({"objId":"60","typeId":)" + std::string(typeId) + "}");
    EMFTopoI::getAllSubMaps("S1", maps_);
    ASSERT_EQ(maps_.size(), 1U);
    EXPECT_EQ(maps_.front().mapType, mapType) << typeId;
  }
}

TEST_F(AllSubMaps, NumbersAreReadFromTexts) {
  page(R"({"posX":"12px","posY":" -4","topoClassId":7.9},)"
       R"({"posX":"x","posY":"","topoClassId":"4294967301"},)"
       R"({"posX":2147483648,"posY":true,"topoClassId":"99999999999999999999"})");
  EXPECT_EQ(EMFTopoI::getAllSubMaps("S1", maps_), 0);
  std::vector<std::tuple<int, int, int>> numbers;
  for (const SubMap& map : maps_) numbers.emplace_back(map.posX, map.posY, map.topoClassId);
  EXPECT_THAT(numbers, ElementsAre(std::tuple(12, -4, 7), std::tuple(0, 0, 5),
                                   std::tuple(-2147483647 - 1, 0, -1)));
}

TEST_F(AllSubMaps, ProcessIsBehindTheWordAndItsBlank) {
  const std::pair<const char*, int> kTexts[] = {{"a ProcID 12 b", 12},
                                                {"ProcID 12", 12},
                                                {"ProcID12", 0},
                                                {"ProcID ", 0},
                                                {"ProcID", 0},
                                                {"ProcID  12", 0},
                                                {"ProcID x", 0},
                                                {"ProcID -5;", -5},
                                                {"MyProcID 7", 7},
                                                {"ProcID=1 ProcID 2", 2},
                                                {"ProcID 1 ProcID 2", 1},
                                                {"procid 5", 0},
                                                {"", 0}};
  for (const auto& [exInfo, procId] : kTexts) {
    maps_.clear();
    page(R"({"exInfo":")" + std::string(exInfo) + R"("})");
    EMFTopoI::getAllSubMaps("S1", maps_);
    ASSERT_EQ(maps_.size(), 1U);
    EXPECT_EQ(maps_.front().procId, procId) << exInfo;
  }
}

TEST_F(AllSubMaps, TextsAreConvertedButNotTheParent) {
  platform().text.characterSetSwitch(1);
  platform().text.conversionGives([](const std::string& text) { return "<" + text + ">"; });
  page(kChild);
  page(kChild);
  EMFTopoI::getAllSubMaps("S55", maps_);
  EMFTopoI::getSubMap("S60", map_);
  SubMap expected = child();
  expected.subMapId = "S<60>";
  expected.label = "<City>";
  expected.iconName = "</a/city.png>";
  EXPECT_THAT(maps_, ElementsAre(expected));
  EXPECT_EQ(map_.parentSubMapId, "S55");
  EXPECT_EQ(map_.subMapId, "S<60>");
}

TEST_F(AllSubMaps, MemberWithoutATextIsTold) {
  for (const char* member : {"parentId", "objId", "typeId", "label", "iconFile", "topoClassId",
                             "exInfo", "posX", "posY"}) {
    maps_.clear();
    page(std::string(kChild) + R"(,{")" + member + R"(":[]})");
    EXPECT_THROW(EMFTopoI::getAllSubMaps("S55", maps_), Json::LogicError) << member;
    EXPECT_THAT(maps_, ElementsAre(child())) << member;
  }
}

using OneSubMap = SubMaps;

TEST_F(OneSubMap, IsAskedForByItsIdInOneExchange) {
  answers(R"({"dataList":[)" + std::string(kChild) + R"(,{"objId":"61"}],"isTruncated":true,)" +
          R"("marker":"m"})");
  EXPECT_EQ(EMFTopoI::getSubMap("S60", map_), 0);
  SubMap expected = child();
  expected.spareNumber = expected.spareField = 77;  // never written
  expected.spareText1 = expected.spareText2 = "left over";
  EXPECT_EQ(map_, expected);
  EXPECT_THAT(requested(), ElementsAre("{" + subnetAnd("objId", "60") + "}"));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(OneSubMap, SlashAsksTheServiceForTheId) {
  answers(R"({"dataList":[{"objId":102}]})");
  answers(R"({"dataList":[)" + std::string(kRootObject) + "]}");
  SubMap map;
  EXPECT_EQ(EMFTopoI::getSubMap("/", map), 0);
  EXPECT_EQ(map, root());
  EXPECT_THAT(requested(), ElementsAre("{" + subnetAnd("nativeId", "/") + "}",
                                       "{" + subnetAnd("objId", "102") + "}"));
}

TEST_F(OneSubMap, RootIsItsOwnParentWithTopologyId101) {
  // objId, parentId, topoId; then the keys and the type.
  const std::tuple<const char*, const char*, const char*, const char*, const char*, int>
      kObjects[] = {{"102", "102", "101", kRoot, kRoot, 101},
                    {"7", "7", "101", "S7", kRoot, 101},
                    {"7", "7", "101x", "S7", kRoot, 101},
                    {"7", "7", "4294967397", "S7", kRoot, 101},
                    {"7", "7", "100", "S7", "S7", 1},
                    {"7", "7", "102", "S7", "S7", 1},
                    {"7", "7", "", "S7", "S7", 1},
                    {"102", "102", "1", kRoot, "S102", 1},
                    {"7", "8", "101", "S8", "S7", 1},
                    {"", "", "101", "S", "S", 1}};
  for (const auto& [objId, parentId, topoId, parent, key, type] : kObjects) {
    SubMap map;
    Json::Value object(Json::objectValue);
    object["objId"] = objId;
    object["parentId"] = parentId;
    object["topoId"] = topoId;
    object["typeId"] = "200";
    answers(R"({"dataList":[)" + compact(object) + "]}");
    EXPECT_EQ(EMFTopoI::getSubMap("S7", map), 0);
    SubMap expected;
    expected.parentSubMapId = parent;
    expected.subMapId = key;
    expected.mapType = type;
    EXPECT_EQ(map, expected) << compact(object);
  }
}

TEST_F(OneSubMap, EmptyListReadsAsAnEmptyObject) {
  SubMap expected = leftOver();
  expected.parentSubMapId = expected.subMapId = "S";
  expected.label = expected.iconName = "";
  expected.mapType = expected.zeroField1 = expected.zeroField2 = expected.topoClassId = 0;
  expected.posX = expected.posY = 0;
  for (const char* list : {"[]", "[{}]", "[null]", "[5]", R"(["text"])"}) {
    map_ = leftOver();
    answers(R"({"dataList":)" + std::string(list) + "}");
    EXPECT_EQ(EMFTopoI::getSubMap("S60", map_), 0) << list;
    EXPECT_EQ(map_, expected) << list;
  }
}

// One member after the other has no text form; each step before it has filled its fields.
TEST_F(OneSubMap, StepsBeforeAMemberWithoutATextHaveFilledTheRecord) {
  const std::pair<const char*, void (*)(SubMap&)> kSteps[] = {
      {"parentId", [](SubMap&) {}},
      {"objId", [](SubMap&) {}},
      {"label", [](SubMap& map) { map.parentSubMapId = "S55"; }},
      {"iconFile", [](SubMap& map) { map.label = "City"; }},
      {"typeId",
       [](SubMap& map) {
         map.iconName = "/a/city.png";
         map.subMapId = "S60";
       }},
      {"topoClassId",
       [](SubMap& map) {
         map.mapType = 1;
         map.zeroField1 = map.zeroField2 = 0;
       }},
      {"exInfo", [](SubMap& map) { map.topoClassId = 31; }},
      {"posX", [](SubMap& map) { map.procId = 12; }},
      {"posY", [](SubMap& map) { map.posX = -3; }},
  };
  SubMap expected = leftOver();
  for (const auto& [member, fill] : kSteps) {
    fill(expected);
    Json::Value object = json(kChild);
    object[member] = Json::Value(Json::arrayValue);
    answers(R"({"dataList":[)" + compact(object) + "]}");
    map_ = leftOver();
    EXPECT_THROW(EMFTopoI::getSubMap("S60", map_), Json::LogicError) << member;
    EXPECT_EQ(map_, expected) << member;
  }
}

TEST_F(OneSubMap, TopologyIdIsReadOnlyWhereTheSubmapIsItsOwnParent) {
  answers(R"({"dataList":[{"objId":"60","parentId":"55","topoId":[]}]})");
  EXPECT_EQ(EMFTopoI::getSubMap("S60", map_), 0);
  EXPECT_EQ(map_.subMapId, "S60");
  answers(R"({"dataList":[{"objId":"60","parentId":"60","topoId":[]}]})");
  EXPECT_THROW(EMFTopoI::getSubMap("S60", map_), Json::LogicError);
}

TEST_F(OneSubMap, AnswerWithoutAListIsMinusOne) {
  for (const char* answer : {"{}", "null", "[]", "5", R"("text")", R"({"dataList":null})",
                             R"({"dataList":{}})", R"({"dataList":"[]"})", R"({"objList":[]})"}) {
    answers(answer);
    EXPECT_EQ(EMFTopoI::getSubMap("S60", map_), -1) << answer;
    EXPECT_EQ(map_, leftOver()) << answer;
  }
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(OneSubMap, FailedReadIsLoggedAndLeavesTheRecord) {
  platform().rest.fails(kPath, json(R"({"dataList":[{"objId":"8"}]})"));
  EXPECT_EQ(EMFTopoI::getSubMap("S60", map_), kReadFailed);
  EXPECT_EQ(map_, leftOver());
  expectDomainLine(kOneFailed);
}

using SubMapName = SubMaps;

TEST_F(SubMapName, IsTheOneInTheBuffer) {
  Json::Value object(Json::objectValue);
  object["objId"] = "2";
  object["label"] = "City";
  object["parentId"] = "2";
  SubmapBufMgr::Instance()->refreshSubnetNameLink(std::vector<Json::Value>{object});
  object["nativeId"] = "NE=12";
  object["origin"] = "1";
  SubmapBufMgr::Instance()->refreshDeviceSubnetNameLink(std::vector<Json::Value>{object});
  std::string name = "left over";
  EMFTopoI::getSubmapName(name, 12);
  EXPECT_EQ(name, "City");
  EXPECT_THAT(platform().rest.requests(), IsEmpty());
}

TEST_F(SubMapName, OfAnUnknownDeviceIsEmpty) {
  std::string name = "left over";
  EMFTopoI::getSubmapName(name, 12);
  EXPECT_EQ(name, "");
}

}  // namespace
}  // namespace emf::test
