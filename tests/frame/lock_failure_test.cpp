// Locks that cannot be had, and what another thread does before one is.
#include "lock_failure.h"

#include "emfglobal.h"
#include "fake_service.h"
#include "service_fixture.h"
#include "serviceifref.h"
#include "stdout_capture.h"

namespace emf::test {
namespace {

using emf::doubles::beforeNextLock;
using emf::doubles::FailingLocks;
using emf::doubles::platform;
using emf::doubles::StdoutCapture;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::IsEmpty;

using Reference = ServiceIFRef<NS_LOG_SERVICE1::LogSvcInterface>;

class LockFailure : public ServiceTest {};

TEST_F(LockFailure, ErrorTableIsNotMade) {
  {
    FailingLocks failing;
    EXPECT_EQ(CAEmfMcdbErrorCodeMgr::Instance(), nullptr);
  }
  EXPECT_NE(CAEmfMcdbErrorCodeMgr::Instance(), nullptr);
}

TEST_F(LockFailure, ErrorTableThatExistsNeedsNoLock) {
  CAEmfMcdbErrorCodeMgr* made = CAEmfMcdbErrorCodeMgr::Instance();
  bool locked = false;
  beforeNextLock([&] { locked = true; });
  EXPECT_EQ(CAEmfMcdbErrorCodeMgr::Instance(), made);
  beforeNextLock(nullptr);
  EXPECT_FALSE(locked);
}

TEST_F(LockFailure, ErrorTableIsNotDestroyed) {
  write("a.res", "5=five\n");
  table().Init();
  {
    FailingLocks failing;
    CAEmfMcdbErrorCodeMgr::Destroy();
  }
  EXPECT_EQ(textOf(5), "five");
}

TEST_F(LockFailure, ErrorTableMadeByAnotherBeforeTheLockIsUsed) {
  CAEmfMcdbErrorCodeMgr* made = nullptr;
  beforeNextLock([&] { made = CAEmfMcdbErrorCodeMgr::Instance(); });
  EXPECT_EQ(CAEmfMcdbErrorCodeMgr::Instance(), made);
  EXPECT_NE(made, nullptr);
}

TEST_F(LockFailure, TextsAreUnknownWithoutATable) {
  FailingLocks failing;
  std::string text = "left over";
  ErrorCodeBufIfImpl().GetErrorInfo(text, 5);
  EXPECT_EQ(text, "unknown");
}

TEST_F(LockFailure, InitWithoutATableIsRefused) {
  const Service service = load();
  FailingLocks failing;
  EXPECT_EQ(service->init(0, nullptr), -1);
  EXPECT_THAT(
      platform().proxies.lines(),
      ElementsAre(FieldsAre("ii_base_bundleii_base_log", _, _, "ormaemfsvc", _, 1,
                            "in [ii_ormaiac_emf::init] CAEmfMcdbErrorCodeMgr init failed!")));
}

TEST_F(LockFailure, InitWithoutATaskGoesOn) {
  platform().config.item("IsReportSubnet", 1);
  const Service service = load();
  FailingLocks failing(1);  // the table's lock is granted, the task's is not
  EXPECT_EQ(service->init(0, nullptr), 0);
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(LockFailure, ExitThatCannotReachTheTaskFails) {
  const Service service = load();
  int result = 0;
  {
    FailingLocks failing;
    StdoutCapture output;
    result = service->ExitSvc();
  }
  EXPECT_EQ(result, -1);
}

TEST_F(LockFailure, InterfaceReferenceGivesNullAndDoesNotThrow) {
  FakeLogService offered;
  FakeService fake(&offered);
  platform().log.absent();
  platform().bundles.add("one", "a", &fake);
  Reference reference;
  {
    FailingLocks failing;
    EXPECT_EQ(reference.Get(nullptr), nullptr);
    EXPECT_THAT(platform().bundles.questions(), ElementsAre("GetBundles"));
    EXPECT_TRUE(reference.buffer->empty());
  }
  EXPECT_EQ(reference.Get(nullptr), &offered);
}

TEST_F(LockFailure, FilledSlotNeedsNoLock) {
  Reference reference;
  FailingLocks failing;
  EXPECT_EQ(reference.Get(nullptr), platform().log.service());
}

// There is no placeholder yet.
class Placeholder : public LockFailure {
 protected:
  Placeholder() { NS_BUNDLEMGR1::_g_nullServiceInterface = nullptr; }
  ~Placeholder() override {
    delete NS_BUNDLEMGR1::_g_nullServiceInterface;
    NS_BUNDLEMGR1::_g_nullServiceInterface = before_;
  }

 private:
  NS_BUNDLEMGR1::ServiceInterface* const before_ = NS_BUNDLEMGR1::_g_nullServiceInterface;
};

TEST_F(Placeholder, IsMadeWithoutTheLockAllTheSame) {
  FailingLocks failing;
  Reference reference;
  ASSERT_NE(*reference.nullInterface, nullptr);
  EXPECT_EQ((*reference.nullInterface)->GetIFName(), "NULLServiceInterface!");
}

TEST_F(Placeholder, MadeByAnotherBeforeTheLockIsUsed) {
  NS_BUNDLEMGR1::ServiceInterface* made = nullptr;
  beforeNextLock([&] { made = *Reference().nullInterface; });
  const Reference reference;
  EXPECT_EQ(*reference.nullInterface, made);
  EXPECT_NE(made, nullptr);
}

TEST_F(Placeholder, ThatExistsNeedsNoLock) {
  const Reference first;
  bool locked = false;
  beforeNextLock([&] { locked = true; });
  const Reference second;
  beforeNextLock(nullptr);
  EXPECT_FALSE(locked);
}

TEST_F(LockFailure, LogObjectIsLookedUpAgainLater) {
  platform().log.absent();
  {
    FailingLocks failing;
    EXPECT_EQ(GetDomainLog(), nullptr);
  }
  platform().log.present();
  EXPECT_NE(GetDomainLog(), nullptr);
}

}  // namespace
}  // namespace emf::test
