// What stops a command. The text says what failed, on what, and what to do.
#pragma once

#include <stdexcept>

namespace ormasim {

class SimError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace ormasim
