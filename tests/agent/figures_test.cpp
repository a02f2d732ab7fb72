#include "figures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "emfwatch.h"

namespace ormaagent {
namespace {

using namespace std::chrono_literals;
using testing::FieldsAre;

std::vector<std::string> namesOf(const Figures& figures) {
  std::vector<std::string> names;
  for (const OperationFigures& row : figures.operations()) names.emplace_back(row.name);
  return names;
}

TEST(Figures, CountCallsAndFailuresByOperation) {
  Figures figures;
  figures.countOperation("a", 2ms, false);
  figures.countOperation("b", 3ms, true);
  figures.countOperation("a", 5ms, true);
  const auto rows = figures.operations();
  ASSERT_EQ(namesOf(figures), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(rows[0].length.count(), 2u);
  EXPECT_EQ(rows[0].length.sum, 7ms);
  EXPECT_EQ(rows[0].failures, 1u);
  EXPECT_EQ(rows[1].failures, 1u);
}

TEST(Figures, EqualTextsAreOneOperation) {
  Figures figures;
  const std::string first = "name";
  const std::string second = "name";
  figures.countOperation(first.c_str(), 1ms, false);
  figures.countOperation(second.c_str(), 1ms, false);
  EXPECT_EQ(figures.operations().size(), 1u);
}

TEST(Figures, NamesBeyondTheTableAreNotCounted) {
  Figures figures;
  std::vector<std::string> names;
  for (std::size_t i = 0; i <= Figures::kMostNames; ++i) names.push_back(std::to_string(i));
  for (const std::string& name : names) figures.countOperation(name.c_str(), 1ms, false);
  EXPECT_EQ(figures.operations().size(), Figures::kMostNames);
}

TEST(Figures, ACacheShowsItsLastFilling) {
  Figures figures;
  const auto before = SteadyClock::now();
  figures.countCache("devices", 4);
  figures.countCache("devices", 7);
  const auto rows = figures.caches();
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_STREQ(rows[0].name, "devices");
  EXPECT_EQ(rows[0].entries, 7u);
  EXPECT_GE(rows[0].filled, before);
}

TEST(Figures, TheLastRefreshIsKeptAndWhetherOneEverSucceeded) {
  Figures figures;
  EXPECT_FALSE(figures.lastRefresh().has_value());
  figures.countOperation(kEmfSubnetRefresh, 2ms, true);
  EXPECT_FALSE(figures.lastRefresh()->everSucceeded);
  figures.countOperation(kEmfSubnetRefresh, 3ms, false);
  figures.countOperation(kEmfSubnetRefresh, 4ms, true);
  EXPECT_TRUE(figures.lastRefresh()->everSucceeded);
  EXPECT_EQ(figures.lastRefresh()->length, 4ms);
  EXPECT_EQ(figures.operations().at(0).length.count(), 3u);
}

TEST(Figures, ThreadsLoseNoCount) {
  Figures figures;
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&figures] {
      for (int n = 0; n < 1000; ++n) figures.countOperation(n % 2 == 0 ? "a" : "b", 1us, true);
    });
  }
  for (std::thread& thread : threads) thread.join();
  const auto rows = figures.operations();
  ASSERT_EQ(rows.size(), 2u);
  for (const OperationFigures& row : rows) {
    EXPECT_EQ(row.length.count(), 4000u);
    EXPECT_EQ(row.failures, 4000u);
  }
}

TEST(Figures, ThePluginTellsTheProcessesOwn) {
  emfOperationEnded("told by the plug-in", 1000, 1);
  EXPECT_THAT(namesOf(Figures::instance()), testing::Contains("told by the plug-in"));
}

}  // namespace
}  // namespace ormaagent
