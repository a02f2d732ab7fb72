// The token that authenticates requests, from a file or an environment variable.
//
// Thread-safety: thread-safe. Failure is told by the result; no message holds the token.
#pragma once

#include "failure.h"
#include "orma/bundle/secret.h"
#include "settings.h"

namespace orma::rest {

// The token of this moment, blanks trimmed; empty when none is configured. The file is read each
// time, so a token that was renewed counts from the next request on. False when a token is
// configured but cannot be had, could not stand in a header or lies in a file that every user can
// read.
bool currentToken(const Settings& settings, SecretText& token, Failure& failure);

}  // namespace orma::rest
