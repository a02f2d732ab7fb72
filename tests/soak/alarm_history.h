// The alarms that were raised, read from the inventory as they come, and whether an answer that
// lists alarms is right. Alarms are removed while others are raised, so an answer is right when it
// lists alarms that were raised, in their order, and leaves none out that stood all the time.
//
//   const AlarmHistory::Mark before = history.mark();
//   EMFAlarmI::getAllAlarms(alarms);
//   Verdict verdict = history.judge(before, rowsOf(alarms), true);
//
// Thread-safety: thread-safe. Failure: std::runtime_error with SQLite's words.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "answer.h"
#include "inventory.h"

namespace soak {

class AlarmHistory {
 public:
  // Alarms are remembered up to so many, the newest ones.
  AlarmHistory(std::filesystem::path file, std::size_t most);

  // The serial number of the last alarm, before an answer is asked for.
  std::int64_t mark() { return readNew().last; }
  // An answer that ended early holds the first ones.
  Verdict judge(std::int64_t lastBefore, const Rows& rows, bool complete);

 private:
  struct Standing {
    std::int64_t first;
    std::int64_t last;
  };

  // Takes in what was raised since; what stands now.
  Standing readNew();
  // The serial number of each row's alarm, rising; fewer where a row is none.
  std::vector<std::int64_t> serialsOf(const Rows& rows);

  const std::size_t most_;
  std::mutex mutex_;  // guards all below
  systemtest::Inventory inventory_;
  std::int64_t last_ = 0;
  std::deque<std::pair<std::int64_t, std::size_t>> alarms_;  // serial number, hash of the row
  std::unordered_multimap<std::size_t, std::int64_t> serials_;
};

}  // namespace soak
