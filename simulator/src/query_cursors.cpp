#include "query_cursors.h"

#include <charconv>

namespace ormasim {
namespace {

constexpr std::size_t kMostOpen = 1000;

std::string idOf(std::uint64_t number) { return "q" + std::to_string(number); }

}  // namespace

std::string QueryCursors::open(const QueryCursor& cursor) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (open_.size() == kMostOpen) open_.erase(open_.begin());
  open_.emplace(++last_, Entry{cursor, now_() + life_});
  return idOf(last_);
}

std::optional<QueryCursor> QueryCursors::take(const std::string& id) {
  std::uint64_t number = 0;
  if (id.empty()) return std::nullopt;
  std::from_chars(id.data() + 1, id.data() + id.size(), number);
  if (idOf(number) != id) return std::nullopt;
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto entry = open_.extract(number);
  if (entry.empty() || entry.mapped().end <= now_()) return std::nullopt;
  return entry.mapped().cursor;
}

void QueryCursors::expireAll() {
  const std::lock_guard<std::mutex> lock(mutex_);
  open_.clear();
}

}  // namespace ormasim
