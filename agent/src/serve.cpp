#include "serve.h"

#include <signal.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <string>

#include "exit_status.h"
#include "exposition.h"
#include "health_endpoint.h"
#include "heartbeat.h"
#include "message.h"
#include "orma/log/log_sink.h"
#include "plugin_library.h"
#include "readiness.h"
#include "serve_settings.h"
#include "service_manager.h"

namespace ormaagent {

namespace {

constexpr char kPlainText[] = "text/plain; charset=utf-8";
constexpr timespec kTurn = {1, 0};
constexpr std::chrono::seconds kLongestTurn{10};

sigset_t heldSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGHUP);
  return signals;
}

void releaseStopSignals() {
  // A parent may have had them ignored, as a shell does for its background jobs.
  ::signal(SIGINT, SIG_DFL);
  ::signal(SIGTERM, SIG_DFL);
  sigset_t signals = heldSignals();
  sigdelset(&signals, SIGHUP);  // nothing to end a program by that is about to end
  ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

// What the endpoint's pages are made from.
struct State {
  Heartbeat heartbeat;
  std::atomic<PluginState> plugin{PluginState::kStarting};
};

Page healthPage(const State& state) {
  const auto age = std::chrono::duration_cast<std::chrono::seconds>(state.heartbeat.age());
  if (age <= kLongestTurn) return {200, kPlainText, "alive\n"};
  return {503, kPlainText,
          "the event loop has not turned for " + std::to_string(age.count()) + " s\n"};
}

Page readinessPage(const State& state) {
  const Readiness now = readiness(state.plugin);
  return {now.ready ? 200 : 503, kPlainText, now.text};
}

HealthEndpoint::Pages pagesOf(const State& state) {
  return {{"/healthz", [&state] { return healthPage(state); }},
          {"/readyz", [&state] { return readinessPage(state); }},
          {"/metrics", [] {
             return Page{200, kExpositionType, exposition()};
           }}};
}

void openEndpoint(HealthEndpoint& endpoint) {
  const ServeSettings settings(*orma::Configuration::current());
  if (!settings.isOn()) return;
  tellLine("health and metrics at " + endpoint.start(settings.address, settings.port));
}

void reopenLog() {
  const std::string fault = orma::reopenLog();
  if (fault.empty()) {
    tellNotice("the log was opened anew on SIGHUP");
  } else {
    tell(fault);
  }
}

// Turns until a stop is asked for; the signal that asked.
int turnUntilStop(State& state) {
  const sigset_t signals = heldSignals();
  for (;;) {
    state.heartbeat.beat();
    const int received = ::sigtimedwait(&signals, nullptr, &kTurn);
    if (received == SIGHUP) reopenLog();
    if (received == SIGINT || received == SIGTERM) return received;
  }
}

}  // namespace

void holdSignals() {
  const sigset_t signals = heldSignals();
  ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

int serve(ServiceHost& host, CommandDeadline& deadline, std::chrono::seconds limit) {
  State state;
  HealthEndpoint endpoint(pagesOf(state));
  openEndpoint(endpoint);
  if (!host.start()) return kExitUsage;
  if (!host.runsAny()) {
    tell("no service is running; the configuration's \"bundles\" must name at least one");
    return kExitUsage;
  }
  state.plugin = pluginFault(host).empty() ? PluginState::kRunning : PluginState::kNotRunning;
  deadline.clear();
  ServiceManager manager([&state] { return state.heartbeat.age() <= kLongestTurn; });
  manager.ready();
  tellLine("ready");
  const int received = turnUntilStop(state);
  deadline.set(limit);
  tellNotice(std::string("stopping on ") + ::strsignal(received) + "; the same again ends at once");
  releaseStopSignals();
  manager.stopping();
  endpoint.stop();
  return host.stop() ? kExitSucceeded : kExitFailed;
}

}  // namespace ormaagent
