#include "exposition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "figures.h"
#include "orma/metrics/outside_services.h"

namespace ormaagent {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

TEST(ExpositionWriter, WritesAFamilyWithItsSamples) {
  ExpositionWriter out;
  out.family("calls_total", "counter", "Calls.");
  out.sample({{"operation", "a"}, {"kind", "b"}}, std::uint64_t{12});
  out.family("age_seconds", "gauge", "Age.");
  out.sample({}, 0.25);
  EXPECT_EQ(out.text(),
            "# HELP calls_total Calls.\n"
            "# TYPE calls_total counter\n"
            "calls_total{operation=\"a\",kind=\"b\"} 12\n"
            "# HELP age_seconds Age.\n"
            "# TYPE age_seconds gauge\n"
            "age_seconds 0.25\n");
}

TEST(ExpositionWriter, EscapesLabels) {
  ExpositionWriter out;
  out.family("f", "gauge", "F.");
  out.sample({{"l", "a\\b\"c\nd"}}, std::uint64_t{1});
  EXPECT_THAT(out.text(), HasSubstr(R"(f{l="a\\b\"c\nd"} 1)"));
}

TEST(ExpositionWriter, BucketsAddUpToTheCount) {
  orma::metrics::Histogram histogram;
  histogram.record(100us);
  histogram.record(2ms);
  histogram.record(90s);
  ExpositionWriter out;
  out.family("d", "histogram", "D.");
  out.samples({{"s", "x"}}, histogram.snapshot());
  EXPECT_EQ(out.text(),
            "# HELP d D.\n"
            "# TYPE d histogram\n"
            "d_bucket{s=\"x\",le=\"0.0001\"} 1\n"
            "d_bucket{s=\"x\",le=\"0.0005\"} 1\n"
            "d_bucket{s=\"x\",le=\"0.001\"} 1\n"
            "d_bucket{s=\"x\",le=\"0.005\"} 2\n"
            "d_bucket{s=\"x\",le=\"0.01\"} 2\n"
            "d_bucket{s=\"x\",le=\"0.05\"} 2\n"
            "d_bucket{s=\"x\",le=\"0.1\"} 2\n"
            "d_bucket{s=\"x\",le=\"0.5\"} 2\n"
            "d_bucket{s=\"x\",le=\"1\"} 2\n"
            "d_bucket{s=\"x\",le=\"5\"} 2\n"
            "d_bucket{s=\"x\",le=\"10\"} 2\n"
            "d_bucket{s=\"x\",le=\"60\"} 2\n"
            "d_bucket{s=\"x\",le=\"+Inf\"} 3\n"
            "d_sum{s=\"x\"} 90.0021\n"
            "d_count{s=\"x\"} 3\n");
}

// Every family has HELP and TYPE once and at least one sample, and every line is well formed.
TEST(Exposition, IsTextOfTheFormatsVersion) {
  Figures::instance().countOperation("op", 1ms, true);
  Figures::instance().countCache("devices", 3);
  orma::metrics::Exchange(orma::metrics::OutsideService::kRest)
      .arrived(orma::metrics::Outcome::kAnswered);
  const std::regex comment(R"(# (HELP|TYPE) ([a-z_]+) .+)");
  const std::regex sample(
      R"(([a-z_]+?)(_bucket|_sum|_count)?(\{[a-z]+="[^"\n]*"(,[a-z]+="[^"\n]*")*\})? )"
      R"([0-9+.einf-]+)");
  std::set<std::string> families;
  std::istringstream text(exposition());
  std::string family;
  bool sampled = true;
  for (std::string line; std::getline(text, line);) {
    std::smatch parts;
    if (std::regex_match(line, parts, comment) && parts[1] == "HELP") {
      EXPECT_TRUE(sampled) << family;
      family = parts[2];
      EXPECT_TRUE(families.insert(family).second) << family;
      sampled = false;
    } else if (line.front() == '#') {
      EXPECT_EQ(parts[2], family);
    } else {
      ASSERT_TRUE(std::regex_match(line, parts, sample)) << line;
      EXPECT_EQ(line.rfind(family, 0), 0u) << line;
      sampled = true;
    }
  }
  EXPECT_TRUE(sampled) << family;
  EXPECT_THAT(
      families,
      testing::IsSupersetOf(
          {"ormaagent_build_info", "ormaagent_operation_calls_total",
           "ormaagent_operation_failures_total", "ormaagent_operation_duration_seconds",
           "ormaagent_outside_exchanges_total", "ormaagent_outside_exchange_duration_seconds",
           "ormaagent_cache_entries", "ormaagent_cache_age_seconds"}));
}

TEST(Exposition, AServiceThatNobodyAskedIsLeftOut) {
  EXPECT_THAT(exposition(), Not(HasSubstr("fault_server")));
}

}  // namespace
}  // namespace ormaagent
