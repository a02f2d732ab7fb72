#include "program.h"

#include <exception>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "command_line.h"
#include "configuration_check.h"
#include "configuration_source.h"
#include "exit_status.h"
#include "message.h"
#include "query.h"
#include "serve.h"

namespace ormaagent {

namespace {

int finish(const Finished& finished, AnswerOutput& output) {
  tellLines(finished.message);
  if (output.write(finished.answer)) return finished.status;
  tell("cannot write to standard output: " + output.failure());
  return kExitFailed;
}

std::shared_ptr<const orma::Configuration> configurationOf(const Invocation& invocation) {
  std::vector<orma::ConfigProblem> problems;
  auto configuration = loadConfiguration(invocation.configFile, invocation.logLevel, problems);
  if (configuration) return configuration;
  for (const orma::ConfigProblem& problem : problems) tell(problem.where + ": " + problem.what);
  tell(
      "name a configuration file with --config FILE or in the environment variable "
      "ORMAAGENT_CONFIG; 'ormasim serve --agent-config FILE' writes one");
  return nullptr;
}

int runWithServices(const Invocation& invocation, AnswerOutput& output) {
  auto configuration = configurationOf(invocation);
  if (!configuration) return kExitUsage;
  if (invocation.action == Action::kServe) holdSignals();
  ServiceHost host(std::move(configuration));
  return invocation.action == Action::kServe ? serve(host) : runQuery(invocation, host, output);
}

}  // namespace

int run(int argc, const char* const* argv, AnswerOutput& output) {
  try {
    const ParsedCommandLine parsed = parseCommandLine(argc, argv);
    if (const auto* finished = std::get_if<Finished>(&parsed)) return finish(*finished, output);
    const auto& invocation = std::get<Invocation>(parsed);
    return invocation.action == Action::kCheckConfiguration ? checkConfiguration(invocation, output)
                                                            : runWithServices(invocation, output);
  } catch (const std::exception& failure) {
    tell(failure.what());
    return kExitUsage;
  }
}

}  // namespace ormaagent
