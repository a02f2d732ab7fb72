#include <type_traits>

#include "device_objects.h"
#include "emftopointerface.h"

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

constexpr std::int64_t kReadFailed = 0x411800BA;
constexpr std::int64_t kNotOne = 0x411800CC;
constexpr char kEngine[] = "Instance database-double";

static_assert(std::is_same_v<decltype(EMFTopoI::getDevice), std::int64_t(long, Device&)>);
static_assert(std::is_same_v<decltype(EMFTopoI::getVersionOfDev), std::int64_t(int, std::string&)>);
static_assert(
    std::is_same_v<decltype(EMFTopoI::getLocationOfDev), std::int64_t(long, std::string&)>);
static_assert(std::is_same_v<decltype(EMFTopoI::getDeviceIDbyNodeID),
                             std::int64_t(const std::string&, long&)>);

stDevProperty property(std::uint32_t id, std::uint16_t type, std::int32_t subType,
                       const std::string& ip, const std::string& name) {
  stDevProperty record;
  record.devId = id;
  record.devType = type;
  record.subType = subType;
  record.ipAddress = ip;
  record.devName = name;
  return record;
}

NodeStruct node(std::uint32_t deviceId) {
  NodeStruct record;
  record.devId = deviceId;
  return record;
}

class DatabaseReads : public emf::doubles::PlatformTest {
 protected:
  // What an operation that must not touch its output finds there afterwards.
  const Device untouched_ = device(77, "left over", 8, 9, "left over");
  Device device_ = untouched_;
  std::string text_ = "left over";
  long id_ = 77;
};

TEST_F(DatabaseReads, DeviceIsTheOneRecord) {
  platform().database.properties({property(12, 65535, -5, "10.0.0.12", "core-1")});
  EXPECT_EQ(EMFTopoI::getDevice(12, device_), 0);
  EXPECT_EQ(device_, device(12, "core-1", 65535, -5, "10.0.0.12"));
  EXPECT_THAT(platform().database.calls(), ElementsAre(kEngine, "GetDevProperty 12"));
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(DatabaseReads, DeviceIdComesFromTheRecord) {
  platform().database.properties({property(4294967295U, 1, 2147483647, "", "")});
  EXPECT_EQ(EMFTopoI::getDevice(5, device_), 0);
  EXPECT_EQ(device_, device(4294967295L, "", 1, 2147483647, ""));
}

TEST_F(DatabaseReads, DeviceIdIsCutToThirtyTwoBits) {
  for (const auto& [id, cut] : {std::pair{-1L, "4294967295"}, {0x100000005L, "5"}, {0L, "0"}}) {
    platform().database.reset();
    EMFTopoI::getDevice(id, device_);
    EXPECT_THAT(platform().database.calls(),
                ElementsAre(kEngine, std::string("GetDevProperty ") + cut));
  }
}

TEST_F(DatabaseReads, DeviceTextsAreNotConverted) {
  platform().text.characterSetSwitch(1);
  platform().database.properties({property(12, 1, 2, "ip", "\xE4\xB8\xAD")});
  EMFTopoI::getDevice(12, device_);
  EXPECT_EQ(device_.name, "\xE4\xB8\xAD");
  EXPECT_THAT(platform().text.conversions(), IsEmpty());
}

TEST_F(DatabaseReads, FailedDeviceReadIsTracedAtLevelOne) {
  platform().database.properties({property(12, 1, 2, "ip", "name")});
  platform().database.fails();
  EXPECT_EQ(EMFTopoI::getDevice(12, device_), kReadFailed);
  EXPECT_EQ(device_, untouched_);
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebugWithPara", 1, "emftopointerface", "unknown", Gt(0),
                                    "[EMFTopoI::getDevice] Get device property failed.")));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(DatabaseReads, OnlyMinusOneIsAFailure) {
  platform().database.properties({property(12, 1, 2, "ip", "name")}, -2);
  EXPECT_EQ(EMFTopoI::getDevice(12, device_), 0);
  platform().database.versionName("V1", 1);
  EXPECT_EQ(EMFTopoI::getVersionOfDev(12, text_), 0);
  platform().database.location({"A"}, -2);
  EXPECT_EQ(EMFTopoI::getLocationOfDev(12, text_), 0);
}

TEST_F(DatabaseReads, NoRecordOrTwoLeaveTheDeviceAsItWas) {
  EXPECT_EQ(EMFTopoI::getDevice(12, device_), kNotOne);
  EXPECT_EQ(device_, untouched_);
  platform().database.properties({property(12, 1, 2, "a", "a"), property(12, 1, 2, "b", "b")});
  EXPECT_EQ(EMFTopoI::getDevice(12, device_), kNotOne);
  EXPECT_EQ(device_, untouched_);
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(DatabaseReads, VersionIsWhatTheEngineGives) {
  platform().database.versionName("V100R001");
  EXPECT_EQ(EMFTopoI::getVersionOfDev(12, text_), 0);
  EXPECT_EQ(text_, "V100R001");
  EXPECT_THAT(platform().database.calls(), ElementsAre(kEngine, "GetDevVersionName 12"));
}

TEST_F(DatabaseReads, FailedVersionReadIsToldByItsResultAlone) {
  platform().database.fails();
  EXPECT_EQ(EMFTopoI::getVersionOfDev(-1, text_), kNotOne);
  EXPECT_THAT(platform().database.calls(), ElementsAre(kEngine, "GetDevVersionName 4294967295"));
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(DatabaseReads, LocationPartsAreEachFollowedByTwoBlanks) {
  platform().database.location({"A", "B"});
  EXPECT_EQ(EMFTopoI::getLocationOfDev(12, text_), 0);
  EXPECT_EQ(text_, "A  B  ");
  EXPECT_THAT(platform().database.calls(), ElementsAre(kEngine, "GetDevLocationByDevID 12"));
}

TEST_F(DatabaseReads, LocationWithoutPartsIsEmpty) {
  EXPECT_EQ(EMFTopoI::getLocationOfDev(0x100000005L, text_), 0);
  EXPECT_EQ(text_, "");
  EXPECT_THAT(platform().database.calls(), ElementsAre(kEngine, "GetDevLocationByDevID 5"));
}

TEST_F(DatabaseReads, EmptyLocationPartIsWrittenToo) {
  platform().database.location({"", "B"});
  EXPECT_EQ(EMFTopoI::getLocationOfDev(12, text_), 0);
  EXPECT_EQ(text_, "  B  ");
}

TEST_F(DatabaseReads, FailedLocationReadLeavesTheTextAlone) {
  platform().database.location({"A"});
  platform().database.fails();
  EXPECT_EQ(EMFTopoI::getLocationOfDev(12, text_), kNotOne);
  EXPECT_EQ(text_, "left over");
}

TEST_F(DatabaseReads, DeviceOfANodeIsTheFirstRecords) {
  platform().database.nodes({node(4294967295U), node(3)}, 2);
  EXPECT_EQ(EMFTopoI::getDeviceIDbyNodeID("node 7", id_), 0);
  EXPECT_EQ(id_, 4294967295L);
  EXPECT_THAT(platform().database.calls(), ElementsAre(kEngine, "GetBaseNode 4 node 7"));
}

TEST_F(DatabaseReads, NodeNeedsBothACountAndARecord) {
  const std::pair<std::list<NodeStruct>, int> kAnswers[] = {
      {{}, 1}, {{}, 0}, {{}, -1}, {{node(3)}, 0}, {{node(3)}, -1}, {{node(3)}, -2}};
  for (const auto& [records, result] : kAnswers) {
    platform().database.nodes(records, result);
    EXPECT_EQ(EMFTopoI::getDeviceIDbyNodeID("7", id_), -1) << result;
    EXPECT_EQ(id_, 77) << result;
  }
}

TEST_F(DatabaseReads, CountMayExceedTheRecords) {
  platform().database.nodes({node(3)}, 5);
  EXPECT_EQ(EMFTopoI::getDeviceIDbyNodeID("7", id_), 0);
  EXPECT_EQ(id_, 3);
}

TEST_F(DatabaseReads, EachReadFetchesTheEngineAnew) {
  EMFTopoI::getVersionOfDev(1, text_);
  EMFTopoI::getLocationOfDev(2, text_);
  EMFTopoI::getDeviceIDbyNodeID("3", id_);
  EMFTopoI::getDevice(4, device_);
  EXPECT_THAT(platform().database.calls(),
              ElementsAre(kEngine, "GetDevVersionName 1", kEngine, "GetDevLocationByDevID 2",
                          kEngine, "GetBaseNode 4 3", kEngine, "GetDevProperty 4"));
}

}  // namespace
}  // namespace emf::test
