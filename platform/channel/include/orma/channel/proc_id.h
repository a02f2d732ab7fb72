// The identifier of one process of the platform: the destination of a command.
//
// Thread-safety: thread-compatible.
//
//   CProcID faultServer;
//   faultServer.process = 56;
#pragma once

#include <cstdint>

struct CProcID {
  std::uint32_t process = 0;   // the process's number, which the configuration maps to an address
  std::uint32_t instance = 0;  // which of several; 0 is the only one that there is
};
