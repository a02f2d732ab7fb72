// The figures of the process in the text format of Prometheus, version 0.0.4.
//
//   response.set_content(exposition(), kExpositionType);
//
// Thread-safety: thread-safe. Nothing is thrown but std::bad_alloc.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orma/metrics/histogram.h"

namespace ormaagent {

constexpr char kExpositionType[] = "text/plain; version=0.0.4; charset=utf-8";

// Writes families of samples, one after the other.
class ExpositionWriter {
 public:
  using Labels = std::vector<std::pair<std::string_view, std::string_view>>;

  // Begins a family: its lines HELP and TYPE ("counter", "gauge", "histogram").
  void family(std::string_view name, std::string_view type, std::string_view help);
  // A sample of the family at hand.
  void sample(const Labels& labels, double value);
  void sample(const Labels& labels, std::uint64_t value);
  // Those of a histogram: the buckets, which add up, the sum in seconds and the count.
  void samples(const Labels& labels, const orma::metrics::HistogramSnapshot& histogram);

  const std::string& text() const { return text_; }

 private:
  void line(std::string_view suffix, const Labels& labels, std::string_view value);

  std::string family_;
  std::string text_;
};

// Everything that is known now. A family without samples is left out.
std::string exposition();

}  // namespace ormaagent
