// Lock calls that fail: the work goes on without the lock, and only the unlock is left out.
#include <ace/OS_NS_Thread.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>

#include "emftopointerface.h"
#include "lock_failure.h"
#include "task_fixture.h"

namespace {

std::atomic<bool> refusing{false};
std::atomic<int> unlocks{0};

int refuse() { return EINVAL; }

}  // namespace

extern "C" {
int __real_pthread_rwlock_rdlock(pthread_rwlock_t* lock);
int __real_pthread_rwlock_wrlock(pthread_rwlock_t* lock);
int __real_pthread_rwlock_unlock(pthread_rwlock_t* lock);

int __wrap_pthread_rwlock_rdlock(pthread_rwlock_t* lock) {
  return refusing ? refuse() : __real_pthread_rwlock_rdlock(lock);
}
int __wrap_pthread_rwlock_wrlock(pthread_rwlock_t* lock) {
  return refusing ? refuse() : __real_pthread_rwlock_wrlock(lock);
}
int __wrap_pthread_rwlock_unlock(pthread_rwlock_t* lock) {
  ++unlocks;
  return __real_pthread_rwlock_unlock(lock);
}
}

namespace emf::test {
namespace {

using emf::doubles::FailingLocks;

class SubmapLockFailure : public TaskTest {
 protected:
  SubmapLockFailure() {
    refusing = true;
    unlocks = 0;
  }
  ~SubmapLockFailure() override { refusing = false; }
};

TEST_F(SubmapLockFailure, RefreshAndLookupGoOnWithoutTheLock) {
  buffer().QuerySubnetAndNodesInfo();
  errno = 0;
  EXPECT_EQ(link(12), "Region/City");
  EXPECT_EQ(errno, EINVAL);
  EXPECT_EQ(unlocks, 0);
  refusing = false;
  EXPECT_EQ(link(12), "Region/City");
  EXPECT_EQ(unlocks, 1);
}

TEST_F(SubmapLockFailure, StartGoesOnWithoutTheLock) {
  buffer().InitBuf();
  sleepGate().awaitSleeps(1);
  EXPECT_EQ(traced(kActivated), 1);
  EXPECT_EQ(link(12), "Region/City");
  EXPECT_EQ(unlocks, 0);
}

TEST_F(SubmapLockFailure, ClearingGoesOnWithoutTheLock) {
  buffer().QuerySubnetAndNodesInfo();
  errno = 0;
  buffer().ClearBuf();
  EXPECT_EQ(errno, EINVAL);
  EXPECT_EQ(link(12), "");
  EXPECT_EQ(unlocks, 0);
}

TEST_F(SubmapLockFailure, WithoutTheProcessLockThereIsNoObject) {
  SubmapBufMgr::Destroy();
  {
    FailingLocks failing;
    EXPECT_EQ(SubmapBufMgr::Instance(), nullptr);
    std::string name = "left over";
    EMFTopoI::getSubmapName(name, 12);
    EXPECT_EQ(name, "");
    std::list<Node> nodes;
    EXPECT_EQ(EMFTopoI::getAllNodes("", nodes), 0);
    EXPECT_TRUE(nodes.empty());
  }
  SubmapBufMgr* const made = SubmapBufMgr::Instance();
  ASSERT_NE(made, nullptr);
  FailingLocks failing;
  SubmapBufMgr::Destroy();
  EXPECT_EQ(SubmapBufMgr::Instance(), made);
}

}  // namespace
}  // namespace emf::test
