#include "orma/metrics/histogram.h"

#include <gtest/gtest.h>

namespace orma::metrics {
namespace {

using namespace std::chrono_literals;

// The bucket that a length falls into.
std::size_t bucketOf(std::chrono::nanoseconds length) {
  Histogram histogram;
  histogram.record(length);
  const HistogramSnapshot now = histogram.snapshot();
  EXPECT_EQ(now.count(), 1u);
  std::size_t bucket = 0;
  while (now.buckets[bucket] == 0) ++bucket;
  return bucket;
}

TEST(Histogram, BucketsHoldTheirUpperEnds) {
  for (std::size_t i = 0; i < kBucketEnds.size(); ++i) {
    EXPECT_EQ(bucketOf(kBucketEnds[i]), i);
    EXPECT_EQ(bucketOf(kBucketEnds[i] + 1ns), i + 1);
  }
  EXPECT_EQ(bucketOf(0ns), 0u);
  EXPECT_EQ(bucketOf(24h), kBucketEnds.size());
}

TEST(Histogram, BucketsAscend) {
  for (std::size_t i = 1; i < kBucketEnds.size(); ++i)
    EXPECT_LT(kBucketEnds[i - 1], kBucketEnds[i]);
}

TEST(Histogram, AddsUpTheLengths) {
  Histogram histogram;
  histogram.record(2ms);
  histogram.record(40s);
  EXPECT_EQ(histogram.snapshot().sum, 40s + 2ms);
  EXPECT_EQ(histogram.snapshot().count(), 2u);
}

TEST(Histogram, IsEmptyAtFirst) {
  EXPECT_EQ(Histogram().snapshot().count(), 0u);
  EXPECT_EQ(Histogram().snapshot().sum, 0ns);
}

}  // namespace
}  // namespace orma::metrics
