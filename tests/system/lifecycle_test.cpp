// The plug-in's whole life again and again in one process: load, factory, init, queries, ExitSvc,
// fini, deleter, unload. Nothing may be left over from one to the next.
#include <malloc.h>

#include <filesystem>
#include <iterator>
#include <list>
#include <string>
#include <vector>

#include "deviceinfo.h"
#include "emfresinterface.h"
#include "emftopointerface.h"
#include "service_host.h"
#include "world.h"

namespace systemtest {
namespace {

// What a process holds.
struct Holdings {
  std::size_t heapBytes;
  std::ptrdiff_t threads;
  std::ptrdiff_t descriptors;
};

std::ptrdiff_t entriesOf(const char* directory) {
  return std::distance(std::filesystem::directory_iterator(directory), {});
}

Holdings holdings() {
  return {mallinfo2().uordblks, entriesOf("/proc/self/task"), entriesOf("/proc/self/fd")};
}

class Lifecycle : public World {
 protected:
  Lifecycle() {
    serve();
    configure([](Json::Value& document) { document["log"]["stderr"] = false; });
  }

  // The task's requests may or may not meet the others; so that the connections that are kept do
  // not depend on it, there is one.
  void reportSubnets() {
    configure([](Json::Value& document) {
      document["items"]["IsReportSubnet"] = 1;
      document["rest"]["maxConnections"] = 1;
    });
  }

  std::shared_ptr<const orma::Configuration> configuration() {
    std::vector<orma::ConfigProblem> problems;
    auto loaded = orma::Configuration::load(configuration_.string(), problems);
    for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
    return loaded;
  }

  void runOnce(const std::shared_ptr<const orma::Configuration>& configuration) {
    ormaagent::ServiceHost host(configuration);
    ASSERT_TRUE(host.start());
    std::list<Device> devices;
    ASSERT_EQ(EMFTopoI::getAllDevices(devices), 0);
    ASSERT_EQ(devices.size(), 50u);
    Device device;
    ASSERT_EQ(EMFTopoI::getDevice(devices.front().id, device), 0);
    ASSERT_EQ(DeviceInfo::Instance()->getDeviceByID(devices.back().id, device), 1);
    std::list<PhysicalLink> links;
    ASSERT_EQ(EMFTopoI::getAllPhyLinks(links), 0);
    ASSERT_FALSE(links.empty());
    std::string text;
    ASSERT_GT(EMFResMgrI::AdpDevID2FDN(12, text), 0);
    EMFTopoI::getSubmapName(text, 12);
    ASSERT_TRUE(host.stop());
  }

  // Runs some lives to warm up and then `count` more; what the process holds before and after
  // these must be the same but for `bytesALife`.
  void expectNothingLeft(int warmUps, int count, std::size_t bytesALife) {
    testing::internal::CaptureStdout();  // each life prints its farewell
    const auto loaded = configuration();
    for (int i = 0; i < warmUps && !HasFatalFailure(); ++i) runOnce(loaded);
    const Holdings before = holdings();
    for (int i = 0; i < count && !HasFatalFailure(); ++i) runOnce(loaded);
    const Holdings after = holdings();
    testing::internal::GetCapturedStdout();
    EXPECT_LT(after.heapBytes, before.heapBytes + static_cast<std::size_t>(count) * bytesALife);
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(after.descriptors, before.descriptors);
  }
};

// Below one block of the allocator for each life; the allocator itself drifts by some bytes.
TEST_F(Lifecycle, ThousandLivesLeaveNothingBehind) { expectNothingLeft(100, 900, 24); }

// With a second thread the allocator takes longer to settle: some tens of kilobytes in all.
TEST_F(Lifecycle, LivesWithTheTaskLeaveNothingBehind) {
  reportSubnets();
  expectNothingLeft(20, 60, 1024);
}

}  // namespace
}  // namespace systemtest
