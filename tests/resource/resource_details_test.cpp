#include <json/value.h>

#include <list>
#include <string>
#include <type_traits>

#include "emfresinterface.h"
#include "platform_test.h"
#include "resource_records.h"

namespace emf::test {
namespace {

using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

static_assert(std::is_same_v<decltype(EMFResMgrI::getResourceLocation),
                             std::int64_t(std::int64_t, LocationInfo_&)>);
static_assert(std::is_same_v<decltype(EMFResMgrI::getResourceMaintenances),
                             std::int64_t(std::int64_t, std::list<MaintenanceInfo>&)>);
static_assert(std::is_same_v<decltype(EMFResMgrI::getResourceAttributes),
                             std::int64_t(std::int64_t, std::list<ResourceAttribute>&)>);

// The compatible id of the element 12.
constexpr std::int64_t kIid = (std::int64_t{1} << 60) + 12;

const LocationInfo_ kBefore = {5, "c", "p", "t", "a"};

constexpr char kFailed[] =
    "[NBIHTTPProxy::QueryLocalInfoAndMaintenInfo]:call rest interface failed!";

class ResourceLocation : public emf::doubles::PlatformTest {};

TEST_F(ResourceLocation, PlaceOfTheFirstEntryIsTaken) {
  platform().resources.answers(json(
      R"({"locationInfo":[{"devMTInfo":{"country":"CN","province":"GD","city":"SZ",
                                        "address":"1 High St"}},
                          {"devMTInfo":{"country":"other"}}]})"));
  LocationInfo_ info = kBefore;
  EXPECT_EQ(EMFResMgrI::getResourceLocation(kIid, info), 0);
  EXPECT_EQ(info, (LocationInfo_{5, "CN", "GD", "SZ", "1 High St"}));
}

TEST_F(ResourceLocation, BodyAsksForThePlaceAlone) {
  LocationInfo_ info;
  EMFResMgrI::getResourceLocation(kIid, info);
  EXPECT_THAT(platform().resources.queries(),
              ElementsAre(FieldsAre(
                  "QueryLocalInfoAndMaintenInfo", IsEmpty(), "",
                  "{\n\t\"nativeIds\" : \n\t[\n\t\t\"NE=12\"\n\t],\n\t\"needMaintenanceInfo\" : "
                  "false\n}\n",
                  Json::Value())));
}

TEST_F(ResourceLocation, FailedReadIsLoggedAndChangesNothing) {
  LocationInfo_ info = kBefore;
  EXPECT_EQ(EMFResMgrI::getResourceLocation(kIid, info), -1);
  EXPECT_EQ(info, kBefore);
  EXPECT_THAT(platform().log.lines(),
              ElementsAre(FieldsAre("ii_domain_bundle/ii_domain_model/debug", "LogFormat",
                                    "emfresinterface", "unknown", Gt(0), 1, kFailed)));
}

TEST_F(ResourceLocation, FailedReadWithAnAnswerIsAFailure) {
  platform().resources.answers(json(R"({"locationInfo":[{"devMTInfo":{"city":"SZ"}}]})"), false);
  LocationInfo_ info = kBefore;
  EXPECT_EQ(EMFResMgrI::getResourceLocation(kIid, info), -1);
  EXPECT_EQ(info, kBefore);
}

TEST_F(ResourceLocation, AnswerOfAnotherShapeIsAFailureWithoutALine) {
  for (const char* answer :
       {"null", "{}", "[]", "7", R"({"other":1})", R"({"locationInfo":null})",
        R"({"locationInfo":{}})", R"({"locationInfo":"x"})", R"({"locationInfo":[]})",
        R"({"locationInfo":[null]})", R"({"locationInfo":[7]})", R"({"locationInfo":[{}]})",
        R"({"locationInfo":[{"other":{}},{"devMTInfo":{"city":"SZ"}}]})"}) {
    platform().resources.answers(json(answer));
    LocationInfo_ info = kBefore;
    EXPECT_EQ(EMFResMgrI::getResourceLocation(kIid, info), -1) << answer;
    EXPECT_EQ(info, kBefore) << answer;
  }
  EXPECT_THAT(platform().log.texts(), IsEmpty());
  EXPECT_THAT(platform().trace.texts(), IsEmpty());
}

TEST_F(ResourceLocation, AbsentOrEmptyMemberIsEmptyAndNotConverted) {
  platform().text.characterSetSwitch(1);
  platform().resources.answers(
      json(R"({"locationInfo":[{"devMTInfo":{"country":"","province":null,"address":7}}]})"));
  LocationInfo_ info = kBefore;
  EXPECT_EQ(EMFResMgrI::getResourceLocation(kIid, info), 0);
  EXPECT_EQ(info, (LocationInfo_{5, "", "", "", "UTF-8>GBK:7"}));
}

TEST_F(ResourceLocation, PlaceThatIsNoObjectHoldsNothing) {
  platform().resources.answers(json(R"({"locationInfo":[{"devMTInfo":null}]})"));
  LocationInfo_ info = kBefore;
  EXPECT_EQ(EMFResMgrI::getResourceLocation(kIid, info), 0);
  EXPECT_EQ(info, (LocationInfo_{5, "", "", "", ""}));
}

TEST_F(ResourceLocation, MemberOfAWrongTypeReachesTheCaller) {
  for (const char* key : {"country", "province", "city", "address"}) {
    Json::Value place = json(R"({"country":"CN","province":"GD","city":"SZ","address":"1"})");
    place[key] = Json::Value(Json::arrayValue);
    Json::Value answer;
    answer["locationInfo"][0]["devMTInfo"] = place;
    platform().resources.answers(answer);
    LocationInfo_ info = kBefore;
    EXPECT_THROW(EMFResMgrI::getResourceLocation(kIid, info), Json::LogicError) << key;
    EXPECT_EQ(info, kBefore) << key;
  }
}

TEST_F(ResourceLocation, WithoutALogServiceAFailureIsSilent) {
  platform().log.absent();
  LocationInfo_ info;
  EXPECT_EQ(EMFResMgrI::getResourceLocation(kIid, info), -1);
  EXPECT_THAT(platform().trace.texts(), IsEmpty());
}

class ResourceMaintenance : public emf::doubles::PlatformTest {};

TEST_F(ResourceMaintenance, FirstKeeperOfThreeIsTaken) {
  platform().resources.answers(json(
      R"({"maintenanceInfo":[{"iID":"17","name":"Li","dept":"Ops","phoneNo":"123","email":"l@x"},
                             {"iID":"18"},{"iID":"19"}]})"));
  std::list<MaintenanceInfo> out = {MaintenanceInfo{1, "before", "", "", "", ""}};
  EXPECT_EQ(EMFResMgrI::getResourceMaintenances(kIid, out), 0);
  EXPECT_THAT(out, ElementsAre(MaintenanceInfo{1, "before", "", "", "", ""},
                               MaintenanceInfo{17, "Li", "Ops", "123", "l@x", ""}));
}

TEST_F(ResourceMaintenance, BodyAsksForTheKeepers) {
  std::list<MaintenanceInfo> out;
  EMFResMgrI::getResourceMaintenances(kIid, out);
  EXPECT_THAT(platform().resources.queries(),
              ElementsAre(FieldsAre(
                  "QueryLocalInfoAndMaintenInfo", IsEmpty(), "",
                  "{\n\t\"nativeIds\" : \n\t[\n\t\t\"NE=12\"\n\t],\n\t\"needMaintenanceInfo\" : "
                  "true\n}\n",
                  Json::Value())));
}

TEST_F(ResourceMaintenance, EmptyListGivesOneEmptyRecord) {
  platform().resources.answers(json(R"({"maintenanceInfo":[]})"));
  std::list<MaintenanceInfo> out;
  EXPECT_EQ(EMFResMgrI::getResourceMaintenances(kIid, out), 0);
  EXPECT_THAT(out, ElementsAre(MaintenanceInfo()));
}

TEST_F(ResourceMaintenance, FailedReadIsLoggedAndAddsNothing) {
  std::list<MaintenanceInfo> out;
  EXPECT_EQ(EMFResMgrI::getResourceMaintenances(kIid, out), -1);
  EXPECT_THAT(out, IsEmpty());
  EXPECT_THAT(platform().log.lines(),
              ElementsAre(FieldsAre("ii_domain_bundle/ii_domain_model/debug", "LogFormat",
                                    "emfresinterface", "unknown", Gt(0), 1, kFailed)));
}

TEST_F(ResourceMaintenance, AnswerOfAnotherShapeIsAFailureWithoutALine) {
  for (const char* answer : {"null", "{}", "[]", R"({"maintenanceInfo":null})",
                             R"({"maintenanceInfo":{}})", R"({"locationInfo":[]})"}) {
    platform().resources.answers(json(answer));
    std::list<MaintenanceInfo> out;
    EXPECT_EQ(EMFResMgrI::getResourceMaintenances(kIid, out), -1) << answer;
    EXPECT_THAT(out, IsEmpty()) << answer;
  }
  EXPECT_THAT(platform().log.texts(), IsEmpty());
}

TEST_F(ResourceMaintenance, NumberIsReadFromTheConvertedText) {
  platform().text.characterSetSwitch(1);
  platform().text.conversionGives([](const std::string& text) { return text + "9"; });
  platform().resources.answers(json(R"({"maintenanceInfo":[{"iID":"17","name":"Li"}]})"));
  std::list<MaintenanceInfo> out;
  EMFResMgrI::getResourceMaintenances(kIid, out);
  EXPECT_THAT(out, ElementsAre(MaintenanceInfo{179, "Li9", "", "", "", ""}));
}

TEST_F(ResourceMaintenance, NumberIsCutTo32Bits) {
  const std::pair<const char*, std::int64_t> kCases[] = {
      {"\"\"", 0}, {"\"x\"", 0},          {"\" 5 \"", 5}, {"\"-5\"", -5},
      {"17", 17},  {"\"4294967297\"", 1}, {"null", 0},    {"\"2147483648\"", -2147483648}};
  for (const auto& [text, number] : kCases) {
    platform().resources.answers(
        json(R"({"maintenanceInfo":[{"iID":)" + std::string(text) + "}]}"));
    std::list<MaintenanceInfo> out;
    EXPECT_EQ(EMFResMgrI::getResourceMaintenances(kIid, out), 0) << text;
    EXPECT_THAT(out, ElementsAre(MaintenanceInfo{number, "", "", "", "", ""})) << text;
  }
}

TEST_F(ResourceMaintenance, NumberIsDecimal) {
  for (const auto& [text, number] : {std::pair("010", 10), std::pair("0x10", 0)}) {
    Json::Value answer;
    answer["maintenanceInfo"][0]["iID"] = text;
    platform().resources.answers(answer);
    std::list<MaintenanceInfo> out;
    EXPECT_EQ(EMFResMgrI::getResourceMaintenances(kIid, out), 0);
    EXPECT_THAT(out, ElementsAre(MaintenanceInfo{number, "", "", "", "", ""})) << text;
  }
}

TEST_F(ResourceMaintenance, MemberOfAWrongTypeReachesTheCaller) {
  platform().resources.answers(json(R"({"maintenanceInfo":[{"name":{"a":1}}]})"));
  std::list<MaintenanceInfo> out;
  EXPECT_THROW(EMFResMgrI::getResourceMaintenances(kIid, out), Json::LogicError);
  EXPECT_THAT(out, IsEmpty());
}

class ResourceAttributes : public emf::doubles::PlatformTest {};

TEST_F(ResourceAttributes, HiddenNumbersAreLeftOut) {
  _SResProperty resource;
  for (const int number : {29, 30, 31, 59, 60, 61, 62, 63, 64, -30}) {
    resource.attributes.emplace_back(number, "value " + std::to_string(number));
  }
  platform().database.resources({{12, resource}}, 1);
  std::list<ResourceAttribute> out = {ResourceAttribute{0, 1, "before"}};
  EXPECT_EQ(EMFResMgrI::getResourceAttributes(kIid, out), 0);
  EXPECT_THAT(
      out,
      ElementsAre(ResourceAttribute{0, 1, "before"}, ResourceAttribute{0, 29, "value 29"},
                  ResourceAttribute{0, 31, "value 31"}, ResourceAttribute{0, 59, "value 59"},
                  ResourceAttribute{0, 64, "value 64"}, ResourceAttribute{0, -30, "value -30"}));
}

TEST_F(ResourceAttributes, EngineIsAskedByTheIdCutTo32Bits) {
  std::list<ResourceAttribute> out;
  EMFResMgrI::getResourceAttributes(kIid, out);
  EMFResMgrI::getResourceAttributes(0x1FFFFFFFF, out);
  EXPECT_THAT(platform().database.calls(),
              ElementsAre("Instance database-double", "GetResByIID 12 / / 1",
                          "Instance database-double", "GetResByIID -1 / / 1"));
}

TEST_F(ResourceAttributes, FirstResourceOfSeveralIsTaken) {
  platform().database.resources({{3, {{{1, "third"}}}}, {2, {{{1, "second"}}}}}, 2);
  std::list<ResourceAttribute> out;
  EXPECT_EQ(EMFResMgrI::getResourceAttributes(kIid, out), 0);
  EXPECT_THAT(out, ElementsAre(ResourceAttribute{0, 1, "second"}));
}

TEST_F(ResourceAttributes, ResourceWithoutAttributesIsASuccess) {
  platform().database.resources({{12, {}}}, 1);
  std::list<ResourceAttribute> out;
  EXPECT_EQ(EMFResMgrI::getResourceAttributes(kIid, out), 0);
  EXPECT_THAT(out, IsEmpty());
}

TEST_F(ResourceAttributes, ResultBelowOneOrNoResourceIsAFailure) {
  for (const int result : {0, -1, -7}) {
    platform().database.resources({{12, {{{1, "a"}}}}}, result);
    std::list<ResourceAttribute> out;
    EXPECT_EQ(EMFResMgrI::getResourceAttributes(kIid, out), -1) << result;
    EXPECT_THAT(out, IsEmpty()) << result;
  }
  platform().database.resources({}, 1);
  std::list<ResourceAttribute> out;
  EXPECT_EQ(EMFResMgrI::getResourceAttributes(kIid, out), -1);
}

TEST_F(ResourceAttributes, ValueIsConverted) {
  platform().text.characterSetSwitch(2);
  platform().database.resources({{12, {{{1, "a"}, {2, ""}}}}}, 1);
  std::list<ResourceAttribute> out;
  EMFResMgrI::getResourceAttributes(kIid, out);
  EXPECT_THAT(out, ElementsAre(ResourceAttribute{0, 1, "UTF-8>ISO-8859-1:a"},
                               ResourceAttribute{0, 2, "UTF-8>ISO-8859-1:"}));
}

}  // namespace
}  // namespace emf::test
