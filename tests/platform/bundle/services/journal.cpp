#include "journal.h"

#include <mutex>
#include <utility>

namespace scripted {

namespace {

std::mutex mutex;
std::vector<std::string> entries;

}  // namespace

void note(const std::string& entry) {
  const std::lock_guard lock(mutex);
  entries.push_back(entry);
}

std::vector<std::string> takeJournal() {
  const std::lock_guard lock(mutex);
  return std::exchange(entries, {});
}

}  // namespace scripted
