// Texts of error codes, asked from whichever service offers them.
//
//   std::string text = findErrorText(0x411800CC);
//
// Thread-safety: thread-safe between the start and the stop of the services.
#pragma once

#include <stdexcept>
#include <string>

namespace ormaagent {

// A command needs a service that is not running.
class ServiceMissing : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The text, "unknown" when the code has none. Throws ServiceMissing when no service offers texts.
std::string findErrorText(unsigned long code);

}  // namespace ormaagent
