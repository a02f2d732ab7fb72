#include "waiting_for.h"

#include <chrono>
#include <map>
#include <mutex>
#include <utility>

#include "orma/metrics/outside_services.h"

namespace ormaagent {

namespace {

using orma::metrics::OutsideService;
using orma::metrics::ServiceSnapshot;

struct ServiceText {
  OutsideService service;
  const char* text;
};

constexpr ServiceText kServiceTexts[] = {
    {OutsideService::kRest, "the REST service (rest.baseUrl)"},
    {OutsideService::kFaultServer, "the fault server (faultServer.host)"},
    {OutsideService::kDatabase, "the database (database.connection)"},
    {OutsideService::kSouthbound, "the southbound set, which reads the database"},
};

class Waits {
 public:
  // Never destroyed: the deadline's thread may look while the process ends.
  static Waits& instance() {
    static auto* waits = new Waits;
    return *waits;
  }

  std::uint64_t begin(std::string what) {
    const std::lock_guard<std::mutex> lock(mutex_);
    texts_.emplace(++last_, std::move(what));
    return last_;
  }
  void end(std::uint64_t number) {
    const std::lock_guard<std::mutex> lock(mutex_);
    texts_.erase(number);
  }
  std::string youngest() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return texts_.empty() ? "its own end" : texts_.rbegin()->second;
  }

 private:
  std::mutex mutex_;
  std::map<std::uint64_t, std::string> texts_;  // guarded by mutex_
  std::uint64_t last_ = 0;                      // guarded by mutex_
};

// The service of the last exchange that is still under way; null when none is.
const ServiceText* lastAsked(ServiceSnapshot& figures) {
  const ServiceText* found = nullptr;
  for (const ServiceText& row : kServiceTexts) {
    const ServiceSnapshot now = orma::metrics::snapshotOf(row.service);
    if (now.underWay == 0 || (found != nullptr && now.lastAsked < figures.lastAsked)) continue;
    found = &row;
    figures = now;
  }
  return found;
}

}  // namespace

WaitingFor::WaitingFor(std::string what) : number_(Waits::instance().begin(std::move(what))) {}

WaitingFor::~WaitingFor() { Waits::instance().end(number_); }

std::string currentWait() {
  std::string own = Waits::instance().youngest();
  ServiceSnapshot figures;
  const ServiceText* const service = lastAsked(figures);
  if (service == nullptr) return own;
  const auto since = std::chrono::duration_cast<std::chrono::seconds>(orma::metrics::Clock::now() -
                                                                      figures.lastAsked);
  return std::string(service->text) + ", asked " + std::to_string(since.count()) +
         " s before, and with it " + own;
}

}  // namespace ormaagent
