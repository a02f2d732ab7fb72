#include "graphviz.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "exit_status.h"
#include "host_failure.h"
#include "waiting_for.h"

extern char** environ;

namespace ormaagent {

namespace {

constexpr char kNotInstalled[] =
    "the program neato, which draws the picture, is not installed; Debian's package graphviz has "
    "it, and --out FILE.dot needs none";

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

HostFailure failed(const std::string& what, int error) {
  return HostFailure(kExitFailed, what + ": " + std::generic_category().message(error));
}

// A file without a name, so that neither side waits for the other as they would at a pipe.
File temporaryFile() {
  File file(std::tmpfile(), std::fclose);
  if (!file) throw failed("cannot make a temporary file", errno);
  return file;
}

File fileWith(const std::string& text) {
  File file = temporaryFile();
  const bool written = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() &&
                       std::fflush(file.get()) == 0;
  if (!written) throw failed("cannot write a temporary file", errno);
  std::rewind(file.get());
  return file;
}

std::string contentsOf(std::FILE* file) {
  std::rewind(file);
  std::string text;
  char buffer[65536];
  while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file)) {
    text.append(buffer, count);
  }
  if (std::ferror(file) != 0) throw failed("cannot read a temporary file", errno);
  return text;
}

// How the program is started: its input and output, and signals as usual, which this process
// partly ignores.
class SpawnPlan {
 public:
  SpawnPlan(int input, int output) {
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setsigdefault(&attributes_, &defaults);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }

  pid_t start(const char* const* words) const {
    pid_t id = 0;
    const int error = ::posix_spawnp(&id, words[0], &actions_, &attributes_,
                                     const_cast<char* const*>(words), environ);
    if (error == ENOENT) throw HostFailure(kExitUsage, kNotInstalled);
    if (error != 0) throw failed(std::string("cannot start ") + words[0], error);
    return id;
  }

 private:
  posix_spawnattr_t attributes_;
  posix_spawn_file_actions_t actions_;
};

// The program that draws; 0: none.
std::atomic<pid_t> drawing{0};

void awaitEnd(pid_t id) {
  const WaitingFor waiting("neato, which draws the picture");
  drawing = id;
  int status = 0;
  while (::waitpid(id, &status, 0) < 0) {
    if (errno != EINTR) throw failed("cannot wait for neato", errno);
  }
  drawing = 0;
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return;
  throw HostFailure(kExitFailed,
                    WIFEXITED(status)
                        ? "neato failed with status " + std::to_string(WEXITSTATUS(status))
                        : "neato was ended by signal " + std::to_string(WTERMSIG(status)));
}

}  // namespace

void endDrawing() noexcept {
  const pid_t id = drawing;
  if (id > 0) ::kill(id, SIGKILL);
}

std::string drawSvg(const std::string& dot) {
  constexpr const char* kWords[] = {"neato", "-n2", "-Tsvg", nullptr};
  const File input = fileWith(dot);
  const File output = temporaryFile();
  awaitEnd(SpawnPlan(::fileno(input.get()), ::fileno(output.get())).start(kWords));
  return contentsOf(output.get());
}

}  // namespace ormaagent
