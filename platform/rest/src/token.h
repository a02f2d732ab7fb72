// The token that authenticates requests, from a file or an environment variable.
//
// Thread-safety: thread-safe. Failure is told by the result; no message holds the token.
#pragma once

#include <string>

#include "failure.h"
#include "settings.h"

namespace orma::rest {

// The token of this moment, blanks trimmed; empty when none is configured. The file is read each
// time, so a token that was renewed counts from the next request on. False when a token is
// configured but cannot be had or could not stand in a header.
bool currentToken(const Settings& settings, std::string& token, Failure& failure);

}  // namespace orma::rest
