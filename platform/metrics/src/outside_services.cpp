#include "orma/metrics/outside_services.h"

#include <atomic>

namespace orma::metrics {
namespace {

using Ticks = Clock::rep;

struct Record {
  std::array<std::atomic<std::uint64_t>, kOutcomes.size()> exchanges{};
  Histogram length;
  std::atomic<std::uint64_t> underWay{0};
  std::atomic<Ticks> lastAsked{0};
  // Time and outcome of the last exchange in one word, so that they belong together: the clock's
  // ticks in the upper bits, the outcome's place and one in the lower two. 0: none.
  std::atomic<Ticks> last{0};
};

constexpr Ticks kOutcomeValues = 4;

// Constant-initialised and never destroyed: late threads may still report.
std::array<Record, kOutsideServices.size()> records;

Record& recordOf(OutsideService service) { return records[static_cast<std::size_t>(service)]; }

Clock::time_point timeOf(Ticks ticks) { return Clock::time_point(Clock::duration(ticks)); }

Ticks packed(Outcome outcome, Clock::time_point end) {
  return end.time_since_epoch().count() * kOutcomeValues + static_cast<Ticks>(outcome) + 1;
}

std::optional<LastExchange> unpacked(Ticks word) {
  if (word == 0) return std::nullopt;
  const auto outcome = static_cast<Outcome>(word % kOutcomeValues - 1);
  return LastExchange{outcome, timeOf(word / kOutcomeValues)};
}

}  // namespace

const char* nameOf(OutsideService service) noexcept {
  constexpr std::array<const char*, kOutsideServices.size()> kNames = {"rest", "fault_server",
                                                                       "database", "southbound"};
  return kNames[static_cast<std::size_t>(service)];
}

const char* nameOf(Outcome outcome) noexcept {
  constexpr std::array<const char*, kOutcomes.size()> kNames = {"answered", "refused", "unreached"};
  return kNames[static_cast<std::size_t>(outcome)];
}

ServiceSnapshot snapshotOf(OutsideService service) noexcept {
  const Record& record = recordOf(service);
  ServiceSnapshot now;
  for (std::size_t i = 0; i < now.exchanges.size(); ++i) {
    now.exchanges[i] = record.exchanges[i].load(std::memory_order_relaxed);
  }
  now.length = record.length.snapshot();
  now.underWay = record.underWay.load(std::memory_order_relaxed);
  now.lastAsked = timeOf(record.lastAsked.load(std::memory_order_relaxed));
  now.last = unpacked(record.last.load(std::memory_order_relaxed));
  return now;
}

Exchange::Exchange(OutsideService service) noexcept : service_(service), start_(Clock::now()) {
  Record& record = recordOf(service_);
  record.lastAsked.store(start_.time_since_epoch().count(), std::memory_order_relaxed);
  record.underWay.fetch_add(1, std::memory_order_relaxed);
}

Exchange::Exchange(Exchange&& other) noexcept
    : service_(other.service_),
      start_(other.start_),
      end_(other.end_),
      outcome_(other.outcome_),
      counts_(other.counts_) {
  other.counts_ = false;
}

Exchange::~Exchange() {
  if (!counts_) return;
  stopWaiting();
  Record& record = recordOf(service_);
  record.length.record(*end_ - start_);
  record.exchanges[static_cast<std::size_t>(outcome_)].fetch_add(1, std::memory_order_relaxed);
  record.last.store(packed(outcome_, *end_), std::memory_order_relaxed);
}

void Exchange::arrived(Outcome outcome) noexcept {
  if (!counts_) return;
  stopWaiting();
  outcome_ = outcome;
}

void Exchange::cancel() noexcept {
  if (!counts_) return;
  stopWaiting();
  counts_ = false;
}

void Exchange::stopWaiting() noexcept {
  if (end_) return;
  end_ = Clock::now();
  recordOf(service_).underWay.fetch_sub(1, std::memory_order_relaxed);
}

}  // namespace orma::metrics
