// The cache's lock calls, and what comes of their failing.
#include <cerrno>
#include <stdexcept>

#include "device_cache_fixture.h"
#include "emfglobal.h"
#include "lock_failure.h"
#include "rwlock_calls.h"

namespace emf::test {
namespace {

using emf::doubles::FailingLocks;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DeviceCacheLock : public DeviceCacheTest {
 protected:
  DeviceCacheLock() {
    GetEmfLog();  // looking it up takes locks that are not the cache's
    clear();
  }
  ~DeviceCacheLock() override { clear(); }
  static void clear() {
    rwlockCalls() = RwlockCalls();
    errno = 0;
  }
};

TEST_F(DeviceCacheLock, LookupsHoldItSharedAndRefreshesExclusively) {
  network({deviceObject("NE=12", "core-1")});
  cache().getDeviceByID(12, found_);
  EXPECT_THAT(rwlockCalls().calls,
              ElementsAre("read", "unlock", "write", "unlock", "read", "unlock"));
  rwlockCalls().calls.clear();
  cache().getDeviceByName("nobody", named_);
  EXPECT_THAT(rwlockCalls().calls,
              ElementsAre("read", "unlock", "write", "unlock", "read", "unlock"));
  rwlockCalls().calls.clear();
  cache().getDeviceByID(12, found_);
  EXPECT_THAT(rwlockCalls().calls, ElementsAre("read", "unlock"));
}

TEST_F(DeviceCacheLock, LinesAreWrittenOutsideIt) {
  network({});
  const std::string line = "log: ";
  platform().journal.reset();
  cache().getDeviceByID(12, found_);
  EXPECT_THAT(platform().journal.events(),
              ElementsAre(line + kByIdEntering, "read", "unlock", line + kSetEntering, "devices",
                          "write", "unlock", line + kSetOuting, line + kByIdUpdating, "read",
                          "unlock", line + kByIdOuting));
}

TEST_F(DeviceCacheLock, IsNotHeldDuringTheRead) {
  std::vector<int> heldDuringReads;
  platform().rest.duringDeviceRead([&] { heldDuringReads.push_back(rwlockCalls().held); });
  network({});
  cache().setDeviceMap();
  cache().getDeviceByID(12, found_);
  cache().getDeviceByName("x", named_);
  EXPECT_THAT(heldDuringReads, ElementsAre(0, 0, 0));
  EXPECT_EQ(rwlockCalls().held, 0);
}

TEST_F(DeviceCacheLock, IsNotHeldWhenAnExceptionLeaves) {
  network({deviceObject("XYZ", "x")});
  EXPECT_THROW(cache().getDeviceByID(12, found_), std::invalid_argument);
  EXPECT_THROW(cache().getDeviceByName("x", named_), std::invalid_argument);
  EXPECT_THROW(cache().setDeviceMap(), std::invalid_argument);
  EXPECT_EQ(rwlockCalls().held, 0);
}

TEST_F(DeviceCacheLock, FailedReadLockLeavesItsCodeAndTheLookupGoesOn) {
  fill({deviceObject("NE=12", "core-1")});
  clear();
  rwlockCalls().readFails = EAGAIN;
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(errno, EAGAIN);
  EXPECT_EQ(found_, device(12, "core-1"));
  EXPECT_THAT(rwlockCalls().calls, ElementsAre("read"));  // what was not taken is not released
  errno = 0;
  EXPECT_EQ(cache().getDeviceByName("core-1", named_), 1);
  EXPECT_EQ(errno, EAGAIN);
  EXPECT_THAT(named_, ElementsAre(device(12, "core-1")));
}

TEST_F(DeviceCacheLock, FailedWriteLockLeavesItsCodeAndTheRefreshGoesOn) {
  network({deviceObject("NE=12", "core-1")});
  rwlockCalls().writeFails = EDEADLK;
  EXPECT_EQ(cache().setDeviceMap(), 1);
  EXPECT_EQ(errno, EDEADLK);
  EXPECT_THAT(rwlockCalls().calls, ElementsAre("write"));
  EXPECT_THAT(platform().log.texts(), ElementsAre(kSetEntering, kSetOuting));
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(platform().rest.deviceReads(), 1);
}

TEST_F(DeviceCacheLock, FailedUnlockLeavesItsCodeAndNothingElse) {
  fill({deviceObject("NE=12", "core-1")});
  clear();
  rwlockCalls().unlockFails = EPERM;
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(errno, EPERM);
  errno = 0;
  EXPECT_EQ(cache().setDeviceMap(), 1);
  EXPECT_EQ(errno, EPERM);
}

TEST_F(DeviceCacheLock, WithoutTheSingletonLockThereIsNoCache) {
  {
    FailingLocks failing;
    EXPECT_EQ(DeviceInfo::Instance(), nullptr);
    EXPECT_EQ(DeviceInfo::getInstance(), nullptr);
  }
  EXPECT_NE(DeviceInfo::Instance(), nullptr);
}

TEST_F(DeviceCacheLock, CacheThatExistsNeedsNoSingletonLock) {
  DeviceInfo* made = DeviceInfo::Instance();
  FailingLocks failing;
  EXPECT_EQ(DeviceInfo::Instance(), made);
}

TEST_F(DeviceCacheLock, WithoutTheSingletonLockDestroyDoesNothing) {
  fill({deviceObject("NE=12", "core-1")});
  {
    FailingLocks failing;
    DeviceInfo::Destroy();
  }
  EXPECT_EQ(cache().getDeviceByID(12, found_), 1);
  EXPECT_EQ(reads(), 0);
}

}  // namespace
}  // namespace emf::test
