// A program that a test starts, with its streams.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace ormasim::testing {

class Process {
 public:
  Process(const std::string& program, const std::vector<std::string>& arguments);
  // Kills what still runs.
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // One line of standard output without its end; empty at the end of the stream.
  std::string readLine();
  void signal(int number);
  // Waits for the end. The exit status, or minus the number of the signal that ended it.
  int wait();
  // All that came on a stream and was not read yet; for after wait.
  std::string output();
  std::string errors();

 private:
  pid_t id_ = -1;
  int output_ = -1;
  int errors_ = -1;
};

// Runs to the end.
struct Outcome {
  int status;
  std::string output;
  std::string errors;
};
Outcome run(const std::string& program, const std::vector<std::string>& arguments);

}  // namespace ormasim::testing
