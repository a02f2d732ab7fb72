// What a host that watches is told.
#include "watchedcall.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "deviceinfo.h"
#include "platform_test.h"
#include "submapbufmgr.h"
#include "watch_recorder.h"

namespace emf::test {
namespace {

using emf::doubles::json;
using emf::doubles::platform;
using ::testing::Contains;
using ::testing::ElementsAre;

class Watch : public emf::doubles::PlatformTest {
 protected:
  Watch() { watchTold().clear(); }
};

constexpr char kNodesPath[] = "/rest/topology/v3/tsnodes";

TEST_F(Watch, AnOperationIsToldAtItsEnd) {
  {
    const WatchedCall call("one");
    EXPECT_THAT(watchTold(), ElementsAre());
  }
  EXPECT_THAT(watchTold(), ElementsAre("one"));
}

TEST_F(Watch, AResultOtherThanZeroIsAFailure) {
  EXPECT_EQ(WatchedCall("one").result(0), 0);
  EXPECT_EQ(WatchedCall("two").result(-1L), -1L);
  EXPECT_THAT(watchTold(), ElementsAre("one", "two failed"));
}

TEST_F(Watch, AnExceptionThatLeavesIsAFailure) {
  try {
    const WatchedCall call("one");
    throw std::runtime_error("");
  } catch (const std::exception&) {
    const WatchedCall meanwhile("two");
  }
  EXPECT_THAT(watchTold(), ElementsAre("one failed", "two"));
}

TEST_F(Watch, ARefreshTellsItsCachesAndItsEnd) {
  platform().rest.answers(kNodesPath, json(R"({"dataList":[]})"));
  platform().rest.answers(kNodesPath, json(R"({"dataList":[]})"));
  SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
  EXPECT_THAT(watchTold(), ElementsAre("subnets 0", "subnet_names 0", kEmfSubnetRefresh));
  SubmapBufMgr::Destroy();
}

TEST_F(Watch, ARefreshThatCannotReadHasFailed) {
  platform().rest.fails(kNodesPath);
  platform().rest.answers(kNodesPath, json(R"({"dataList":[]})"));
  SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
  EXPECT_THAT(watchTold(), Contains(std::string(kEmfSubnetRefresh) + " failed"));
  SubmapBufMgr::Destroy();
}

TEST_F(Watch, TheDeviceCacheTellsItsSize) {
  EXPECT_EQ(DeviceInfo::Instance()->setDeviceMap(), 1);
  EXPECT_THAT(watchTold(), Contains("devices 0"));
  DeviceInfo::Destroy();
}

}  // namespace
}  // namespace emf::test
