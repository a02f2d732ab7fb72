// The addresses of a host.
//
// Thread-safety: thread-safe. Failure: no addresses.
#pragma once

#include <ace/INET_Addr.h>

#include <cstdint>
#include <string>
#include <vector>

#include "deadline.h"

namespace orma::channel {

// In the order in which they are to be tried; none when the name is unknown or the deadline comes
// first. A look-up that hangs is left behind in a thread of its own.
std::vector<ACE_INET_Addr> addressesOf(const std::string& host, std::uint16_t port,
                                       const Deadline& deadline);

}  // namespace orma::channel
