#include "readiness.h"

#include <chrono>
#include <vector>

#include "figures.h"
#include "orma/metrics/outside_services.h"
#include "subnet_names.h"

namespace ormaagent {

namespace {

using orma::metrics::Outcome;

struct Condition {
  bool holds;
  std::string text;
};

std::string ago(SteadyClock::time_point time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(SteadyClock::now() - time);
  return std::to_string(seconds.count()) + " s ago";
}

Condition pluginCondition(PluginState state) {
  switch (state) {
    case PluginState::kRunning:
      return {true, "plug-in: running"};
    case PluginState::kStarting:
      return {false, "plug-in: the services are being started"};
    default:
      return {false, "plug-in: not running"};
  }
}

Condition refreshCondition() {
  const auto last = Figures::instance().lastRefresh();
  if (!last) return {false, "subnet names: the first refresh has not ended"};
  if (!last->everSucceeded) return {false, "subnet names: no refresh has succeeded yet"};
  return {true, "subnet names: last refresh " + ago(last->end)};
}

void addServices(std::vector<Condition>& conditions) {
  for (const auto service : orma::metrics::kOutsideServices) {
    const auto last = orma::metrics::snapshotOf(service).last;
    if (!last) continue;
    conditions.push_back(
        {last->outcome != Outcome::kUnreached, std::string(nameOf(service)) + ": last exchange " +
                                                   nameOf(last->outcome) + ", " + ago(last->end)});
  }
}

}  // namespace

Readiness readiness(PluginState plugin) {
  std::vector<Condition> conditions = {pluginCondition(plugin)};
  if (subnetNamesKept()) conditions.push_back(refreshCondition());
  addServices(conditions);
  Readiness now;
  now.ready = true;
  for (const Condition& condition : conditions) {
    now.ready = now.ready && condition.holds;
    now.text += condition.text + (condition.holds ? "\n" : " (not ready)\n");
  }
  now.text.insert(0, now.ready ? "ready\n" : "not ready\n");
  return now;
}

}  // namespace ormaagent
