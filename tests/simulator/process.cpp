#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <utility>

namespace ormasim::testing {
namespace {

std::string readAll(int descriptor) {
  std::string text;
  char buffer[4096];
  for (ssize_t count; (count = ::read(descriptor, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace

Process::Process(const std::string& program, const std::vector<std::string>& arguments) {
  int pipe[2];
  // Errors go to a file in memory: a full pipe that nobody reads would hold the program.
  errors_ = ::memfd_create("errors", MFD_CLOEXEC);
  if (errors_ < 0 || ::pipe2(pipe, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  output_ = pipe[0];
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors_, STDERR_FILENO);
  std::vector<char*> words = {const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  const int failure =
      ::posix_spawn(&id_, program.c_str(), &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(pipe[1]);
  if (failure != 0) throw std::runtime_error("cannot start " + program);
}

Process::~Process() {
  if (id_ > 0) {
    ::kill(id_, SIGKILL);
    wait();
  }
  ::close(output_);
  ::close(errors_);
}

std::string Process::readLine() {
  std::string line;
  char character = 0;
  while (::read(output_, &character, 1) == 1 && character != '\n') line += character;
  return line;
}

void Process::signal(int number) { ::kill(id_, number); }

int Process::wait() {
  int status = 0;
  ::waitpid(std::exchange(id_, -1), &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string Process::output() { return readAll(output_); }

std::string Process::errors() {
  ::lseek(errors_, 0, SEEK_SET);
  return readAll(errors_);
}

Outcome run(const std::string& program, const std::vector<std::string>& arguments) {
  Process process(program, arguments);
  const std::string output = process.output();  // ends with the program
  const int status = process.wait();
  return {status, output, process.errors()};
}

}  // namespace ormasim::testing
