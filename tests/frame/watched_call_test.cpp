// What a host that watches is told.
#include "watchedcall.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "deviceinfo.h"
#include "platform_test.h"
#include "submapbufmgr.h"

namespace {

std::vector<std::string>& told() {
  static std::vector<std::string> lines;
  return lines;
}

}  // namespace

extern "C" EMF_API void emfOperationEnded(const char* operation, std::int64_t nanoseconds,
                                          int failed) noexcept {
  EXPECT_GE(nanoseconds, 0);
  told().push_back(std::string(operation) + (failed != 0 ? " failed" : ""));
}

extern "C" EMF_API void emfCacheFilled(const char* cache, std::size_t entries) noexcept {
  told().push_back(std::string(cache) + " " + std::to_string(entries));
}

namespace emf::test {
namespace {

using emf::doubles::json;
using emf::doubles::platform;
using ::testing::Contains;
using ::testing::ElementsAre;

class Watch : public emf::doubles::PlatformTest {
 protected:
  Watch() { told().clear(); }
};

constexpr char kNodesPath[] = "/rest/topology/v3/tsnodes";

TEST_F(Watch, AnOperationIsToldAtItsEnd) {
  {
    const WatchedCall call("one");
    EXPECT_THAT(told(), ElementsAre());
  }
  EXPECT_THAT(told(), ElementsAre("one"));
}

TEST_F(Watch, AResultOtherThanZeroIsAFailure) {
  EXPECT_EQ(WatchedCall("one").result(0), 0);
  EXPECT_EQ(WatchedCall("two").result(-1L), -1L);
  EXPECT_THAT(told(), ElementsAre("one", "two failed"));
}

TEST_F(Watch, AnExceptionThatLeavesIsAFailure) {
  try {
    const WatchedCall call("one");
    throw std::runtime_error("");
  } catch (const std::exception&) {
    const WatchedCall meanwhile("two");
  }
  EXPECT_THAT(told(), ElementsAre("one failed", "two"));
}

TEST_F(Watch, ARefreshTellsItsCachesAndItsEnd) {
  platform().rest.answers(kNodesPath, json(R"({"dataList":[]})"));
  platform().rest.answers(kNodesPath, json(R"({"dataList":[]})"));
  SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
  EXPECT_THAT(told(), ElementsAre("subnets 0", "subnet_names 0", kEmfSubnetRefresh));
  SubmapBufMgr::Destroy();
}

TEST_F(Watch, ARefreshThatCannotReadHasFailed) {
  platform().rest.fails(kNodesPath);
  platform().rest.answers(kNodesPath, json(R"({"dataList":[]})"));
  SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
  EXPECT_THAT(told(), Contains(std::string(kEmfSubnetRefresh) + " failed"));
  SubmapBufMgr::Destroy();
}

TEST_F(Watch, TheDeviceCacheTellsItsSize) {
  EXPECT_EQ(DeviceInfo::Instance()->setDeviceMap(), 1);
  EXPECT_THAT(told(), Contains("devices 0"));
  DeviceInfo::Destroy();
}

}  // namespace
}  // namespace emf::test
