#include "orma/log/journal.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <string>
#include <string_view>

#include "journal_sink.h"

namespace orma {

namespace {

// Syslog's numbers: error, information, debugging.
const char* priorityOf(spdlog::level::level_enum level) {
  if (level == spdlog::level::err) return "<3>";
  return level == spdlog::level::info ? "<6>" : "<7>";
}

}  // namespace

// The variable holds "device:inode".
bool standardErrorIsJournal() noexcept {
  const char* const variable = std::getenv("JOURNAL_STREAM");
  struct stat status {};
  if (variable == nullptr || ::fstat(STDERR_FILENO, &status) != 0) return false;
  const std::string_view text = variable;
  const char* const end = text.data() + text.size();
  dev_t device = 0;
  ino_t inode = 0;
  const auto first = std::from_chars(text.data(), end, device);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != ':') return false;
  const auto second = std::from_chars(first.ptr + 1, end, inode);
  return second.ec == std::errc() && second.ptr == end && device == status.st_dev &&
         inode == status.st_ino;
}

// In one piece, so that lines of others do not come between.
void JournalSink::sink_it_(const spdlog::details::log_msg& message) {
  std::string line = priorityOf(message.level);
  line.append(message.payload.data(), message.payload.size()).append("\n");
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t count = ::write(STDERR_FILENO, rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace orma
