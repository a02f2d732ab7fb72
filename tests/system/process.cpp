#include "process.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace systemtest {

namespace {

using std::chrono::steady_clock;

void check(int error, const std::string& what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

// Both ends are closed on exec; the write end is the child's by dup2.
std::pair<int, int> makePipe() {
  int ends[2];
  check(::pipe2(ends, O_CLOEXEC) == 0 ? 0 : errno, "pipe");
  return {ends[0], ends[1]};
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
  std::vector<char*> list;
  for (const std::string& text : texts) list.push_back(const_cast<char*>(text.c_str()));
  list.push_back(nullptr);
  return list;
}

class SpawnActions {
 public:
  SpawnActions() { check(::posix_spawn_file_actions_init(&actions_), "posix_spawn"); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }
  posix_spawn_file_actions_t* get() { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

void closeDescriptor(int& descriptor) {
  if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
}

// The system call that a thread is in stands first in its "syscall"; "running" when in none.
bool hasThreadIn(pid_t program, const std::vector<long>& calls) {
  std::error_code gone;  // threads may end meanwhile
  const std::string tasks = "/proc/" + std::to_string(program) + "/task";
  for (const auto& task : std::filesystem::directory_iterator(tasks, gone)) {
    long call = -1;
    std::ifstream(task.path() / "syscall") >> call;
    if (std::find(calls.begin(), calls.end(), call) != calls.end()) return true;
  }
  return false;
}

}  // namespace

Process::Process(const std::vector<std::string>& words, const ProcessSetup& setup)
    : name_(words.front()) {
  auto [outRead, outWrite] = makePipe();
  auto [errRead, errWrite] = makePipe();
  out_.descriptor = outRead;
  err_.descriptor = errRead;
  if (!setup.readOutput) closeDescriptor(out_.descriptor);
  SpawnActions actions;
  ::posix_spawn_file_actions_addopen(actions.get(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  if (setup.outputFile.empty()) {
    ::posix_spawn_file_actions_adddup2(actions.get(), outWrite, STDOUT_FILENO);
  } else {
    ::posix_spawn_file_actions_addopen(actions.get(), STDOUT_FILENO, setup.outputFile.c_str(),
                                       O_WRONLY | O_CREAT, 0600);
  }
  ::posix_spawn_file_actions_adddup2(actions.get(), errWrite, STDERR_FILENO);
  if (!setup.directory.empty()) {
    ::posix_spawn_file_actions_addchdir_np(actions.get(), setup.directory.c_str());
  }
  const int error = ::posix_spawn(&id_, name_.c_str(), actions.get(), nullptr,
                                  pointers(words).data(), pointers(setup.environment).data());
  ::close(outWrite);
  ::close(errWrite);
  if (error != 0) id_ = -1;
  check(error, name_);
}

Process::~Process() {
  if (id_ > 0) {
    ::kill(id_, SIGKILL);
    reap();
  }
  closeDescriptor(out_.descriptor);
  closeDescriptor(err_.descriptor);
}

void Process::reap() {
  while (::waitpid(id_, &waitStatus_, 0) == -1 && errno == EINTR) {
  }
  id_ = -1;
}

bool Process::readSome(Time deadline) {
  pollfd waiting[] = {{out_.descriptor, POLLIN, 0}, {err_.descriptor, POLLIN, 0}};
  if (out_.descriptor < 0 && err_.descriptor < 0) return false;
  const auto left =
      std::chrono::duration_cast<std::chrono::milliseconds>(deadline - steady_clock::now());
  const int ready = ::poll(waiting, 2, static_cast<int>(std::max<long>(left.count(), 0)));
  if (ready == 0) {
    throw std::runtime_error(name_ + " missed its deadline. Standard output: " + out_.text +
                             "\nStandard error: " + err_.text);
  }
  Stream* const streams[] = {&out_, &err_};
  for (int i = 0; i < 2; ++i) {
    if (waiting[i].revents == 0) continue;
    char block[65536];
    const ssize_t count = ::read(streams[i]->descriptor, block, sizeof block);
    if (count > 0) streams[i]->text.append(block, static_cast<std::size_t>(count));
    if (count == 0) closeDescriptor(streams[i]->descriptor);
  }
  return true;
}

const std::string& Process::await(Stream& stream, const std::string& text) {
  const Time deadline = steady_clock::now() + kDeadline;
  while (stream.text.find(text) == std::string::npos) {
    if (!readSome(deadline)) {
      throw std::runtime_error(name_ + " ended without \"" + text + "\". Standard output: " +
                               out_.text + "\nStandard error: " + err_.text);
    }
  }
  return stream.text;
}

const std::string& Process::awaitOutput(const std::string& text) { return await(out_, text); }

const std::string& Process::awaitError(const std::string& text) { return await(err_, text); }

void Process::awaitSleepingThread() const { awaitSystemCall({SYS_nanosleep, SYS_clock_nanosleep}); }

void Process::awaitSystemCall(const std::vector<long>& calls) const {
  const auto deadline = steady_clock::now() + kDeadline;
  while (!hasThreadIn(id_, calls)) {
    if (steady_clock::now() > deadline) {
      throw std::runtime_error(name_ + ": no thread is in the system call that was waited for");
    }
    ::sched_yield();
  }
}

void Process::send(int signal) { ::kill(id_, signal); }

Outcome Process::finish(std::chrono::milliseconds deadline) {
  const Time end = steady_clock::now() + deadline;
  while (readSome(end)) {
  }
  reap();
  Outcome outcome;
  if (WIFEXITED(waitStatus_)) outcome.status = WEXITSTATUS(waitStatus_);
  if (WIFSIGNALED(waitStatus_)) outcome.signal = WTERMSIG(waitStatus_);
  outcome.out = out_.text;
  outcome.err = err_.text;
  return outcome;
}

}  // namespace systemtest
