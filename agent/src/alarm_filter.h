// Which records of an alarm listing are shown: the options --severity, --device and --limit.
//
//   const AlarmFilter filter(arguments);
//   const auto shown = filter.shownOf(records);
//
// Thread-safety: immutable. Nothing fails on arguments that the command line has checked.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <type_traits>
#include <vector>

#include "arguments.h"
#include "emfalmrecords.h"

namespace ormaagent {

// The device that raised an alarm: the number in the first segment of its fdn, "NE=12,FR=1"; where
// there is none, its serial number.
std::int64_t deviceOf(const FaultRecord& alarm);

class AlarmFilter {
 public:
  // Takes the options that the command has.
  explicit AlarmFilter(const Arguments& arguments);

  // Those of the records that pass, in their order.
  template <class Records>
  std::list<typename Records::value_type> shownOf(const Records& records) const {
    std::list<typename Records::value_type> shown;
    for (const auto& record : records) {
      if (shown.size() == limit_) break;
      if (passes(record)) shown.push_back(record);
    }
    return shown;
  }

 private:
  bool passes(const FaultRecord& alarm) const {
    return has(severities_, alarm.severity) && has(devices_, deviceOf(alarm));
  }
  bool passes(const AlarmCfg& definition) const { return has(severities_, definition.severity); }
  bool passes(const AlarmReason&) const { return true; }

  // An option that was not given lets everything pass.
  static bool has(const std::vector<std::int64_t>& values, std::int64_t value) {
    return values.empty() || std::find(values.begin(), values.end(), value) != values.end();
  }

  std::vector<std::int64_t> severities_;
  std::vector<std::int64_t> devices_;
  std::size_t limit_;
};

}  // namespace ormaagent
