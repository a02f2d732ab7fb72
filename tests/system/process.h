// A program under test: started with pipes on its outputs, waited for with a deadline, gone with
// the object.
//
//   Process agent({ORMAAGENT, "res", "fdn", "12"});
//   Outcome outcome = agent.finish();
//   EXPECT_EQ(outcome.status, 0) << outcome.err;
//
// Thread-safety: thread-compatible. Failure, a deadline that passes among them, is a
// std::runtime_error that tells what the program had written.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace systemtest {

constexpr std::chrono::seconds kDeadline{60};

struct Outcome {
  int status = -1;  // exit status; -1 when a signal ended the program
  int signal = 0;   // that signal
  std::string out;
  std::string err;
};

struct ProcessSetup {
  std::string directory;                 // to run in; empty: here
  std::vector<std::string> environment;  // NAME=value, in place of this program's own
  std::string outputFile;                // standard output goes there, not to the pipe
  bool readOutput = true;                // false: nobody reads standard output, its reader is gone
};

class Process {
 public:
  explicit Process(const std::vector<std::string>& words, const ProcessSetup& setup = {});
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  // Kills the program if it still runs.
  ~Process();

  // Waits until a thread of the program is asleep in nanosleep or clock_nanosleep.
  void awaitSleepingThread() const;
  // Waits until a thread of the program is in one of these system calls.
  void awaitSystemCall(const std::vector<long>& calls) const;
  // Waits until standard output or standard error holds the text; what the stream holds then.
  const std::string& awaitOutput(const std::string& text);
  const std::string& awaitError(const std::string& text);
  void send(int signal);
  pid_t id() const { return id_; }
  // Waits for the end.
  Outcome finish(std::chrono::milliseconds deadline = kDeadline);

 private:
  struct Stream {
    int descriptor = -1;
    std::string text;
  };
  using Time = std::chrono::steady_clock::time_point;

  // Takes what comes from either stream; false when both are at their end. Throws at the deadline.
  bool readSome(Time deadline);
  const std::string& await(Stream& stream, const std::string& text);
  void reap();

  std::string name_;
  pid_t id_ = -1;
  Stream out_;
  Stream err_;
  int waitStatus_ = 0;
};

}  // namespace systemtest
