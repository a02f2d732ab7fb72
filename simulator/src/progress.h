// A bar on standard error while long work runs, if that is a terminal; and the place where such
// work learns that the user wants it to end.
//
//   Progress progress("Generating", 100000);
//   for (...) progress.advance();
//
// Thread-safety: thread-compatible. Failure: advance throws SimError once the work was
// interrupted (see interruptWorkOnSignals).
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace ormasim {

// From here on SIGINT and SIGTERM end the work at its next step instead of the process, so that
// half files are cleared away.
void interruptWorkOnSignals();

class Progress {
 public:
  // Draws when standard error is a terminal.
  Progress(std::string title, std::uint64_t total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void advance();

 private:
  void draw();

  std::string title_;
  std::uint64_t total_;
  std::uint64_t done_ = 0;
  bool drawing_;
  std::chrono::steady_clock::time_point nextDraw_;
};

}  // namespace ormasim
