#include "alarm_history.h"

#include <algorithm>
#include <functional>
#include <string>

namespace soak {

namespace {

constexpr char kAlarmRow[] =
    "a.dev_id || '|' || (d.main_type * 65536 + d.sub_type) || '|' || a.group_id || '|' || "
    "k.event_type || '|' || a.severity || '|' || k.function_type || '|' || a.alarm_id || '|' || "
    "a.reason_id || '|' || strftime('%Y-%m-%dT%H:%M:%SZ', a.raised_at, 'unixepoch') || '|' || "
    "a.fdn || '|' || a.para || '|1'";

std::size_t hashOf(const std::string& row) { return std::hash<std::string>()(row); }

}  // namespace

AlarmHistory::AlarmHistory(std::filesystem::path file, std::size_t most)
    : most_(most), inventory_(file) {
  inventory_.rows("PRAGMA busy_timeout = 60000");
}

AlarmHistory::Standing AlarmHistory::readNew() {
  const std::lock_guard lock(mutex_);
  for (const auto& row : inventory_.rows(
           std::string("SELECT a.serial_no, ") + kAlarmRow +
           " FROM alarm a JOIN device d USING (dev_id) JOIN alarm_definition k USING (group_id, "
           "alarm_id) WHERE a.serial_no > " +
           std::to_string(last_) + " ORDER BY a.serial_no")) {
    last_ = std::stoll(row[0]);
    alarms_.emplace_back(last_, hashOf(row[1]));
    serials_.emplace(alarms_.back().second, last_);
  }
  while (alarms_.size() > most_) {
    const auto [first, end] = serials_.equal_range(alarms_.front().second);
    serials_.erase(std::find_if(
        first, end, [&](const auto& entry) { return entry.second == alarms_.front().first; }));
    alarms_.pop_front();
  }
  const auto standing =
      inventory_.rows("SELECT coalesce(min(serial_no), 0), coalesce(max(serial_no), 0) FROM alarm");
  return {std::stoll(standing[0][0]), std::stoll(standing[0][1])};
}

std::vector<std::int64_t> AlarmHistory::serialsOf(const Rows& rows) {
  const std::lock_guard lock(mutex_);
  std::vector<std::int64_t> serials;
  serials.reserve(rows.size());
  std::int64_t before = 0;
  for (const std::string& row : rows) {
    // Of several equal alarms the first one that is left.
    std::int64_t serial = 0;
    const auto [first, end] = serials_.equal_range(hashOf(row));
    for (auto entry = first; entry != end; ++entry) {
      const bool nearer = serial == 0 || entry->second < serial;
      if (entry->second > before && nearer) serial = entry->second;
    }
    if (serial == 0) break;
    serials.push_back(serial);
    before = serial;
  }
  return serials;
}

Verdict AlarmHistory::judge(std::int64_t lastBefore, const Rows& rows, bool complete) {
  const Standing standing = readNew();
  const std::vector<std::int64_t> serials = serialsOf(rows);
  if (serials.size() < rows.size()) {
    return wrong("row " + std::to_string(serials.size()) +
                 " is no alarm that was raised behind the one before it: \"" +
                 rows[serials.size()] + "\"");
  }
  // What stood before and stands now has to be there, up to where an answer ended early.
  const std::int64_t last = complete ? lastBefore : (serials.empty() ? 0 : serials.back());
  std::int64_t wanted = standing.first;
  for (const std::int64_t serial : serials) {
    if (serial > wanted && wanted <= last) break;
    wanted = std::max(wanted, serial + 1);
  }
  if (wanted <= std::min(last, standing.last)) {
    return wrong("the alarm " + std::to_string(wanted) + " is missing among " +
                 std::to_string(rows.size()) + "; those from " + std::to_string(standing.first) +
                 " to " + std::to_string(last) + " stood all the time");
  }
  return {complete ? Verdict::kRight : Verdict::kFailed, ""};
}

}  // namespace soak
