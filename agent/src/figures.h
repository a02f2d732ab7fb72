// What the plug-in tells of its work (emfwatch.h), for the metrics endpoint: the operations by
// name, the caches, and the last refresh of the subnet names.
//
//   for (const OperationFigures& row : Figures::instance().operations()) print(row.name);
//
// Thread-safety: thread-safe; counting takes no lock. Nothing is thrown by counting; names beyond
// the first kMostNames of a kind are not counted.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

#include "orma/metrics/histogram.h"

namespace ormaagent {

using SteadyClock = std::chrono::steady_clock;

struct OperationFigures {
  const char* name;
  std::uint64_t failures;
  orma::metrics::HistogramSnapshot length;  // its count is that of the calls
};

struct CacheFigures {
  const char* name;
  std::uint64_t entries;
  SteadyClock::time_point filled;
};

struct RefreshFigures {
  SteadyClock::time_point end;
  std::chrono::nanoseconds length;
  bool everSucceeded;
};

class Figures {
 public:
  static constexpr std::size_t kMostNames = 128;

  // The process's own; it lives until the process ends.
  static Figures& instance();

  void countOperation(const char* name, std::chrono::nanoseconds length, bool failed) noexcept;
  void countCache(const char* name, std::size_t entries) noexcept;

  // In the order in which the names came first.
  std::vector<OperationFigures> operations() const;
  std::vector<CacheFigures> caches() const;
  // The last refresh of the subnet names that came to its end.
  std::optional<RefreshFigures> lastRefresh() const;

 private:
  struct Operation {
    std::atomic<const char*> name{nullptr};
    std::atomic<std::uint64_t> failures{0};
    orma::metrics::Histogram length;
  };
  struct Cache {
    std::atomic<const char*> name{nullptr};
    std::atomic<std::uint64_t> entries{0};
    std::atomic<SteadyClock::rep> filled{0};
  };

  void countRefresh(std::chrono::nanoseconds length, bool failed) noexcept;

  std::array<Operation, kMostNames> operations_;
  std::array<Cache, kMostNames> caches_;
  mutable std::mutex mutex_;
  std::optional<RefreshFigures> lastRefresh_;  // guarded by mutex_
};

}  // namespace ormaagent
