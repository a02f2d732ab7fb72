// What stands under the lock of the buffers, how the thread is started, and what comes of a start
// that fails. Lock calls and ACE's start are the linker's here and stand in the journal.
#include <ace/Thread_Manager.h>
#include <pthread.h>

#include <limits>

#include "emfglobal.h"
#include "task_fixture.h"

namespace {

struct Start {
  long flags;
  int threads;
  int force;
  long priority;
  int group;
  bool restIsNull;
};

std::vector<Start> starts;
bool withoutManager = false;

void note(const char* event) { emf::doubles::platform().journal.note(event); }

}  // namespace

extern "C" {
int __real_pthread_rwlock_rdlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_rdlock(pthread_rwlock_t* lock) {
  note("read lock");
  return __real_pthread_rwlock_rdlock(lock);
}
int __real_pthread_rwlock_wrlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_wrlock(pthread_rwlock_t* lock) {
  note("write lock");
  return __real_pthread_rwlock_wrlock(lock);
}
int __real_pthread_rwlock_unlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_unlock(pthread_rwlock_t* lock) {
  note("unlock");
  return __real_pthread_rwlock_unlock(lock);
}

int __wrap__ZN13ACE_Task_Base8activateEliiliPS_PmPPvS1_S1_PPKc(
    ACE_Task_Base*, long flags, int threads, int force, long priority, int group,
    ACE_Task_Base* task, unsigned long* handles, void** stacks, unsigned long* stackSizes,
    unsigned long* ids, const char** names) {
  note("activate");
  const bool restIsNull = task == nullptr && handles == nullptr && stacks == nullptr &&
                          stackSizes == nullptr && ids == nullptr && names == nullptr;
  starts.push_back({flags, threads, force, priority, group, restIsNull});
  return -1;
}

ACE_Thread_Manager* __real__ZN18ACE_Thread_Manager8instanceEv();
ACE_Thread_Manager* __wrap__ZN18ACE_Thread_Manager8instanceEv() {
  return withoutManager ? nullptr : __real__ZN18ACE_Thread_Manager8instanceEv();
}
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

constexpr char kSend[] = "send: /rest/topology/v3/tsnodes";
constexpr char kFailed[] =
    "[SubmapBufMgr::InitBuf] Failed to activate SubmapBufMgr::svc,errCode is -1";

class SubmapLock : public TaskTest {
 protected:
  SubmapLock() {
    starts.clear();
    withoutManager = false;
    buffer();
    GetDomainLog();  // looking it up takes locks that are not the buffers'
    platform().journal.reset();
  }
};

TEST_F(SubmapLock, SpansTheStartAndItsTrace) {
  buffer().InitBuf();
  EXPECT_THAT(platform().journal.events(),
              ElementsAre("write lock", "activate", std::string("trace: ") + kFailed, "unlock"));
}

TEST_F(SubmapLock, IsTakenAfterTheReadsAndOnceForEachMap) {
  service.nodes({node("NE=12", "1", "2"), node("NE=13", "0", "2")});
  buffer().QuerySubnetAndNodesInfo();
  EXPECT_THAT(platform().journal.events(),
              ElementsAre(kSend, kSend, "write lock", "trace: strSNLink = Region",
                          "trace: strSNLink = Region/City", "unlock", "write lock",
                          "trace: SubmapBufMgr::refreshDeviceSubnetNameLink pass not origin NE "
                          "device[NE=13]",
                          "unlock"));
}

TEST_F(SubmapLock, RecordsAreTakenInUnderItToo) {
  buffer().refreshSubnetNameLink(std::vector<SouthSubnet>{{"2", "City", "2"}});
  buffer().refreshDeviceSubnetNameLink(std::vector<SouthDevice>{{12, "NE=12", "2", {}}});
  EXPECT_THAT(platform().journal.events(),
              ElementsAre("write lock", "trace: strSNLink = City", "unlock", "write lock",
                          "trace: [SubmapBufMgr::OriginNE] Failed to find Origin field from "
                          "asnKeyVal",
                          "unlock"));
}

// Its callers hold the lock.
TEST_F(SubmapLock, IsNotTakenForOneLink) {
  buffer().getParentLinkSubnetName("S2", Objects{subnet("2", "City", "2")});
  buffer().getParentLinkSubnetName("2", std::vector<SouthSubnet>{{"2", "City", "2"}});
  EXPECT_THAT(platform().journal.events(), IsEmpty());
}

TEST_F(SubmapLock, IsSharedForALookup) {
  link(12);
  EXPECT_THAT(platform().journal.events(), ElementsAre("read lock", "unlock"));
}

TEST_F(SubmapLock, IsTakenToClearTheBuffers) {
  buffer().ClearBuf();
  EXPECT_THAT(platform().journal.events(), ElementsAre("write lock", "unlock"));
}

TEST_F(SubmapLock, IsNotTakenToStopNorToQueryTheView) {
  std::vector<Json::Value> objects;
  buffer().QueryTopoView(Json::Value(), objects);
  buffer().Stop();
  EXPECT_THAT(
      platform().journal.events(),
      ElementsAre("topoview: ", "log: [_NS_UTIL::NBIHTTPPROXY::getTopoSubnetViewInfo] failed!"));
}

using SubmapStart = SubmapLock;

TEST_F(SubmapStart, OneThreadIsAskedForWithoutForce) {
  buffer().InitBuf();
  EXPECT_THAT(starts,
              ElementsAre(FieldsAre(2, 1, 0, std::numeric_limits<std::int32_t>::min(), -1, true)));
}

// ACE would start a thread by it all the same.
TEST_F(SubmapStart, IsNotTriedWithoutAManagerOfThreads) {
  withoutManager = true;
  buffer().InitBuf();
  EXPECT_THAT(starts, IsEmpty());
  EXPECT_EQ(traced(kFailed), 1);
}

TEST_F(SubmapStart, FailureIsTracedAndLeavesTheBuffersEmpty) {
  buffer().QuerySubnetAndNodesInfo();
  ASSERT_EQ(link(12), "Region/City");
  platform().trace.reset();
  buffer().InitBuf();
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaTrace", 0, "submapbufmgr", "unknown", Gt(0), kFailed)));
  EXPECT_EQ(link(12), "");
  EXPECT_EQ(subnetLink("S2"), "");
}

TEST_F(SubmapStart, BodyOfAStoppedTaskReturnsZeroWithoutARefresh) {
  EXPECT_EQ(buffer().Stop(), 0);
  EXPECT_EQ(buffer().svc(), 0);
  EXPECT_THAT(platform().rest.requests(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

}  // namespace
}  // namespace emf::test
