#include "journal.h"

#include <utility>

namespace emf::doubles {

void Journal::note(std::string event) {
  std::lock_guard lock(mutex_);
  events_.push_back(std::move(event));
}

std::vector<std::string> Journal::events() const {
  std::lock_guard lock(mutex_);
  return events_;
}

void Journal::reset() {
  std::lock_guard lock(mutex_);
  events_.clear();
}

}  // namespace emf::doubles
