#include "serve.h"

#include <signal.h>

#include <cstring>
#include <string>

#include "exit_status.h"
#include "message.h"

namespace ormaagent {

namespace {

sigset_t stopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  return signals;
}

int awaitStopSignal() {
  const sigset_t signals = stopSignals();
  int received = 0;
  ::sigwait(&signals, &received);
  return received;
}

void releaseStopSignals() {
  // A parent may have had them ignored, as a shell does for its background jobs.
  ::signal(SIGINT, SIG_DFL);
  ::signal(SIGTERM, SIG_DFL);
  const sigset_t signals = stopSignals();
  ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace

void holdStopSignals() {
  const sigset_t signals = stopSignals();
  ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

int serve(ServiceHost& host) {
  if (!host.start()) return kExitUsage;
  if (!host.runsAny()) {
    tell("no service is running; the configuration's \"bundles\" must name at least one");
    return kExitUsage;
  }
  tellLine("ready");
  const int received = awaitStopSignal();
  tell(std::string("stopping on ") + ::strsignal(received) + "; the same again ends at once");
  releaseStopSignals();
  return host.stop() ? kExitSucceeded : kExitFailed;
}

}  // namespace ormaagent
