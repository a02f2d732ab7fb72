// The configuration as the command line wants it: the file, and what the command line overrides.
//
//   std::vector<orma::ConfigProblem> problems;
//   auto configuration = loadConfiguration(invocation.configFile, invocation.logLevel, problems);
//
// Thread-safety: thread-safe. Failure: null, and every problem in `problems`. A secret that others
// can read is one (secret_check.h).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orma/bundle/configuration.h"

namespace ormaagent {

std::shared_ptr<const orma::Configuration> loadConfiguration(
    const std::string& file, std::optional<int> logLevel,
    std::vector<orma::ConfigProblem>& problems);

}  // namespace ormaagent
