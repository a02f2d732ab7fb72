// Whether the configuration's secrets lie where only those who need them can read them. What is
// found here is refused: serve and the queries do not run with it.
//
//   for (const orma::ConfigProblem& problem : secretProblems(*configuration, file)) tell(problem);
//
// Thread-safety: thread-safe. No problem holds a secret.
#pragma once

#include <string>
#include <vector>

#include "orma/bundle/configuration.h"

namespace ormaagent {

// The problems of the configuration that was read from `file`: a token, key or password file that
// others can read, or a secret in the configuration itself when others can read that.
std::vector<orma::ConfigProblem> secretProblems(const orma::Configuration& configuration,
                                                const std::string& file);

}  // namespace ormaagent
