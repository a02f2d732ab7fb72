#include <stdexcept>
#include <type_traits>

#include "device_objects.h"
#include "emftopointerface.h"

namespace emf::test {
namespace {

using emf::doubles::Conversion;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

static_assert(std::has_virtual_destructor_v<Device>);
static_assert(std::is_copy_constructible_v<Device> && std::is_copy_assignable_v<Device>);
static_assert(std::is_same_v<decltype(EMFTopoI::getAllDevices), std::int64_t(std::list<Device>&)>);

class DeviceList : public emf::doubles::PlatformTest {
 protected:
  std::list<Device> devices_;
};

TEST(DeviceRecord, StartsEmpty) {
  const Device fresh;
  EXPECT_EQ(fresh, device(0, "", 0, 0, ""));
}

TEST(DeviceRecord, CopyIsFieldByField) {
  const Device source = device(12, "core-1", 3, 4, "10.0.0.2");
  const Device copy = source;
  EXPECT_EQ(copy, source);
  Device assigned;
  assigned = source;
  EXPECT_EQ(assigned, source);
}

TEST_F(DeviceList, EachObjectBecomesADeviceInTheOrderGiven) {
  platform().rest.devices({deviceObject("NE=12", "core-1", 0x00020005, "10.0.0.12"),
                           deviceObject("NE=3", "edge", 0x00010001, "fe80::3")});
  EXPECT_EQ(EMFTopoI::getAllDevices(devices_), 0);
  EXPECT_THAT(devices_, ElementsAre(device(12, "core-1", 2, 5, "10.0.0.12"),
                                    device(3, "edge", 1, 1, "fe80::3")));
  EXPECT_EQ(platform().rest.deviceReads(), 1);
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(DeviceList, DevicesAreAppended) {
  devices_ = {device(9, "before")};
  platform().rest.devices({deviceObject("NE=12", "core-1")});
  EXPECT_EQ(EMFTopoI::getAllDevices(devices_), 0);
  EXPECT_THAT(devices_, ElementsAre(device(9, "before"), device(12, "core-1")));
}

TEST_F(DeviceList, EmptyNetworkAndOutageGiveNothingAndSuccess) {
  devices_ = {device(9, "before")};
  platform().rest.devices({});
  EXPECT_EQ(EMFTopoI::getAllDevices(devices_), 0);
  platform().rest.devicesFail();
  EXPECT_EQ(EMFTopoI::getAllDevices(devices_), 0);
  EXPECT_THAT(devices_, ElementsAre(device(9, "before")));
}

TEST_F(DeviceList, WhatIsNoDeviceIsSkipped) {
  for (const char* nativeId : {"NE=12,FR=0", "OS=1", "NE=1", "NE=0", "NE=-5", "NE=2,", ",NE=7",
                               "NE=-9223372036854775808", "XYZ,1"}) {
    platform().rest.devices({deviceObject(nativeId, "x"), deviceObject("NE=12", "core-1")});
    devices_.clear();
    EXPECT_EQ(EMFTopoI::getAllDevices(devices_), 0) << nativeId;
    EXPECT_THAT(devices_, ElementsAre(device(12, "core-1"))) << nativeId;
  }
}

TEST_F(DeviceList, NothingIsReadOfASkippedObjectButItsId) {
  platform().rest.devices(
      {json(R"({"nativeId":"NE=12,FR=0","typeId":"x","ipAddress":[],"name":[]})"),
       json(R"({"nativeId":"NE=1","typeId":"x","ipAddress":[],"name":[]})")});
  EXPECT_EQ(EMFTopoI::getAllDevices(devices_), 0);
  EXPECT_THAT(devices_, IsEmpty());
}

TEST_F(DeviceList, IdIsTheNumberBehindTheFirstEquals) {
  const std::pair<const char*, long> kIds[] = {
      {"NE=2", 2},
      {"ONE=4063232", 4063232},
      {"EMS=10485760", 10485760},
      {"OS=4161536", 4161536},
      {"=7", 7},
      {"NE= 12", 12},
      {"NE=+12", 12},
      {"NE=012", 12},
      {"NE=12abc", 12},
      {"NE=12=13", 12},
      {"NE=0x10", 0},
      {"NE=9223372036854775807", 9223372036854775807L},
  };
  for (const auto& [nativeId, id] : kIds) {
    platform().rest.devices({deviceObject(nativeId, "x")});
    devices_.clear();
    EMFTopoI::getAllDevices(devices_);
    if (id < 2) {
      EXPECT_THAT(devices_, IsEmpty()) << nativeId;
    } else {
      EXPECT_THAT(devices_, ElementsAre(device(id, "x"))) << nativeId;
    }
  }
}

TEST_F(DeviceList, IdThatIsNoNumberIsToldAndWhatCameBeforeStays) {
  for (const char* nativeId : {"XYZ", "NE=", "NE=abc", "", "12", "NE=-", "NE==2"}) {
    platform().rest.devices({deviceObject("NE=12", "core-1"), deviceObject(nativeId, "x"),
                             deviceObject("NE=13", "core-2")});
    devices_.clear();
    EXPECT_THROW(EMFTopoI::getAllDevices(devices_), std::invalid_argument) << nativeId;
    EXPECT_THAT(devices_, ElementsAre(device(12, "core-1"))) << nativeId;
  }
}

TEST_F(DeviceList, IdBeyondTheRangeIsTold) {
  for (const char* nativeId : {"NE=9223372036854775808", "NE=-9223372036854775809"}) {
    platform().rest.devices({deviceObject(nativeId, "x")});
    EXPECT_THROW(EMFTopoI::getAllDevices(devices_), std::out_of_range) << nativeId;
  }
}

TEST_F(DeviceList, ObjectWithoutAnIdIsTold) {
  platform().rest.devices({json(R"({"typeId":1,"name":"x"})")});
  EXPECT_THROW(EMFTopoI::getAllDevices(devices_), std::invalid_argument);
}

TEST_F(DeviceList, TypeIdSplitsIntoItsHalves) {
  const std::tuple<int, int, int> kTypes[] = {
      {0x00020005, 2, 5},          {0, 0, 0},
      {0xFFFF, 0, 65535},          {0x10000, 1, 0},
      {0x7FFFFFFF, 32767, 65535},  {-1, 65535, 65535},
      {-2147483647 - 1, 32768, 0}, {-65536, 65535, 0},
  };
  for (const auto& [typeId, mainType, subType] : kTypes) {
    platform().rest.devices({deviceObject("NE=12", "x", typeId)});
    devices_.clear();
    EMFTopoI::getAllDevices(devices_);
    EXPECT_THAT(devices_, ElementsAre(device(12, "x", mainType, subType))) << typeId;
  }
}

TEST_F(DeviceList, AbsentFieldsAreZeroAndEmpty) {
  platform().rest.devices({json(R"({"nativeId":"NE=12"})"),
                           json(R"({"nativeId":"NE=13","typeId":null,"ipAddress":null,)"
                                R"("name":null})")});
  EMFTopoI::getAllDevices(devices_);
  EXPECT_THAT(devices_, ElementsAre(device(12, "", 0, 0, ""), device(13, "", 0, 0, "")));
}

TEST_F(DeviceList, TypeIdOfAWrongTypeIsTold) {
  for (const char* typeId : {R"("5")", "[]", "{}", "4294967296"}) {
    platform().rest.devices({json(std::string(R"({"nativeId":"NE=12","typeId":)") + typeId + "}")});
    EXPECT_THROW(EMFTopoI::getAllDevices(devices_), Json::LogicError) << typeId;
  }
  EXPECT_THAT(devices_, IsEmpty());
}

TEST_F(DeviceList, OnlyTheNameIsConverted) {
  platform().text.characterSetSwitch(1);
  platform().rest.devices({deviceObject("NE=12", "\xE4\xB8\xAD", 0, "10.0.0.\xE4\xB8\xAD")});
  EMFTopoI::getAllDevices(devices_);
  EXPECT_THAT(devices_,
              ElementsAre(device(12, "UTF-8>GBK:\xE4\xB8\xAD", 0, 0, "10.0.0.\xE4\xB8\xAD")));
  EXPECT_THAT(platform().text.conversions(),
              ElementsAre(Conversion{"UTF-8", "GBK", "\xE4\xB8\xAD"}));
}

TEST_F(DeviceList, SecondDeviceWithSameIdIsListedToo) {
  platform().rest.devices({deviceObject("NE=12", "first"), deviceObject("NE=12", "second")});
  EMFTopoI::getAllDevices(devices_);
  EXPECT_THAT(devices_, ElementsAre(device(12, "first"), device(12, "second")));
}

}  // namespace
}  // namespace emf::test
