// The platform that the soak asks: a generated inventory, ormasim serving it with faults, and
// ormasim raising alarms in it, all in a directory of their own.
//
//   PlatformSide platform(options);
//   auto configuration = platform.agentConfiguration();
//   platform.raiseAlarms();
//   ...
//   platform.stop();
//
// Thread-safety: thread-compatible. Failure: std::runtime_error with what the programs said.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>

#include "orma/bundle/configuration.h"
#include "process.h"
#include "soak_options.h"
#include "temp_directory.h"

namespace soak {

class PlatformSide {
 public:
  explicit PlatformSide(const SoakOptions& options);

  std::filesystem::path database() const { return directory_.path() / "net.db"; }
  std::shared_ptr<const orma::Configuration> agentConfiguration() const;
  void raiseAlarms();
  pid_t simulator() const { return simulator_->id(); }
  // Ends both programs; what was wrong with their ends, or nothing.
  std::string stop();

 private:
  void generate() const;
  void serve();
  void configure() const;
  std::filesystem::path configurationFile() const { return directory_.path() / "agent.json"; }

  const SoakOptions options_;
  emf::doubles::TempDirectory directory_;
  std::unique_ptr<systemtest::Process> simulator_;
  std::unique_ptr<systemtest::Process> raiser_;
};

}  // namespace soak
