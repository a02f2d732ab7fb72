// Standard output of the process while the object lives, as text.
//
//   StdoutCapture output;
//   service.ExitSvc();
//   EXPECT_EQ(output.text(), "…");
//
// Thread-safety: thread-compatible; one at a time.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace emf::doubles {

class StdoutCapture {
 public:
  StdoutCapture() : file_(std::tmpfile()), saved_(::dup(STDOUT_FILENO)) {
    if (file_ == nullptr || saved_ == -1) throw std::runtime_error("cannot capture stdout");
    std::fflush(stdout);
    ::dup2(::fileno(file_), STDOUT_FILENO);
  }
  StdoutCapture(const StdoutCapture&) = delete;
  StdoutCapture& operator=(const StdoutCapture&) = delete;
  ~StdoutCapture() {
    std::fflush(stdout);
    ::dup2(saved_, STDOUT_FILENO);
    ::close(saved_);
    std::fclose(file_);
  }

  // Everything written so far.
  std::string text() {
    std::fflush(stdout);
    std::string written;
    char chunk[4096];
    off_t offset = 0;
    for (;;) {
      const ssize_t size = ::pread(::fileno(file_), chunk, sizeof chunk, offset);
      if (size <= 0) return written;
      written.append(chunk, static_cast<std::size_t>(size));
      offset += size;
    }
  }

 private:
  std::FILE* file_;
  int saved_;
};

}  // namespace emf::doubles
