#include "alarm_filter.h"

#include <limits>
#include <string_view>

namespace ormaagent {

namespace {

std::vector<std::int64_t> numbersOf(const Arguments& arguments, const char* option) {
  std::vector<std::int64_t> numbers;
  if (!arguments.hasRepeatedOption(option)) return numbers;
  for (const std::string& text : arguments.repeatedOption(option)) {
    numbers.push_back(parseNumber<std::int64_t>(text).value());
  }
  return numbers;
}

// 0 stands for all.
std::size_t limitOf(const Arguments& arguments) {
  const auto limit = arguments.numberOption<std::size_t>("--limit");
  return limit != 0 ? limit : std::numeric_limits<std::size_t>::max();
}

}  // namespace

std::int64_t deviceOf(const FaultRecord& alarm) {
  const std::string_view fdn = alarm.fdn;
  const std::string_view first = fdn.substr(0, fdn.find(','));
  const std::size_t equals = first.find('=');
  if (equals == std::string_view::npos) return alarm.devSerialNo;
  return parseNumber<std::int64_t>(first.substr(equals + 1)).value_or(alarm.devSerialNo);
}

AlarmFilter::AlarmFilter(const Arguments& arguments)
    : severities_(numbersOf(arguments, "--severity")),
      devices_(numbersOf(arguments, "--device")),
      limit_(limitOf(arguments)) {}

}  // namespace ormaagent
