// Why an exchange has failed, told as one trace for a person: whom it went to, the reason, and what
// to check.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>

namespace orma::channel {

// "reason; check that …" of a code of channel_error.h; for any other, that the server sent it.
std::string failureText(unsigned long error);

void traceFailure(const std::string& peer, unsigned long command, unsigned long error);

}  // namespace orma::channel
