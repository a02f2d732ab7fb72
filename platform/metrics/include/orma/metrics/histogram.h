// How long something took, as counts of fixed buckets.
//
//   orma::metrics::Histogram histogram;
//   histogram.record(std::chrono::milliseconds(12));
//   const auto now = histogram.snapshot();  // now.count() == 1
//
// Thread-safety: thread-safe, without a lock. Nothing is thrown. A snapshot taken while others
// record holds some of what they record.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace orma::metrics {

// The inclusive upper ends of the buckets; one more takes what is longer than all of them.
constexpr std::array<std::chrono::microseconds, 12> kBucketEnds = {
    std::chrono::microseconds(100),      std::chrono::microseconds(500),
    std::chrono::microseconds(1000),     std::chrono::microseconds(5000),
    std::chrono::microseconds(10000),    std::chrono::microseconds(50000),
    std::chrono::microseconds(100000),   std::chrono::microseconds(500000),
    std::chrono::microseconds(1000000),  std::chrono::microseconds(5000000),
    std::chrono::microseconds(10000000), std::chrono::microseconds(60000000)};

struct HistogramSnapshot {
  std::array<std::uint64_t, kBucketEnds.size() + 1> buckets{};  // each without those before it
  std::chrono::nanoseconds sum{0};

  std::uint64_t count() const {
    std::uint64_t total = 0;
    for (const std::uint64_t bucket : buckets) total += bucket;
    return total;
  }
};

class Histogram {
 public:
  void record(std::chrono::nanoseconds length) noexcept {
    std::size_t bucket = 0;
    while (bucket < kBucketEnds.size() && length > kBucketEnds[bucket]) ++bucket;
    buckets_[bucket].fetch_add(1, std::memory_order_relaxed);
    sum_.fetch_add(length.count(), std::memory_order_relaxed);
  }

  HistogramSnapshot snapshot() const noexcept {
    HistogramSnapshot now;
    for (std::size_t i = 0; i < now.buckets.size(); ++i) {
      now.buckets[i] = buckets_[i].load(std::memory_order_relaxed);
    }
    now.sum = std::chrono::nanoseconds(sum_.load(std::memory_order_relaxed));
    return now;
  }

 private:
  std::array<std::atomic<std::uint64_t>, kBucketEnds.size() + 1> buckets_{};
  std::atomic<std::chrono::nanoseconds::rep> sum_{0};
};

}  // namespace orma::metrics
