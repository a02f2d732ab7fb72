#include "program.h"

#include <chrono>
#include <exception>
#include <memory>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "command_deadline.h"
#include "command_line.h"
#include "configuration_check.h"
#include "configuration_source.h"
#include "exit_status.h"
#include "message.h"
#include "query.h"
#include "serve.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

// Whatever a command asks for is there within minutes; what takes longer is not to go on for ever.
constexpr std::chrono::seconds kUsualLimit{600};

std::chrono::seconds limitOf(const Invocation& invocation) {
  if (invocation.timeout) return *invocation.timeout;
  if (invocation.command == nullptr) return kUsualLimit;
  for (const Option& option : invocation.command->options) {
    if (option.name == nullptr) break;
    if (std::string_view(option.name) != "--wait") continue;
    return kUsualLimit + std::chrono::seconds(invocation.arguments.numberOption<int>("--wait"));
  }
  return kUsualLimit;
}

int finish(const Finished& finished, AnswerOutput& output) {
  tellLines(finished.message);
  if (output.write(finished.answer)) return finished.status;
  tell("cannot write to standard output: " + output.failure());
  return kExitFailed;
}

std::shared_ptr<const orma::Configuration> configurationOf(const Invocation& invocation) {
  const WaitingFor waiting("the configuration file " + invocation.configFile);
  std::vector<orma::ConfigProblem> problems;
  auto configuration = loadConfiguration(invocation.configFile, invocation.logLevel, problems);
  if (configuration) return configuration;
  for (const orma::ConfigProblem& problem : problems) tell(problem.where + ": " + problem.what);
  tell(
      "name a configuration file with --config FILE or in the environment variable "
      "ORMAAGENT_CONFIG; 'ormasim serve --agent-config FILE' writes one");
  return nullptr;
}

int runWithServices(const Invocation& invocation, CommandDeadline& deadline, AnswerOutput& output) {
  auto configuration = configurationOf(invocation);
  if (!configuration) return kExitUsage;
  ServiceHost host(std::move(configuration));
  return invocation.action == Action::kServe ? serve(host, deadline, limitOf(invocation))
                                             : runQuery(invocation, host, output);
}

int runWithin(const Invocation& invocation, AnswerOutput& output) {
  if (invocation.action == Action::kServe) holdSignals();
  CommandDeadline deadline;
  deadline.set(limitOf(invocation));
  return invocation.action == Action::kCheckConfiguration
             ? checkConfiguration(invocation, output)
             : runWithServices(invocation, deadline, output);
}

}  // namespace

int run(int argc, const char* const* argv, AnswerOutput& output) {
  try {
    const ParsedCommandLine parsed = parseCommandLine(argc, argv);
    if (const auto* finished = std::get_if<Finished>(&parsed)) return finish(*finished, output);
    return runWithin(std::get<Invocation>(parsed), output);
  } catch (const std::exception& failure) {
    tell(failure.what());
    return kExitUsage;
  }
}

}  // namespace ormaagent
