// What a call writes to standard output, as its one record.
//
// Thread-safety: thread-compatible.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>

#include "operation.h"

namespace emf::torture {

// While it lives, standard output goes into a file in memory.
class CapturedOutput {
 public:
  CapturedOutput() : file_(::memfd_create("output", MFD_CLOEXEC)), saved_(::dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    ::dup2(file_, STDOUT_FILENO);
  }
  CapturedOutput(const CapturedOutput&) = delete;
  CapturedOutput& operator=(const CapturedOutput&) = delete;
  ~CapturedOutput() {
    std::fflush(stdout);
    ::dup2(saved_, STDOUT_FILENO);
    ::close(saved_);
    ::close(file_);
  }

  std::string text() const {
    std::fflush(stdout);
    std::string written(static_cast<std::size_t>(::lseek(file_, 0, SEEK_END)), '\0');
    if (::pread(file_, written.data(), written.size(), 0) < 0) return "unreadable";
    return written;
  }

 private:
  int file_;
  int saved_;
};

// A call whose output is what it prints.
template <class Call>
std::function<Outcome(const Fault&)> callingPrinter(void (*script)(), Call call) {
  return [script, call](const Fault& fault) {
    script();
    const CapturedOutput output;
    Outcome outcome;
    outcome.result = resultOf(fault, outcome.struck, call);
    outcome.records = {output.text()};
    return outcome;
  };
}

}  // namespace emf::torture
