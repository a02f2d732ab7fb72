// Every operation of the interface is told to a host that watches, and whether it failed. Nothing
// is scripted: whatever an operation asks the platform for fails.
#include <gmock/gmock.h>

#include <ostream>

#include "deviceinfo.h"
#include "emfalminterface.h"
#include "emfmominterface.h"
#include "emfresinterface.h"
#include "emftopointerface.h"
#include "platform_test.h"
#include "processexception.h"
#include "watch_recorder.h"

namespace emf::test {
namespace {

struct OperationCase {
  const char* name;
  bool fails;
  void (*call)();
};

void PrintTo(const OperationCase& operation, std::ostream* out) { *out << operation.name; }

const std::vector<std::string> kNames = {"NE=2"};

const OperationCase kOperations[] = {
    {"EMFTopoI::getAllDevices", true,
     [] {
       std::list<Device> out;
       EMFTopoI::getAllDevices(out);
     }},
    {"EMFTopoI::getDevice", true,
     [] {
       Device out;
       EMFTopoI::getDevice(2, out);
     }},
    {"EMFTopoI::getVersionOfDev", false,
     [] {
       std::string out;
       EMFTopoI::getVersionOfDev(2, out);
     }},
    {"EMFTopoI::getLocationOfDev", false,
     [] {
       std::string out;
       EMFTopoI::getLocationOfDev(2, out);
     }},
    {"EMFTopoI::getDeviceIDbyNodeID", true,
     [] {
       long out = 0;
       EMFTopoI::getDeviceIDbyNodeID("2", out);
     }},
    // A view that cannot be read reads as an empty one, and the interface knows no difference.
    {"EMFTopoI::getAllNodes", false,
     [] {
       std::list<Node> out;
       EMFTopoI::getAllNodes("", out);
     }},
    {"EMFTopoI::getNode", false,
     [] {
       Node out;
       EMFTopoI::getNode(SimNode(), out);
     }},
    {"EMFTopoI::getAllRootSubMaps", true,
     [] {
       std::list<SubMap> out;
       EMFTopoI::getAllRootSubMaps(out);
     }},
    {"EMFTopoI::getAllSubMaps", true,
     [] {
       std::list<SubMap> out;
       EMFTopoI::getAllSubMaps("S1", out);
     }},
    {"EMFTopoI::getSubMap", true,
     [] {
       SubMap out;
       EMFTopoI::getSubMap("S1", out);
     }},
    {"EMFTopoI::getSubmapName", false,
     [] {
       std::string out;
       EMFTopoI::getSubmapName(out, 2);
     }},
    {"EMFTopoI::getPhyLink", true,
     [] {
       PhysicalLink out;
       EMFTopoI::getPhyLink("204:1", out);
     }},
    {"EMFTopoI::getAllPhyLinks", false,
     [] {
       std::list<PhysicalLink> out;
       EMFTopoI::getAllPhyLinks(out);
     }},
    {"DeviceInfo::setDeviceMap", false, [] { DeviceInfo::Instance()->setDeviceMap(); }},
    // A device that is not there is an answer.
    {"DeviceInfo::getDeviceByID", false,
     [] {
       Device out;
       DeviceInfo::Instance()->getDeviceByID(2, out);
     }},
    {"DeviceInfo::getDeviceByName", false,
     [] {
       std::list<Device> out;
       DeviceInfo::Instance()->getDeviceByName("x", out);
     }},
    {"EMFResMgrI::AdpDevID2FDN", false,
     [] {
       std::string out;
       EMFResMgrI::AdpDevID2FDN(2, out);
     }},
    {"EMFResMgrI::getResType", false, [] { EMFResMgrI::getResType(); }},
    // Labels that cannot be read are left out, which the interface reports as success.
    {"EMFResMgrI::getResourceLabels", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getResourceLabels(out, {{1, "NE=2"}});
     }},
    {"EMFResMgrI::getResourceLabelsEx", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getResourceLabelsEx(out, {{1, "NE=2"}});
     }},
    {"EMFResMgrI::getResourceLabelsByRest", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getResourceLabelsByRest(out, kNames, "NE");
     }},
    {"EMFResMgrI::getPortResourceLabelsByRest", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getPortResourceLabelsByRest(out, kNames);
     }},
    {"EMFResMgrI::getSlotResourceLabelsByRest", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getSlotResourceLabelsByRest(out, kNames);
     }},
    {"EMFResMgrI::getCardResourceLabelsByRest", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getCardResourceLabelsByRest(out, kNames);
     }},
    {"EMFResMgrI::getFrameResourceLabelsByRest", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getFrameResourceLabelsByRest(out, kNames);
     }},
    {"EMFResMgrI::getNEResourceLabelsByRest", false,
     [] {
       std::list<ResourceDn> out;
       EMFResMgrI::getNEResourceLabelsByRest(out, kNames);
     }},
    {"EMFResMgrI::getAllNeResLabel", true,
     [] {
       std::map<std::string, std::string> out;
       EMFResMgrI::getAllNeResLabel(out);
     }},
    {"EMFResMgrI::getAllManagedElements", true,
     [] {
       std::list<Resource> out;
       EMFResMgrI::getAllManagedElements(out);
     }},
    {"EMFResMgrI::getContainedResourceByMainType", true,
     [] {
       std::list<Resource> out;
       EMFResMgrI::getContainedResourceByMainType({2}, 1, out);
     }},
    {"EMFResMgrI::getContainedResourceByType", true,
     [] {
       std::list<Resource> out;
       EMFResMgrI::getContainedResourceByType({2}, {}, out);
     }},
    {"EMFResMgrI::initAccessFdnConvertDll", true,
     [] {
       PRDU_ORMA::PrduResInfoConvert* out = nullptr;
       EMFResMgrI::initAccessFdnConvertDll(out);
     }},
    {"EMFResMgrI::getAccessResourceLabels", false,
     [] {
       std::map<int, ResourceEightLoc> out;
       EMFResMgrI::getAccessResourceLabels(out);
     }},
    {"EMFResMgrI::getResourceLocation", true,
     [] {
       LocationInfo_ out;
       EMFResMgrI::getResourceLocation(2, out);
     }},
    {"EMFResMgrI::getResourceMaintenances", true,
     [] {
       std::list<MaintenanceInfo> out;
       EMFResMgrI::getResourceMaintenances(2, out);
     }},
    {"EMFResMgrI::getResourceAttributes", true,
     [] {
       std::list<ResourceAttribute> out;
       EMFResMgrI::getResourceAttributes(2, out);
     }},
    {"EMFResMgrI::getResMainType", true,
     [] {
       std::list<NbiResMainType> out;
       EMFResMgrI::getResMainType(out);
     }},
    {"EMFResMgrI::getAccessNETypeList", false,
     [] {
       std::map<int, std::string> out;
       EMFResMgrI::getAccessNETypeList(out);
     }},
    {"EMFAlarmI::getAllAlarms", false,
     [] {
       std::list<FaultRecord> out;
       EMFAlarmI::getAllAlarms(out);
     }},
    {"EMFAlarmI::getAllEvents", false,
     [] {
       std::list<FaultRecord> out;
       EMFAlarmI::getAllEvents(out, 60);
     }},
    {"EMFAlarmI::getAllAlarmCfg", true,
     [] {
       std::vector<AlarmCfg> out;
       EMFAlarmI::getAllAlarmCfg(out);
     }},
    {"EMFAlarmI::getAllAlarmReason", true,
     [] {
       std::vector<AlarmReason> out;
       EMFAlarmI::getAllAlarmReason(out);
     }},
    {"EMFAlarmI::getRedefineAlarmInfo", true,
     [] {
       std::vector<AlarmCfg> out;
       EMFAlarmI::getRedefineAlarmInfo(out);
     }},
    {"EMFMOMgrI::setUserLabel", false, [] { EMFMOMgrI::setUserLabel(); }},
    {"EMFMOMgrI::setOwner", false, [] { EMFMOMgrI::setOwner(); }},
    {"EMFMOMgrI::insertRecord", false, [] { EMFMOMgrI::insertRecord(); }},
    {"EMFMOMgrI::deleteRecord", false, [] { EMFMOMgrI::deleteRecord(); }},
};

class WatchedOperations : public emf::doubles::PlatformTest,
                          public ::testing::WithParamInterface<OperationCase> {
 protected:
  WatchedOperations() { watchTold().clear(); }
  ~WatchedOperations() override { DeviceInfo::Destroy(); }
};

INSTANTIATE_TEST_SUITE_P(Interface, WatchedOperations, ::testing::ValuesIn(kOperations),
                         [](const auto& row) {
                           std::string name = row.param.name;
                           return name.replace(name.find("::"), 2, "_");
                         });

TEST_P(WatchedOperations, AreToldOnceAndLast) {
  GetParam().call();
  const std::string expected = std::string(GetParam().name) + (GetParam().fails ? " failed" : "");
  ASSERT_FALSE(watchTold().empty());
  EXPECT_EQ(watchTold().back(), expected);
  EXPECT_THAT(watchTold(), ::testing::Contains(expected).Times(1));
}

class WatchedRedefinitions : public emf::doubles::PlatformTest {
 protected:
  static std::string toldOf(bool (*query)(const emf::doubles::AlarmQuery&, Json::Value&)) {
    emf::doubles::platform().alarms.answersBy(query);
    watchTold().clear();
    std::vector<AlarmCfg> out;
    EMFAlarmI::getRedefineAlarmInfo(out);
    return watchTold().back();
  }
};

// The results of both, 1 and 0, tell the opposite.
TEST_F(WatchedRedefinitions, FailByAProcessExceptionAndNotByBeingNone) {
  EXPECT_EQ(toldOf([](const emf::doubles::AlarmQuery&, Json::Value&) { return true; }),
            "EMFAlarmI::getRedefineAlarmInfo");
  EXPECT_EQ(toldOf([](const emf::doubles::AlarmQuery&, Json::Value&) -> bool {
              throw ProcessException();
            }),
            "EMFAlarmI::getRedefineAlarmInfo failed");
}

}  // namespace
}  // namespace emf::test
