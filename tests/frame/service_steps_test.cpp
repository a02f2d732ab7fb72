// The steps of the service object's life in their order. What a step meets is scripted by the
// linker: the task's operations, ACE's start of a thread (which fails here), what the
// configuration gives.
#include <functional>

#include "orma/bundle/config_items.h"
#include "service_fixture.h"
#include "stdout_capture.h"

namespace {

std::function<int()> atStop;
std::function<void()> atDestroy;
std::function<bool(int&)> atItemRead;

}  // namespace

extern "C" {
int __wrap__ZN12SubmapBufMgr4StopEv(SubmapBufMgr*) { return atStop(); }

void __real__ZN12SubmapBufMgr7DestroyEv();
void __wrap__ZN12SubmapBufMgr7DestroyEv() {
  if (atDestroy) atDestroy();
  __real__ZN12SubmapBufMgr7DestroyEv();
}

bool __wrap__ZN13NS_BUNDLEMGR116CorbaConfigItems14GetIntItemInfoERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERi(
    NS_BUNDLEMGR1::CorbaConfigItems*, const std::string&, int& value) {
  return atItemRead(value);
}

int __wrap__ZN13ACE_Task_Base8activateEliiliPS_PmPPvS1_S1_PPKc(...) { return -1; }
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using emf::doubles::StdoutCapture;
using ::testing::Contains;
using ::testing::ElementsAre;

constexpr char kExitLine[] =
    "\n========== Exit Bundle Service ---[ ii_orma_corbaagent_bundle -- ii_ormaiac_emf ] "
    "==========\n";

class ServiceSteps : public ServiceTest {
 protected:
  ServiceSteps() {
    atStop = [] { return 0; };
    atItemRead = [](int&) { return false; };
  }
  ~ServiceSteps() override { atDestroy = nullptr; }
};

TEST_F(ServiceSteps, ExitPrintsItsLineBeforeItStopsTheTask) {
  const Service service = load();
  std::string printed;
  {
    StdoutCapture output;
    atStop = [&] {
      printed = output.text();
      return 0;
    };
    service->ExitSvc();
  }
  EXPECT_EQ(printed, kExitLine);
}

TEST_F(ServiceSteps, ExitGivesTheResultOfWaiting) {
  const Service service = load();
  for (const int result : {0, -1, 7}) {
    atStop = [result] { return result; };
    const StdoutCapture output;
    EXPECT_EQ(service->ExitSvc(), result);
  }
}

TEST_F(ServiceSteps, FiniDeletesTheTaskUnstoppedAndThenReleasesTheEngine) {
  const Service service = load();
  SubmapBufMgr::Instance();
  atStop = [] {
    platform().journal.note("stop");
    return 0;
  };
  atDestroy = [] { platform().journal.note("task"); };
  EXPECT_EQ(service->fini(), 0);
  EXPECT_THAT(platform().journal.events(),
              ElementsAre("task", "database: Instance database-double", "database: Destroy"));
}

TEST_F(ServiceSteps, ResultOfTheKeysReadIsNotLookedAt) {
  const Service service = load();
  atItemRead = [](int& value) {
    value = 1;
    return false;
  };
  EXPECT_EQ(service->init(0, nullptr), 0);
  EXPECT_EQ(platform().proxies.lines().size(), 1U);
  atItemRead = [](int& value) {
    value = 0;
    return true;
  };
  EXPECT_EQ(service->init(0, nullptr), 0);
  EXPECT_EQ(platform().proxies.lines().size(), 1U);
}

TEST_F(ServiceSteps, TaskThatFailsToStartDoesNotFailInit) {
  const Service service = load();
  atItemRead = [](int& value) {
    value = 1;
    return true;
  };
  EXPECT_EQ(service->init(0, nullptr), 0);
  EXPECT_THAT(platform().trace.texts(),
              Contains("[SubmapBufMgr::InitBuf] Failed to activate SubmapBufMgr::svc,"
                       "errCode is -1"));
}

}  // namespace
}  // namespace emf::test
