#include "service_manager.h"

#include <systemd/sd-daemon.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

#include "message.h"

namespace ormaagent {

namespace {

constexpr int kKeepEnvironment = 0;
// Signs come at twice the rate that is asked for, so that a late one is no missing one.
constexpr int kSignsInPeriod = 2;

void notify(const char* state) {
  const int sent = ::sd_notify(kKeepEnvironment, state);
  if (sent < 0) {
    tell(std::string("the service manager cannot be told ") + state + ": " + std::strerror(-sent));
  }
}

// Zero: no sign is asked for.
std::chrono::microseconds signPeriod() {
  std::uint64_t microseconds = 0;
  const int asked = ::sd_watchdog_enabled(kKeepEnvironment, &microseconds);
  if (asked < 0) {
    tell(std::string("WATCHDOG_USEC or WATCHDOG_PID is wrong: ") + std::strerror(-asked));
  }
  return std::chrono::microseconds(asked > 0 ? microseconds / kSignsInPeriod : 0);
}

}  // namespace

ServiceManager::ServiceManager(std::function<bool()> alive) : alive_(std::move(alive)) {}

ServiceManager::~ServiceManager() { stopping(); }

void ServiceManager::ready() {
  const auto period = signPeriod();
  if (period.count() > 0) thread_ = std::thread([this, period] { giveSigns(period); });
  notify("READY=1");
  told_ = true;
}

void ServiceManager::stopping() {
  if (!std::exchange(told_, false)) return;
  notify("STOPPING=1");
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
  }
  ending_.notify_one();
  if (thread_.joinable()) thread_.join();
}

void ServiceManager::giveSigns(std::chrono::microseconds period) {
  do {
    if (alive_()) notify("WATCHDOG=1");
  } while (!restFor(period));
}

bool ServiceManager::restFor(std::chrono::microseconds period) {
  std::unique_lock lock(mutex_);
  return ending_.wait_for(lock, period, [this] { return ended_; });
}

}  // namespace ormaagent
