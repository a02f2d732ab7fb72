// What the command is waiting for, for the message of one that is given up.
//
//   const WaitingFor waiting("the services to start");
//
// Thread-safety: thread-safe; an object belongs to the thread that made it. Nothing is thrown but
// std::bad_alloc.
#pragma once

#include <cstdint>
#include <string>

namespace ormaagent {

// While one lives, its text is what the command waits for. Of several the youngest counts.
class WaitingFor {
 public:
  explicit WaitingFor(std::string what);
  WaitingFor(const WaitingFor&) = delete;
  WaitingFor& operator=(const WaitingFor&) = delete;
  ~WaitingFor();

 private:
  const std::uint64_t number_;
};

// "the services to start"; before it the outside service that was asked last, if one has not
// answered yet: "the REST service (rest.baseUrl), asked 3 s before, and with it the services to
// start".
std::string currentWait();

}  // namespace ormaagent
