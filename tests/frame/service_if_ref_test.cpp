#include "serviceifref.h"

#include <thread>

#include "fake_service.h"
#include "platform_test.h"

namespace {

using emf::doubles::platform;
using emf::test::FakeLogService;
using emf::test::FakeService;
using emf::test::OtherInterface;
using NS_LOG_SERVICE1::LogSvcInterface;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Reference = ServiceIFRef<LogSvcInterface>;

NS_BUNDLEMGR1::InterfaceSlot& slot() { return *NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface"); }

std::vector<NS_BUNDLEMGR1::ServiceInterface*> filed() { return slot().snapshot(); }

// Whether nobody holds the shared mutex.
bool mutexIsFree() {
  if (NS_BUNDLEMGR1::_g_actualmutex.tryacquire() == -1) return false;
  NS_BUNDLEMGR1::_g_actualmutex.release();
  return true;
}

// No log service is filed; services offer some.
class ServiceIFRefTest : public emf::doubles::PlatformTest {
 protected:
  ServiceIFRefTest() { platform().log.absent(); }

  FakeLogService first_;
  FakeLogService second_;
  FakeLogService third_;
  OtherInterface other_;
  FakeService firstService_{&first_};
  FakeService secondService_{&second_};
  FakeService thirdService_{&third_};
  FakeService otherService_{&other_};
  FakeService bareService_{nullptr};
};

TEST_F(ServiceIFRefTest, StartsAtTheSharedSlotAndSearchesEverywhere) {
  Reference reference;
  EXPECT_EQ(reference.buffer, &slot());
  EXPECT_EQ(reference.mutex, &NS_BUNDLEMGR1::_g_actualmutex);
  EXPECT_EQ(reference.bundleName, "");
  EXPECT_EQ(reference.serviceName, "");
  EXPECT_EQ(reference.nullInterface, &NS_BUNDLEMGR1::_g_nullServiceInterface);
}

TEST_F(ServiceIFRefTest, ConstructionMakesThePlaceholderOnce) {
  Reference reference;
  NS_BUNDLEMGR1::ServiceInterface* placeholder = *reference.nullInterface;
  ASSERT_NE(placeholder, nullptr);
  EXPECT_NE(dynamic_cast<NS_BUNDLEMGR1::NULLServiceInterface*>(placeholder), nullptr);
  EXPECT_NE(dynamic_cast<NS_BUNDLEMGR1::FinalClass*>(placeholder), nullptr);
  EXPECT_EQ(placeholder->GetIFName(), "NULLServiceInterface!");
  EXPECT_EQ(placeholder->IsValid(), 0);
  Reference another;
  EXPECT_EQ(*another.nullInterface, placeholder);
  EXPECT_TRUE(mutexIsFree());
}

TEST_F(ServiceIFRefTest, FilledSlotAnswersWithoutASearch) {
  slot().push_back(&first_);
  slot().push_back(&second_);
  EXPECT_EQ(Reference().Get(nullptr), &first_);
  EXPECT_THAT(platform().bundles.questions(), IsEmpty());
}

TEST_F(ServiceIFRefTest, FilledSlotIsCopiedWholeIntoAll) {
  slot().push_back(&first_);
  slot().push_back(&second_);
  std::vector<LogSvcInterface*> all = {&third_};
  EXPECT_EQ(Reference().Get(&all), &first_);
  EXPECT_THAT(all, ElementsAre(&first_, &second_));
}

TEST_F(ServiceIFRefTest, OnlyMatchIsFiledAfterTheWholeWalk) {
  platform().bundles.add("one", "a", &bareService_);
  platform().bundles.add("one", "b", &firstService_);
  platform().bundles.add("two", "a", &otherService_);
  platform().bundles.add("three", "a", nullptr);
  std::vector<LogSvcInterface*> all;
  EXPECT_EQ(Reference().Get(&all), &first_);
  EXPECT_THAT(all, ElementsAre(&first_));
  EXPECT_THAT(filed(), ElementsAre(&first_));
  EXPECT_THAT(platform().bundles.questions(),
              ElementsAre("GetBundles", "GetServices one", "GetServices two", "GetServices three"));
  EXPECT_TRUE(mutexIsFree());
}

TEST_F(ServiceIFRefTest, AfterTheFirstSuccessTheSlotAnswers) {
  platform().bundles.add("one", "a", &firstService_);
  Reference().Get(nullptr);
  const auto questions = platform().bundles.questions();
  EXPECT_EQ(Reference().Get(nullptr), &first_);
  EXPECT_EQ(platform().bundles.questions(), questions);
}

TEST_F(ServiceIFRefTest, SecondMatchStopsTheWalkAndIsReturnedWhileTheFirstStaysFiled) {
  platform().bundles.add("one", "b", &secondService_);
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.add("two", "a", &thirdService_);
  Reference reference;
  std::vector<LogSvcInterface*> all = {&third_};
  EXPECT_EQ(reference.Get(&all), &second_);  // services are walked in key order
  EXPECT_THAT(all, ElementsAre(&third_));    // the slot was not copied on this way out
  EXPECT_THAT(filed(), ElementsAre(&first_));
  EXPECT_THAT(platform().bundles.questions(), ElementsAre("GetBundles", "GetServices one"));
  EXPECT_TRUE(mutexIsFree());
  EXPECT_EQ(reference.Get(nullptr), &first_);
}

TEST_F(ServiceIFRefTest, SecondMatchMayLieInALaterBundle) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.add("two", "a", &secondService_);
  platform().bundles.add("three", "a", &thirdService_);
  EXPECT_EQ(Reference().Get(nullptr), &second_);
  EXPECT_THAT(filed(), ElementsAre(&first_));
  EXPECT_THAT(platform().bundles.questions(),
              ElementsAre("GetBundles", "GetServices one", "GetServices two"));
}

TEST_F(ServiceIFRefTest, WithoutASlotTheFirstMatchIsReturnedAndNothingIsFiled) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.add("one", "b", &secondService_);
  Reference reference;
  reference.buffer = nullptr;
  std::vector<LogSvcInterface*> all;
  EXPECT_EQ(reference.Get(&all), &first_);
  EXPECT_THAT(all, IsEmpty());
  EXPECT_THAT(filed(), IsEmpty());
}

TEST_F(ServiceIFRefTest, WithoutASlotAndAMatchItThrows) {
  Reference reference;
  reference.buffer = nullptr;
  EXPECT_THROW(reference.Get(nullptr), InterfaceNotExistException);
}

TEST_F(ServiceIFRefTest, BundleNameLimitsTheSearch) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.add("two", "a", &secondService_);
  Reference reference;
  reference.bundleName = "two";
  EXPECT_EQ(reference.Get(nullptr), &second_);
  EXPECT_THAT(filed(), ElementsAre(&second_));
  EXPECT_THAT(platform().bundles.questions(), ElementsAre("FindBundle two", "GetServices two"));
}

TEST_F(ServiceIFRefTest, UnknownBundleHoldsNothing) {
  platform().bundles.add("one", "a", &firstService_);
  Reference reference;
  reference.bundleName = "two";
  EXPECT_THROW(reference.Get(nullptr), InterfaceNotExistException);
  EXPECT_THAT(platform().bundles.questions(), ElementsAre("FindBundle two"));
  EXPECT_THAT(filed(), IsEmpty());
}

TEST_F(ServiceIFRefTest, ServiceNameLimitsTheSearchInEveryBundle) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.add("one", "b", &secondService_);
  platform().bundles.add("two", "c", &thirdService_);
  Reference reference;
  reference.serviceName = "b";
  EXPECT_EQ(reference.Get(nullptr), &second_);
  EXPECT_THAT(filed(), ElementsAre(&second_));
}

TEST_F(ServiceIFRefTest, SecondServiceOfThatNameStopsTheWalk) {
  platform().bundles.add("one", "b", &firstService_);
  platform().bundles.add("two", "b", &secondService_);
  Reference reference;
  reference.serviceName = "b";
  EXPECT_EQ(reference.Get(nullptr), &second_);
  EXPECT_THAT(filed(), ElementsAre(&first_));
}

TEST_F(ServiceIFRefTest, AbsentServiceOrWrongInterfaceIsNoMatch) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.add("two", "b", &otherService_);
  platform().bundles.add("three", "b", nullptr);
  platform().bundles.add("four", "b", &bareService_);
  Reference reference;
  reference.serviceName = "b";
  EXPECT_THROW(reference.Get(nullptr), InterfaceNotExistException);
  EXPECT_THAT(filed(), IsEmpty());
}

TEST_F(ServiceIFRefTest, NothingFoundThrowsWithTheCodeAlone) {
  platform().bundles.add("one", "a", &otherService_);
  try {
    Reference().Get(nullptr);
    FAIL() << "nothing was thrown";
  } catch (ProcessException& failure) {
    EXPECT_NE(dynamic_cast<InterfaceNotExistException*>(&failure), nullptr);
    EXPECT_EQ(failure.errCode, 0x41180004);
    EXPECT_EQ(failure.line, 0);
    for (auto* stream : {&failure.file, &failure.function, &failure.reserved, &failure.detail}) {
      EXPECT_EQ(stream->str(), "");
    }
  }
  EXPECT_TRUE(mutexIsFree());
}

TEST_F(ServiceIFRefTest, BundlesAreCollectedOutsideTheLockAndWalkedInside) {
  platform().bundles.add("one", "a", &firstService_);
  std::vector<std::string> seen;
  platform().bundles.onQuestion([&](const std::string& question) {
    seen.push_back(question + (mutexIsFree() ? " free" : " held"));
  });
  Reference().Get(nullptr);
  EXPECT_THAT(seen, ElementsAre("GetBundles free", "GetServices one held"));
}

TEST_F(ServiceIFRefTest, SlotFilledByAnotherBeforeTheLockIsUsed) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.onQuestion([&](const std::string&) { slot().push_back(&second_); });
  std::vector<LogSvcInterface*> all;
  EXPECT_EQ(Reference().Get(&all), &second_);
  EXPECT_THAT(all, ElementsAre(&second_));
  EXPECT_THAT(platform().bundles.questions(), ElementsAre("GetBundles"));
  EXPECT_TRUE(mutexIsFree());
}

TEST_F(ServiceIFRefTest, SlotFilledByAnotherDuringTheWalkEndsItAtTheNextMatch) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.onQuestion([&](const std::string& question) {
    if (question != "GetBundles") slot().push_back(&second_);
  });
  EXPECT_EQ(Reference().Get(nullptr), &first_);
  EXPECT_THAT(filed(), ElementsAre(&second_));
}

TEST_F(ServiceIFRefTest, SlotFilledByAnotherDuringAWalkWithoutMatchAnswersAfterIt) {
  platform().bundles.add("one", "a", &otherService_);
  platform().bundles.onQuestion([&](const std::string& question) {
    if (question != "GetBundles") slot().push_back(&second_);
  });
  EXPECT_EQ(Reference().Get(nullptr), &second_);
}

TEST_F(ServiceIFRefTest, ExceptionOfTheWalkLeavesTheMutexFree) {
  platform().bundles.add("one", "a", &firstService_);
  platform().bundles.onQuestion([](const std::string& question) {
    if (question != "GetBundles") throw std::runtime_error("bundle gone");
  });
  EXPECT_THROW(Reference().Get(nullptr), std::runtime_error);
  EXPECT_TRUE(mutexIsFree());
}

TEST_F(ServiceIFRefTest, EightThreadsFileTheInterfaceOnce) {
  platform().bundles.add("one", "a", &firstService_);
  constexpr int kThreads = 8;
  std::vector<LogSvcInterface*> found(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&found, i] { found[i] = Reference().Get(nullptr); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(found, ::testing::Each(&first_));
  EXPECT_THAT(filed(), ElementsAre(&first_));
}

}  // namespace
