// The life of the task: start, refresh, sleep, stop, start again.
#include <ace/Task.h>

#include <atomic>
#include <future>

#include "processexception.h"
#include "task_fixture.h"

namespace {

// So many waits for the thread fail; one that does not lets the sleeps end.
std::atomic<int> failingWaits{0};

}  // namespace

extern "C" int __real__ZN13ACE_Task_Base4waitEv(ACE_Task_Base* task);
extern "C" int __wrap__ZN13ACE_Task_Base4waitEv(ACE_Task_Base* task) {
  if (failingWaits == 0) return __real__ZN13ACE_Task_Base4waitEv(task);
  if (--failingWaits > 0) return -1;
  emf::test::sleepGate().open();
  return __real__ZN13ACE_Task_Base4waitEv(task);
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SubmapTask : public TaskTest {
 protected:
  // Sets the stop flag of a task that sleeps, without waiting for it.
  static void askToStop() {
    ACE_Thread_Manager* manager = buffer().thr_mgr();
    buffer().thr_mgr(nullptr);  // nobody to wait for
    EXPECT_EQ(buffer().Stop(), 0);
    buffer().thr_mgr(manager);
  }
};

TEST_F(SubmapTask, OneObjectUntilItIsDestroyed) {
  SubmapBufMgr* made = SubmapBufMgr::Instance();
  EXPECT_NE(made, nullptr);
  EXPECT_EQ(SubmapBufMgr::Instance(), made);
  SubmapBufMgr::Destroy();
  SubmapBufMgr::Destroy();
  EXPECT_EQ(link(12), "");
}

TEST_F(SubmapTask, IdleObjectDoesNothing) {
  EXPECT_EQ(link(12), "");
  EXPECT_THAT(platform().rest.requests(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
  EXPECT_EQ(buffer().thr_count(), 0U);
}

TEST_F(SubmapTask, StopWithoutAThreadReturnsAtOnce) {
  EXPECT_EQ(buffer().Stop(), 0);
  buffer().ClearBuf();
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(SubmapTask, StopGivesWhatTheWaitGives) {
  failingWaits = 2;
  EXPECT_EQ(buffer().Stop(), -1);
  EXPECT_EQ(failingWaits, 1);
  EXPECT_EQ(buffer().Stop(), 0);
}

TEST_F(SubmapTask, WaitThatFailsWhileTheThreadRunsIsTriedAgain) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  failingWaits = 3;
  EXPECT_EQ(buffer().Stop(), 0);
  EXPECT_EQ(failingWaits, 0);
  EXPECT_EQ(buffer().thr_count(), 0U);
}

TEST_F(SubmapTask, FirstRefreshComesAtOnceThenTheSleep) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  EXPECT_EQ(buffer().thr_count(), 1U);
  EXPECT_EQ(refreshes(), 1U);
  EXPECT_EQ(link(12), "Region/City");
  EXPECT_THAT(sleepGate().lengths(), ElementsAre(1800));
}

TEST_F(SubmapTask, StartIsTraced) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  EXPECT_THAT(platform().trace.lines(),
              Contains(FieldsAre("TaTrace", 0, "submapbufmgr", "unknown", Gt(0), kActivated)));
  EXPECT_THAT(platform().trace.lines(),
              Contains(FieldsAre("TaTrace", 0, "submapbufmgr", "unknown", Gt(0), kFirstTime)));
}

TEST_F(SubmapTask, RefreshesGoOnWithASleepBeforeEach) {
  buffer().InitBuf();
  for (std::size_t round = 1; round <= 3; ++round) {
    sleepGate().awaitSleeps(round);
    EXPECT_EQ(refreshes(), round);
    service.subnets({subnet("1", "Region" + std::to_string(round), "1"), subnet("2", "x", "1")});
    sleepGate().wake();
  }
  sleepGate().awaitSleeps(4);
  EXPECT_EQ(refreshes(), 4U);
  EXPECT_EQ(link(12), "Region3/x");
  EXPECT_EQ(traced(kFirstTime), 1);
  EXPECT_THAT(sleepGate().lengths(), AllOf(SizeIs(4), Each(1800)));
}

TEST_F(SubmapTask, InterruptedSleepIsOverAllTheSame) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  sleepGate().interrupt();
  sleepGate().awaitSleeps(2);
  EXPECT_EQ(refreshes(), 2U);
  EXPECT_THAT(sleepGate().lengths(), ElementsAre(1800, 1800));
}

TEST_F(SubmapTask, LookupBeforeTheFirstRefreshHasEndedIsEmpty) {
  std::promise<void> asked;
  std::promise<void> answer;
  service.onRequest([&] {
    service.onRequest(nullptr);
    asked.set_value();
    answer.get_future().wait();
  });
  buffer().InitBuf();
  asked.get_future().wait();
  EXPECT_EQ(link(12), "");
  answer.set_value();
  sleepGate().awaitSleeps(1);
  EXPECT_EQ(link(12), "Region/City");
}

TEST_F(SubmapTask, StopDuringTheSleepCostsTheSleepAndOneRefresh) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  askToStop();
  EXPECT_EQ(buffer().thr_count(), 1U);
  EXPECT_EQ(refreshes(), 1U);
  sleepGate().wake();
  EXPECT_EQ(buffer().wait(), 0);
  EXPECT_EQ(refreshes(), 2U);
  EXPECT_THAT(sleepGate().lengths(), SizeIs(1));
  EXPECT_EQ(buffer().thr_count(), 0U);
}

TEST_F(SubmapTask, StopWaitsForTheThread) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  std::future<int> stopped = std::async(std::launch::async, [] { return buffer().Stop(); });
  EXPECT_EQ(stopped.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
  EXPECT_EQ(buffer().thr_count(), 1U);
  sleepGate().open();
  EXPECT_EQ(stopped.get(), 0);
  EXPECT_EQ(buffer().thr_count(), 0U);
  EXPECT_GE(refreshes(), 2U);
}

TEST_F(SubmapTask, StoppedTaskKeepsItsLinksAndCanBeStartedAgain) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  askToStop();
  sleepGate().wake();
  EXPECT_EQ(buffer().Stop(), 0);
  EXPECT_EQ(link(12), "Region/City");

  sleepGate().close();
  service.subnets({subnet("2", "Town", "2")});
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  EXPECT_EQ(link(12), "Town");
  EXPECT_EQ(traced(kActivated), 2);
  EXPECT_EQ(traced(kFirstTime), 2);
  EXPECT_EQ(refreshes(), 3U);
}

TEST_F(SubmapTask, SecondStartEmptiesTheBuffersAndTheThreadGoesOn) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  ASSERT_EQ(link(12), "Region/City");
  buffer().InitBuf();
  EXPECT_EQ(link(12), "");
  EXPECT_EQ(subnetLink("S2"), "");
  EXPECT_EQ(buffer().thr_count(), 1U);
  EXPECT_THAT(platform().trace.lines(),
              Contains(FieldsAre("TaTrace", 0, "submapbufmgr", "unknown", Gt(0),
                                 "[SubmapBufMgr::InitBuf] Failed to activate SubmapBufMgr::svc,"
                                 "errCode is 1")));
  EXPECT_EQ(traced(kActivated), 1);
  sleepGate().wake();
  sleepGate().awaitSleeps(2);
  EXPECT_EQ(link(12), "Region/City");
  EXPECT_EQ(traced(kFirstTime), 1);  // the thread was past the question
}

TEST_F(SubmapTask, SecondStartDuringARefreshMakesTheNextOneComeAtOnce) {
  service.onRequest([&] {
    service.onRequest(nullptr);
    buffer().InitBuf();
  });
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  EXPECT_EQ(refreshes(), 2U);
  EXPECT_EQ(traced(kFirstTime), 2);
  EXPECT_EQ(link(12), "Region/City");
}

TEST_F(SubmapTask, SecondStartTakesAStopBack) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  askToStop();
  buffer().InitBuf();
  sleepGate().wake();
  sleepGate().awaitSleeps(2);
  EXPECT_EQ(buffer().thr_count(), 1U);
}

TEST_F(SubmapTask, ClearBufStopsAndEmpties) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  sleepGate().open();
  buffer().ClearBuf();
  EXPECT_EQ(buffer().thr_count(), 0U);
  EXPECT_EQ(link(12), "");
  EXPECT_EQ(subnetLink("S2"), "");
}

TEST_F(SubmapTask, ExceptionInARefreshLeavesTheThreadAlive) {
  service.onRequest([] {
    ProcessException failure;
    failure.errCode = 17;
    throw failure;
  });
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  EXPECT_EQ(traced("QuerySubnetAndNodesInfo processException,errCode = 17"), 1);
  service.onRequest([] { throw 5; });
  sleepGate().wake();
  sleepGate().awaitSleeps(2);
  EXPECT_EQ(traced("QuerySubnetAndNodesInfo Catch unknown exception"), 1);
  service.onRequest(nullptr);
  sleepGate().wake();
  sleepGate().awaitSleeps(3);
  EXPECT_EQ(link(12), "Region/City");
  EXPECT_THAT(sleepGate().lengths(), Each(1800));
}

TEST_F(SubmapTask, OutageAndRecovery) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  EXPECT_EQ(link(12), "Region/City");
  service.outage(true, true);
  sleepGate().wake();
  sleepGate().awaitSleeps(2);
  EXPECT_EQ(link(12), "");
  service.outage(false, false);
  sleepGate().wake();
  sleepGate().awaitSleeps(3);
  EXPECT_EQ(link(12), "Region/City");
}

}  // namespace
}  // namespace emf::test
