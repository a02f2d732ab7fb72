// The cursors of walks through a query's result: where each goes on, until it is used or too old.
//
//   const std::string id = cursors.open({2, 1000, 200});
//   const auto cursor = cursors.take(id);  // nothing once it was taken or has expired
//
// Thread-safety: thread-safe.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace ormasim {

// A walk over what a device holds.
struct QueryCursor {
  std::int64_t device = 0;
  std::int64_t after = 0;  // sequence number of the last object that was given
  std::int64_t limit = 0;
};

class QueryCursors {
 public:
  using Clock = std::chrono::steady_clock;

  explicit QueryCursors(std::chrono::milliseconds life,
                        std::function<Clock::time_point()> now = Clock::now)
      : life_(life), now_(std::move(now)) {}

  // The id of a new cursor. Beyond 1000 open ones the oldest goes.
  std::string open(const QueryCursor& cursor);
  std::optional<QueryCursor> take(const std::string& id);
  void expireAll();

 private:
  struct Entry {
    QueryCursor cursor;
    Clock::time_point end;
  };

  const std::chrono::milliseconds life_;
  const std::function<Clock::time_point()> now_;
  std::mutex mutex_;
  std::map<std::uint64_t, Entry> open_;  // by number, so the oldest first; guarded by mutex_
  std::uint64_t last_ = 0;               // guarded by mutex_
};

}  // namespace ormasim
