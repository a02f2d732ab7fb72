// A piece of a test in a process of its own, which may end itself, change its limits and its
// directory, and starts with every static as the program's start left it.
//
//   const ChildOutcome outcome = inChild(directory, [] { WriteLog("text"); });
//   EXPECT_EQ(outcome.status, kChildDone) << outcome.output;
//
// Expectations that fail in the child make its status kChildFailed, with their texts in `output`.
// The calling process must have one thread.
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace emf::test {

// Statuses that no code under test ends with.
constexpr int kChildDone = 40;
constexpr int kChildFailed = 41;
// A child that hangs, in a lock say, is ended by a signal then.
constexpr unsigned int kChildSeconds = 60;

struct ChildOutcome {
  int status = -1;     // -1: ended by a signal
  std::string output;  // its standard output
};

inline std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream content;
  content << std::ifstream(file, std::ios::binary).rdbuf();
  return content.str();
}

template <class Body>
ChildOutcome inChild(const std::filesystem::path& directory, Body body) {
  const std::filesystem::path output = directory / "output";
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child == -1) throw std::runtime_error("no process");
  if (child == 0) {
    ::alarm(kChildSeconds);
    if (std::freopen(output.c_str(), "w", stdout) == nullptr) ::_exit(kChildFailed);
    if (::chdir(directory.c_str()) != 0) ::_exit(kChildFailed);
    body();
    // With what belongs to the end of a program: reports of leaks and of coverage.
    std::exit(::testing::Test::HasFailure() ? kChildFailed : kChildDone);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(output)};
}

}  // namespace emf::test
