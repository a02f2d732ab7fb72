#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <type_traits>
#include <vector>

#include "emfmominterface.h"
#include "lock_failure.h"
#include "platform_test.h"
#include "transmitassistant.h"

namespace emf::test {
namespace {

using emf::doubles::FailingLocks;

static_assert(std::is_same_v<decltype(EMFMOMgrI::setUserLabel), int()>);
static_assert(std::is_same_v<decltype(EMFMOMgrI::setOwner), int()>);
static_assert(std::is_same_v<decltype(EMFMOMgrI::insertRecord), int()>);
static_assert(std::is_same_v<decltype(EMFMOMgrI::deleteRecord), int()>);

TEST(UpdateInterface, EveryOperationSucceedsHoweverOften) {
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(EMFMOMgrI::setUserLabel(), 0);
    EXPECT_EQ(EMFMOMgrI::setOwner(), 0);
    EXPECT_EQ(EMFMOMgrI::insertRecord(), 0);
    EXPECT_EQ(EMFMOMgrI::deleteRecord(), 0);
  }
}

using UpdateInterfaceOnThePlatform = emf::doubles::PlatformTest;

TEST_F(UpdateInterfaceOnThePlatform, NothingIsAskedAndNothingWritten) {
  EMFMOMgrI::setUserLabel();
  EMFMOMgrI::setOwner();
  EMFMOMgrI::insertRecord();
  EMFMOMgrI::deleteRecord();
  EXPECT_THAT(emf::doubles::platform().journal.events(), ::testing::IsEmpty());
  EXPECT_THAT(emf::doubles::platform().bundles.questions(), ::testing::IsEmpty());
}

class Assistant : public ::testing::Test {
 protected:
  ~Assistant() override { TransmitAssistant::Destroy(); }
};

TEST_F(Assistant, IsOneUntilItIsDestroyed) {
  TransmitAssistant* const made = TransmitAssistant::Instance();
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(TransmitAssistant::Instance(), made);
  EXPECT_EQ(TransmitAssistant::getInstance(), made);
  TransmitAssistant::Destroy();
  TransmitAssistant::Destroy();  // nothing is left to delete
  EXPECT_NE(TransmitAssistant::getInstance(), nullptr);
}

TEST_F(Assistant, FirstUseByManyThreadsMakesOne) {
  constexpr int kThreads = 8;
  std::vector<TransmitAssistant*> seen(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&seen, i] { seen[i] = TransmitAssistant::Instance(); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(seen, ::testing::Each(TransmitAssistant::Instance()));
}

TEST_F(Assistant, WithoutTheProcessLockThereIsNone) {
  {
    FailingLocks failing;
    EXPECT_EQ(TransmitAssistant::Instance(), nullptr);
    EXPECT_EQ(TransmitAssistant::getInstance(), nullptr);
  }
  TransmitAssistant* const made = TransmitAssistant::Instance();
  ASSERT_NE(made, nullptr);
  FailingLocks failing;
  EXPECT_EQ(TransmitAssistant::Instance(), made);
  TransmitAssistant::Destroy();
  EXPECT_EQ(TransmitAssistant::Instance(), made);
}

}  // namespace
}  // namespace emf::test
