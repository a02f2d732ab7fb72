// What becomes of the exchanges with the services outside of this process: the modules that make
// them report each one, and a host looks at the counts.
//
//   orma::metrics::Exchange exchange(orma::metrics::OutsideService::kRest);
//   if (!transfer(request)) return;  // counted as unreached
//   exchange.arrived(orma::metrics::Outcome::kAnswered);
//
// Thread-safety: the functions are thread-safe and take no lock; an Exchange is thread-compatible.
// Nothing is thrown.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "orma/bundle/export.h"
#include "orma/metrics/histogram.h"

namespace orma::metrics {

enum class OutsideService { kRest, kFaultServer, kDatabase, kSouthbound };
constexpr std::array<OutsideService, 4> kOutsideServices = {
    OutsideService::kRest, OutsideService::kFaultServer, OutsideService::kDatabase,
    OutsideService::kSouthbound};

enum class Outcome {
  kAnswered,   // the answer came and could be used
  kRefused,    // an answer came: an error, or nothing that could be used
  kUnreached,  // no whole answer came
};
constexpr std::array<Outcome, 3> kOutcomes = {Outcome::kAnswered, Outcome::kRefused,
                                              Outcome::kUnreached};

// "rest", "fault_server", "database", "southbound".
ORMA_API const char* nameOf(OutsideService service) noexcept;
// "answered", "refused", "unreached".
ORMA_API const char* nameOf(Outcome outcome) noexcept;

using Clock = std::chrono::steady_clock;

// The last exchange that was over.
struct LastExchange {
  Outcome outcome;
  Clock::time_point end;
};

struct ServiceSnapshot {
  std::array<std::uint64_t, kOutcomes.size()> exchanges{};  // by outcome
  HistogramSnapshot length;                                 // whatever the outcome
  std::uint64_t underWay = 0;
  Clock::time_point lastAsked;       // of any use when something was asked
  std::optional<LastExchange> last;  // none: none was over yet

  bool everAsked() const { return underWay > 0 || last.has_value(); }
};

ORMA_API ServiceSnapshot snapshotOf(OutsideService service) noexcept;

// One exchange; its life begins with the asking. It counts when it is destroyed, as unreached
// unless something arrived.
class ORMA_API Exchange {
 public:
  explicit Exchange(OutsideService service) noexcept;
  Exchange(Exchange&& other) noexcept;
  Exchange& operator=(Exchange&&) = delete;
  ~Exchange();

  // The waiting is over, with this outcome. Called again, it changes the outcome: what arrived may
  // turn out to be of no use.
  void arrived(Outcome outcome) noexcept;
  // Nothing was asked after all: it does not count.
  void cancel() noexcept;

 private:
  void stopWaiting() noexcept;

  const OutsideService service_;
  const Clock::time_point start_;
  std::optional<Clock::time_point> end_;  // once the waiting is over
  Outcome outcome_ = Outcome::kUnreached;
  bool counts_ = true;
};

}  // namespace orma::metrics
