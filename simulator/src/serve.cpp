#include "serve.h"

#include <pthread.h>

#include <csignal>
#include <cstdio>
#include <utility>

#include "agent_config.h"
#include "error.h"
#include "http_server.h"
#include "rest_handler.h"
#include "services.h"

namespace ormasim {
namespace {

// Blocked before any thread is made, so that the signals wait for `sigwait`.
sigset_t blockStopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

void printReadyLine(int httpPort) {
  if (std::printf("{\"httpPort\": %d, \"faultPort\": null}\n", httpPort) < 0 ||
      std::fflush(stdout) != 0) {
    throw SimError("cannot write the ready line to standard output");
  }
}

}  // namespace

void serve(const ServeOptions& options) {
  const sigset_t signals = blockStopSignals();
  RestSettings settings;
  settings.databaseFile = options.databaseFile;
  settings.token = options.token;
  settings.cursorLife = std::chrono::seconds(options.cursorSeconds);
  if (!options.faultsFile.empty()) {
    settings.faults = FaultScript::load(options.faultsFile, servicePaths());
  }
  RestHandler handler(std::move(settings));
  HttpServer server(handler);
  const int port = server.start(options.httpPort);
  if (!options.agentConfigFile.empty()) {
    writeAgentConfig({options.agentConfigFile, options.databaseFile, port, options.token});
  }
  printReadyLine(port);

  int received = 0;
  sigwait(&signals, &received);
  server.stop();
}

}  // namespace ormasim
