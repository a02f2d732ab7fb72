#include "configuration_check.h"

#include <vector>

#include "configuration_source.h"
#include "exit_status.h"
#include "message.h"
#include "orma/bundle/configuration.h"
#include "query.h"
#include "serve_settings.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

constexpr Column<orma::ConfigProblem> kProblem[] = {
    {"where", [](const orma::ConfigProblem& problem) -> Value { return problem.where; }},
    {"what", [](const orma::ConfigProblem& problem) -> Value { return problem.what; }},
};

std::vector<orma::ConfigProblem> problemsOf(const std::string& file) {
  const WaitingFor waiting("the configuration file " + file);
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = loadConfiguration(file, std::nullopt, problems);
  if (!configuration) return problems;
  const std::string fault = serveSettingsFault(*configuration);
  if (!fault.empty()) problems.push_back({file + ": serve.address", fault});
  return problems;
}

}  // namespace

int checkConfiguration(const Invocation& invocation, AnswerOutput& output) {
  const std::vector<orma::ConfigProblem> problems = problemsOf(invocation.configFile);
  const std::size_t count = problems.size();
  const Answer answer = answerOf(static_cast<std::int64_t>(count), kProblem, problems);
  if (!writeAnswer(answer, invocation.format, output)) return kExitFailed;
  if (invocation.format == Format::kTable) {
    tellLine(invocation.configFile + ": " +
             (count == 0   ? "no problems"
              : count == 1 ? "1 problem"
                           : std::to_string(count) + " problems"));
  }
  return count == 0 ? kExitSucceeded : kExitUsage;
}

}  // namespace ormaagent
