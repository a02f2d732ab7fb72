// A device list that reports failure: EMFTopoI::getAllDevices never does, so the linker puts a
// scripted one in its place.
#include "device_cache_fixture.h"

namespace {

std::int64_t listResult = 0;
std::list<Device> listed;

}  // namespace

extern "C" std::int64_t __wrap__ZN8EMFTopoI13getAllDevicesERNSt7__cxx114listI6DeviceSaIS2_EEE(
    std::list<Device>& out) {
  out.insert(out.end(), listed.begin(), listed.end());
  return listResult;
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;

constexpr char kSetFailed[] = "EMFTopoI::getAllDevices( lstDev)) occur error when get device list!";

class DeviceCacheRefusal : public DeviceCacheTest {
 protected:
  DeviceCacheRefusal() {
    listResult = 0;
    listed = {device(12, "core-1")};
    cache().setDeviceMap();
    forget();
    listed = {device(13, "core-2")};
  }
};

TEST_F(DeviceCacheRefusal, FailedListLeavesTheMapAsItWas) {
  for (const std::int64_t result : {std::int64_t{0x411800BA}, std::int64_t{-1}, std::int64_t{1}}) {
    forget();
    listResult = result;
    EXPECT_EQ(cache().setDeviceMap(), 0) << result;
    EXPECT_THAT(
        platform().log.lines(),
        ElementsAre(
            FieldsAre(::testing::_, "LogText", "deviceinfo", "unknown", Gt(0), 3, kSetEntering),
            FieldsAre(::testing::_, "LogText", "deviceinfo", "unknown", Gt(0), 3, kSetFailed)));
    EXPECT_EQ(cache().getDeviceByID(12, found_), 1) << result;
  }
}

TEST_F(DeviceCacheRefusal, LookupsIgnoreTheFailureAndLookAgainOnce) {
  listResult = -1;
  EXPECT_EQ(cache().getDeviceByID(13, found_), 0);
  EXPECT_THAT(platform().log.texts(),
              ElementsAre(kByIdEntering, kSetEntering, kSetFailed, kByIdUpdating, kByIdOuting));
  forget();
  EXPECT_EQ(cache().getDeviceByName("core-2", named_), 0);
  EXPECT_THAT(platform().log.texts(), ElementsAre(kSetEntering, kSetFailed, kByNameUpdating));
}

}  // namespace
}  // namespace emf::test
