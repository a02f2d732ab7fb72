#include "serve.h"

#include <malloc.h>

#include <cstdio>
#include <utility>
#include <vector>

#include "agent_config.h"
#include "error.h"
#include "fault_server.h"
#include "http_server.h"
#include "rest_handler.h"
#include "services.h"
#include "stop_signals.h"

namespace ormasim {
namespace {

void printReadyLine(int httpPort, int faultPort) {
  if (std::printf("{\"httpPort\": %d, \"faultPort\": %d}\n", httpPort, faultPort) < 0 ||
      std::fflush(stdout) != 0) {
    throw SimError("cannot write the ready line to standard output");
  }
}

// Rules of the REST services and of the fault server stand in one script.
FaultScript loadFaults(const std::string& file) {
  if (file.empty()) return FaultScript();
  std::vector<std::string> paths = servicePaths();
  paths.emplace_back(kFaultServerPath);
  return FaultScript::load(file, paths);
}

FaultServerSettings faultServerSettings(const ServeOptions& options) {
  FaultServerSettings settings;
  settings.databaseFile = options.databaseFile;
  settings.frames.items = options.frameItems;
  settings.frames.tagging = options.explicitTagging ? Tagging::Explicit : Tagging::Implicit;
  settings.faults = loadFaults(options.faultsFile);
  return settings;
}

// The allocator keeps what is freed for the thread that allocated it, and learns to keep the larger
// the larger it was: with many threads that each give a large answer some time, a server that runs
// for long would grow for hours. Large answers go back to the system instead, and what is small is
// there for every thread.
void keepLittleMemory() {
  constexpr int kLargeBytes = 128 * 1024;
  constexpr int kArenas = 1;
  ::mallopt(M_MMAP_THRESHOLD, kLargeBytes);
  ::mallopt(M_TRIM_THRESHOLD, 4 * kLargeBytes);
  ::mallopt(M_ARENA_MAX, kArenas);
}

}  // namespace

void serve(const ServeOptions& options) {
  keepLittleMemory();
  const StopSignals signals;
  RestSettings settings;
  settings.databaseFile = options.databaseFile;
  settings.token = options.token;
  settings.cursorLife = std::chrono::seconds(options.cursorSeconds);
  settings.faults = loadFaults(options.faultsFile);
  RestHandler handler(std::move(settings));
  HttpServer server(handler);
  FaultServer faultServer(faultServerSettings(options));
  const int port = server.start(options.httpPort);
  const int faultPort = faultServer.start(options.faultPort);
  if (!options.agentConfigFile.empty()) {
    writeAgentConfig({options.agentConfigFile, options.databaseFile, port, faultPort,
                      options.explicitTagging, options.token});
  }
  printReadyLine(port, faultPort);

  signals.await();
  server.stop();
  faultServer.stop();
}

}  // namespace ormasim
