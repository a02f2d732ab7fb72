#include "platform_side.h"

#include <json/json.h>

#include <csignal>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "soak_faults.h"

namespace soak {

namespace {

using systemtest::Outcome;
using systemtest::Process;

constexpr int kRestTimeoutMs = 3'000;
constexpr int kLockTimeoutMs = 60'000;

std::string endOf(const char* name, Process& program) {
  program.send(SIGTERM);
  const Outcome outcome = program.finish();
  if (outcome.status == 0) return "";
  return std::string(name) + " ended with status " + std::to_string(outcome.status) + ", signal " +
         std::to_string(outcome.signal) + ": " + outcome.err + "\n";
}

}  // namespace

PlatformSide::PlatformSide(const SoakOptions& options) : options_(options) {
  generate();
  serve();
  configure();
}

void PlatformSide::generate() const {
  const Outcome outcome =
      Process({EMF_ORMASIM, "generate", "--elements", std::to_string(options_.elements),
               "--equipped", std::to_string(options_.equipped), "--definitions",
               std::to_string(options_.definitions), "--alarms",
               std::to_string(options_.alarmsKept), "--seed", std::to_string(options_.seed), "--db",
               database().string()})
          .finish();
  if (outcome.status != 0) throw std::runtime_error("ormasim generate: " + outcome.err);
}

void PlatformSide::serve() {
  const auto faults = directory_.write("faults.json", faultScript(options_));
  simulator_ = std::make_unique<Process>(std::vector<std::string>{
      EMF_ORMASIM, "serve", "--db", database().string(), "--agent-config",
      configurationFile().string(), "--frame-items", std::to_string(options_.alarmsOfAFrame),
      "--faults", faults.string()});
  simulator_->awaitOutput("\n");
}

void PlatformSide::configure() const {
  Json::Value document;
  std::ifstream(configurationFile()) >> document;
  document["log"]["stderr"] = false;
  document["log"]["file"] = (directory_.path() / "agent.log").string();
  document["items"]["IsReportSubnet"] = 1;
  document["database"]["busyTimeoutMs"] = kLockTimeoutMs;
  if (options_.endlessStalls) {
    document["rest"]["totalTimeoutMs"] = kRestTimeoutMs;
    document["faultServer"]["receiveTimeoutMs"] = kRestTimeoutMs;
  }
  std::ofstream(configurationFile()) << document;
}

std::shared_ptr<const orma::Configuration> PlatformSide::agentConfiguration() const {
  std::vector<orma::ConfigProblem> problems;
  auto configuration = orma::Configuration::load(configurationFile().string(), problems);
  if (!problems.empty()) throw std::runtime_error(problems[0].where + ": " + problems[0].what);
  return configuration;
}

void PlatformSide::raiseAlarms() {
  raiser_ = std::make_unique<Process>(std::vector<std::string>{
      EMF_ORMASIM, "raise", "--db", database().string(), "--rate",
      std::to_string(options_.alarmsASecond), "--keep", std::to_string(options_.alarmsKept)});
}

std::string PlatformSide::stop() {
  std::string wrong;
  if (raiser_) wrong += endOf("ormasim raise", *raiser_);
  return wrong + endOf("ormasim serve", *simulator_);
}

}  // namespace soak
