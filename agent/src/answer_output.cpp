#include "answer_output.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace ormaagent {

namespace {

bool isOpen(int descriptor) { return ::fcntl(descriptor, F_GETFD) != -1; }

// open gives the lowest free number, so each of the three is filled in turn.
void openStandardDescriptors() {
  for (int descriptor = 0; descriptor <= STDERR_FILENO; ++descriptor) {
    if (!isOpen(descriptor)) static_cast<void>(::open("/dev/null", O_RDWR));
  }
}

void waitUntilWritable(int descriptor) {
  pollfd waiting{descriptor, POLLOUT, 0};
  static_cast<void>(::poll(&waiting, 1, -1));
}

}  // namespace

AnswerOutput AnswerOutput::takeStandardOutput() {
  const bool given = isOpen(STDOUT_FILENO);
  openStandardDescriptors();
  const int descriptor = given ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1) : -1;
  static_cast<void>(::dup2(STDERR_FILENO, STDOUT_FILENO));
  // A reader that goes away shows as EPIPE.
  std::signal(SIGPIPE, SIG_IGN);
  return AnswerOutput(descriptor);
}

AnswerOutput::~AnswerOutput() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool AnswerOutput::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      waitUntilWritable(descriptor_);
    } else if (errno == EPIPE) {
      return true;
    } else if (errno != EINTR) {
      return fail(errno);
    }
  }
  return true;
}

bool AnswerOutput::fail(int error) {
  failure_ = std::generic_category().message(error);
  return false;
}

}  // namespace ormaagent
