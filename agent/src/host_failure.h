// A command could not be carried out for a reason that lies with this host and not with the
// operations that it called: a program that is not installed, a file that cannot be written.
//
//   throw HostFailure(kExitFailed, "net.svg: No space left on device");
//
// Thread-safety: immutable.
#pragma once

#include <stdexcept>
#include <string>

namespace ormaagent {

class HostFailure : public std::runtime_error {
 public:
  HostFailure(int exitStatus, const std::string& reason)
      : std::runtime_error(reason), exitStatus_(exitStatus) {}

  int exitStatus() const { return exitStatus_; }

 private:
  int exitStatus_;
};

}  // namespace ormaagent
