// How the thread is started, and what comes of a start that fails. ACE's start is the linker's
// here.
#include <pthread.h>

#include <cstddef>
#include <limits>

#include "task_fixture.h"

namespace {

struct Start {
  long flags;
  int threads;
  int force;
  long priority;
  int group;
  bool restIsNull;
  int locksHeld;
};

std::vector<Start> starts;
int locksHeld = 0;

}  // namespace

extern "C" {
int __real_pthread_rwlock_rdlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_rdlock(pthread_rwlock_t* lock) {
  ++locksHeld;
  return __real_pthread_rwlock_rdlock(lock);
}
int __real_pthread_rwlock_wrlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_wrlock(pthread_rwlock_t* lock) {
  ++locksHeld;
  return __real_pthread_rwlock_wrlock(lock);
}
int __real_pthread_rwlock_unlock(pthread_rwlock_t* lock);
int __wrap_pthread_rwlock_unlock(pthread_rwlock_t* lock) {
  --locksHeld;
  return __real_pthread_rwlock_unlock(lock);
}

int __wrap__ZN13ACE_Task_Base8activateEliiliPS_PmPPvS1_S1_PPKc(
    ACE_Task_Base*, long flags, int threads, int force, long priority, int group,
    ACE_Task_Base* task, unsigned long* handles, void** stacks, unsigned long* stackSizes,
    unsigned long* ids, const char** names) {
  const bool restIsNull = task == nullptr && handles == nullptr && stacks == nullptr &&
                          stackSizes == nullptr && ids == nullptr && names == nullptr;
  starts.push_back({flags, threads, force, priority, group, restIsNull, locksHeld});
  return -1;
}
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;

class SubmapStart : public TaskTest {
 protected:
  SubmapStart() {
    starts.clear();
    locksHeld = 0;
  }
};

TEST_F(SubmapStart, OneThreadIsAskedForWithoutForceUnderTheWriteLock) {
  buffer().InitBuf();
  EXPECT_THAT(starts, ElementsAre(FieldsAre(2, 1, 0, std::numeric_limits<std::int32_t>::min(), -1,
                                            true, 1)));
  EXPECT_EQ(locksHeld, 0);
}

TEST_F(SubmapStart, FailedStartIsTracedAndLeavesTheBuffersEmpty) {
  buffer().QuerySubnetAndNodesInfo();
  ASSERT_EQ(link(12), "Region/City");
  platform().trace.reset();
  buffer().InitBuf();
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaTrace", 0, "submapbufmgr", "unknown", Gt(0),
                                    "[SubmapBufMgr::InitBuf] Failed to activate "
                                    "SubmapBufMgr::svc,errCode is -1")));
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
