// How the counts of an outside service change, for the tests of the modules that report to them.
//
//   const ExchangeCounts counts(orma::metrics::OutsideService::kRest);
//   EXPECT_EQ(counts.since(), "1 answered, 0 refused, 0 unreached");
//
// Thread-safety: thread-compatible.
#pragma once

#include <string>

#include "orma/metrics/outside_services.h"

class ExchangeCounts {
 public:
  explicit ExchangeCounts(orma::metrics::OutsideService service)
      : service_(service), before_(orma::metrics::snapshotOf(service)) {}

  // What came to an end since this was made, and what is still under way, if anything.
  std::string since() const {
    const auto now = orma::metrics::snapshotOf(service_);
    std::string text;
    for (const orma::metrics::Outcome outcome : orma::metrics::kOutcomes) {
      const auto i = static_cast<std::size_t>(outcome);
      text += (text.empty() ? "" : ", ") + std::to_string(now.exchanges[i] - before_.exchanges[i]) +
              " " + nameOf(outcome);
    }
    return now.underWay == 0 ? text : text + ", " + std::to_string(now.underWay) + " under way";
  }

 private:
  const orma::metrics::OutsideService service_;
  const orma::metrics::ServiceSnapshot before_;
};
