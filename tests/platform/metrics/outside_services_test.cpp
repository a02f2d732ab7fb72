// The counts belong to the process and outlive each case, so the cases look at differences.
#include "orma/metrics/outside_services.h"

#include <gtest/gtest.h>

#include <thread>
#include <utility>
#include <vector>

namespace orma::metrics {
namespace {

class OutsideServices : public testing::TestWithParam<OutsideService> {
 protected:
  ServiceSnapshot now() const { return snapshotOf(GetParam()); }
  std::uint64_t counted(Outcome outcome) const {
    const auto i = static_cast<std::size_t>(outcome);
    return now().exchanges[i] - before_.exchanges[i];
  }
  std::uint64_t timed() const { return now().length.count() - before_.length.count(); }

 private:
  const ServiceSnapshot before_ = snapshotOf(GetParam());
};

INSTANTIATE_TEST_SUITE_P(All, OutsideServices, testing::ValuesIn(kOutsideServices),
                         [](const auto& row) { return std::string(nameOf(row.param)); });

TEST_P(OutsideServices, AnExchangeCountsAsWhatArrived) {
  for (const Outcome outcome : kOutcomes) {
    Exchange(GetParam()).arrived(outcome);
    EXPECT_EQ(counted(outcome), 1u) << nameOf(outcome);
    ASSERT_TRUE(now().last.has_value());
    EXPECT_EQ(now().last->outcome, outcome);
  }
  EXPECT_EQ(timed(), kOutcomes.size());
}

TEST_P(OutsideServices, WithoutAnArrivalItWasNotReached) {
  { const Exchange exchange(GetParam()); }
  EXPECT_EQ(counted(Outcome::kUnreached), 1u);
}

TEST_P(OutsideServices, WhatArrivedMayTurnOutToBeOfNoUse) {
  {
    Exchange exchange(GetParam());
    exchange.arrived(Outcome::kAnswered);
    exchange.arrived(Outcome::kRefused);
  }
  EXPECT_EQ(counted(Outcome::kAnswered), 0u);
  EXPECT_EQ(counted(Outcome::kRefused), 1u);
}

TEST_P(OutsideServices, OneIsUnderWayUntilSomethingArrives) {
  const auto before = Clock::now();
  Exchange exchange(GetParam());
  EXPECT_EQ(now().underWay, 1u);
  EXPECT_TRUE(now().everAsked());
  EXPECT_GE(now().lastAsked, before);
  exchange.arrived(Outcome::kAnswered);
  EXPECT_EQ(now().underWay, 0u);
  EXPECT_EQ(counted(Outcome::kAnswered), 0u) << "its use is not known yet";
}

TEST_P(OutsideServices, TheWaitingAloneIsTimed) {
  Clock::time_point arrival;
  {
    Exchange exchange(GetParam());
    exchange.arrived(Outcome::kAnswered);
    arrival = Clock::now();
    exchange.arrived(Outcome::kRefused);
  }
  EXPECT_LE(now().last->end, arrival);
}

TEST_P(OutsideServices, WhatWasCancelledDoesNotCount) {
  {
    Exchange exchange(GetParam());
    exchange.cancel();
    exchange.arrived(Outcome::kAnswered);
  }
  EXPECT_EQ(timed(), 0u);
  EXPECT_EQ(now().underWay, 0u);
}

TEST_P(OutsideServices, AMovedExchangeCountsOnce) {
  {
    Exchange exchange(GetParam());
    Exchange other(std::move(exchange));
    other.arrived(Outcome::kAnswered);
  }
  EXPECT_EQ(counted(Outcome::kAnswered), 1u);
  EXPECT_EQ(timed(), 1u);
  EXPECT_EQ(now().underWay, 0u);
}

TEST_P(OutsideServices, ThreadsLoseNoCount) {
  constexpr std::uint64_t kOfEach = 1000;
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([service = GetParam()] {
      for (std::uint64_t n = 0; n < kOfEach; ++n) Exchange(service).arrived(Outcome::kAnswered);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(counted(Outcome::kAnswered), 8 * kOfEach);
  EXPECT_EQ(timed(), 8 * kOfEach);
  EXPECT_EQ(now().underWay, 0u);
}

}  // namespace
}  // namespace orma::metrics
