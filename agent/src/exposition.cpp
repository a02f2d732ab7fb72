#include "exposition.h"

#include <charconv>
#include <chrono>

#include "figures.h"
#include "orma/metrics/outside_services.h"

namespace ormaagent {

namespace {

using orma::metrics::HistogramSnapshot;
using orma::metrics::kBucketEnds;
using orma::metrics::ServiceSnapshot;

using Seconds = std::chrono::duration<double>;

// Whatever the locale is.
std::string numberText(std::uint64_t number) { return std::to_string(number); }

std::string numberText(double number) {
  char text[400];  // enough for every double without an exponent
  const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed).ptr;
  return std::string(text, end);
}

double ageOf(SteadyClock::time_point time) { return Seconds(SteadyClock::now() - time).count(); }

void appendEscaped(std::string& out, std::string_view value) {
  for (const char c : value) {
    if (c == '\\' || c == '"') out += '\\';
    if (c == '\n') {
      out += "\\n";
    } else {
      out += c;
    }
  }
}

struct Service {
  const char* name;
  ServiceSnapshot figures;
};

std::vector<Service> askedServices() {
  std::vector<Service> asked;
  for (const auto service : orma::metrics::kOutsideServices) {
    const ServiceSnapshot figures = orma::metrics::snapshotOf(service);
    if (figures.everAsked()) asked.push_back({nameOf(service), figures});
  }
  return asked;
}

void writeBuild(ExpositionWriter& out) {
  out.family("ormaagent_build_info", "gauge", "The version of the program; always 1.");
  out.sample({{"version", EMF_VERSION}}, std::uint64_t{1});
}

void writeOperations(ExpositionWriter& out) {
  const std::vector<OperationFigures> operations = Figures::instance().operations();
  if (operations.empty()) return;
  out.family("ormaagent_operation_calls_total", "counter", "Calls of the plug-in's operations.");
  for (const auto& row : operations) out.sample({{"operation", row.name}}, row.length.count());
  out.family("ormaagent_operation_failures_total", "counter",
             "Calls of the plug-in's operations that failed.");
  for (const auto& row : operations) out.sample({{"operation", row.name}}, row.failures);
  out.family("ormaagent_operation_duration_seconds", "histogram",
             "Calls of the plug-in's operations, by the time that they took.");
  for (const auto& row : operations) out.samples({{"operation", row.name}}, row.length);
}

void writeServices(ExpositionWriter& out) {
  const std::vector<Service> services = askedServices();
  if (services.empty()) return;
  out.family("ormaagent_outside_exchanges_total", "counter",
             "Exchanges with outside services, by what became of them.");
  for (const Service& service : services) {
    for (const auto outcome : orma::metrics::kOutcomes) {
      out.sample({{"service", service.name}, {"outcome", nameOf(outcome)}},
                 service.figures.exchanges[static_cast<std::size_t>(outcome)]);
    }
  }
  out.family("ormaagent_outside_exchanges_under_way", "gauge",
             "Exchanges with outside services that wait for an answer.");
  for (const Service& service : services) {
    out.sample({{"service", service.name}}, service.figures.underWay);
  }
  out.family("ormaagent_outside_exchange_duration_seconds", "histogram",
             "Exchanges with outside services, by the time that they took.");
  for (const Service& service : services) {
    out.samples({{"service", service.name}}, service.figures.length);
  }
}

void writeCaches(ExpositionWriter& out) {
  const std::vector<CacheFigures> caches = Figures::instance().caches();
  if (caches.empty()) return;
  out.family("ormaagent_cache_entries", "gauge", "Entries of a cache when it was last filled.");
  for (const auto& row : caches) out.sample({{"cache", row.name}}, row.entries);
  out.family("ormaagent_cache_age_seconds", "gauge", "Time since a cache was last filled.");
  for (const auto& row : caches) out.sample({{"cache", row.name}}, ageOf(row.filled));
}

void writeRefresh(ExpositionWriter& out) {
  const std::optional<RefreshFigures> last = Figures::instance().lastRefresh();
  if (!last) return;
  out.family("ormaagent_subnet_refresh_age_seconds", "gauge",
             "Time since the last refresh of the subnet names came to its end.");
  out.sample({}, ageOf(last->end));
  out.family("ormaagent_subnet_refresh_duration_seconds", "gauge",
             "Time that the last refresh of the subnet names took.");
  out.sample({}, Seconds(last->length).count());
}

}  // namespace

void ExpositionWriter::family(std::string_view name, std::string_view type, std::string_view help) {
  family_ = name;
  text_.append("# HELP ").append(name).append(" ").append(help).append("\n");
  text_.append("# TYPE ").append(name).append(" ").append(type).append("\n");
}

void ExpositionWriter::sample(const Labels& labels, double value) {
  line("", labels, numberText(value));
}

void ExpositionWriter::sample(const Labels& labels, std::uint64_t value) {
  line("", labels, numberText(value));
}

void ExpositionWriter::samples(const Labels& labels, const HistogramSnapshot& histogram) {
  std::uint64_t total = 0;
  Labels withEnd = labels;
  withEnd.emplace_back("le", "");
  for (std::size_t i = 0; i < histogram.buckets.size(); ++i) {
    total += histogram.buckets[i];
    const std::string end =
        i < kBucketEnds.size() ? numberText(Seconds(kBucketEnds[i]).count()) : "+Inf";
    withEnd.back().second = end;
    line("_bucket", withEnd, numberText(total));
  }
  line("_sum", labels, numberText(Seconds(histogram.sum).count()));
  line("_count", labels, numberText(total));
}

void ExpositionWriter::line(std::string_view suffix, const Labels& labels, std::string_view value) {
  text_.append(family_).append(suffix);
  char separator = '{';
  for (const auto& [name, text] : labels) {
    text_ += separator;
    text_.append(name).append("=\"");
    appendEscaped(text_, text);
    text_ += '"';
    separator = ',';
  }
  if (!labels.empty()) text_ += '}';
  text_.append(" ").append(value).append("\n");
}

std::string exposition() {
  ExpositionWriter out;
  writeBuild(out);
  writeOperations(out);
  writeServices(out);
  writeCaches(out);
  writeRefresh(out);
  return out.text();
}

}  // namespace ormaagent
