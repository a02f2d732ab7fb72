// Alarms, their definitions and reasons, and redefined severities.
#include <algorithm>
#include <iterator>
#include <list>

#include "emfalminterface.h"
#include "operation.h"

namespace soak {

namespace {

// The error code that the fault script puts into a frame, which otherwise is a good one.
constexpr std::int64_t kErrorInFrame = 5;
// What the script has the server refuse with, what the server tells when its database is locked for
// too long, and what the channel tells of broken exchanges.
constexpr std::int64_t kFailures[] = {1299, 1203, 6102, 6104, 6105, 6106, 6108, 6109};

bool isDocumented(const Answer& answer, bool exchangeFailed) {
  if (answer.how() != "ProcessException") return false;
  if (answer.result == kErrorInFrame) return true;
  return exchangeFailed && std::find(std::begin(kFailures), std::end(kFailures), answer.result) !=
                               std::end(kFailures);
}

template <class Call>
Verdict askAlarms(Context& context, const Call& call) {
  const std::uint64_t failed = failedExchanges();
  const std::int64_t last = context.alarms.mark();
  std::list<FaultRecord> alarms;
  const Answer answer = ask([&] { return call(alarms); });
  context.alarmsReceived += alarms.size();
  const bool complete = answer.how() == "result 0";
  const bool documented = isDocumented(answer, failedExchanges() != failed);
  if (!complete && !documented) {
    return wrong("expected result 0, got " + answer.how() + " " + std::to_string(answer.result));
  }
  return context.alarms.judge(last, rowsOf(alarms), complete);
}

Verdict getAllAlarms(Context& context) {
  return askAlarms(context, [](auto& alarms) { return EMFAlarmI::getAllAlarms(alarms); });
}

// The time has no effect: all current alarms come.
Verdict getAllEvents(Context& context) {
  const auto seconds = static_cast<unsigned int>(context.below(3600));
  return askAlarms(context, [&](auto& alarms) { return EMFAlarmI::getAllEvents(alarms, seconds); });
}

Verdict getAllAlarmCfg(Context& context) {
  std::vector<AlarmCfg> definitions;
  Expected expected(0, context.network.definitions);
  expected.orElse("result 1", Part::kBeginning).orSpoilt(Part::kBeginning);
  return context.check([&] { return EMFAlarmI::getAllAlarmCfg(definitions); },
                       [&] { return rowsOf(definitions); }, expected);
}

Verdict getAllAlarmReason(Context& context) {
  std::vector<AlarmReason> reasons;
  Expected expected(0, context.network.reasons);
  expected.orElse("result 1", Part::kBeginning).orSpoilt(Part::kBeginning);
  return context.check([&] { return EMFAlarmI::getAllAlarmReason(reasons); },
                       [&] { return rowsOf(reasons); }, expected);
}

Verdict getRedefineAlarmInfo(Context& context) {
  std::vector<AlarmCfg> redefined;
  Expected expected(0, context.network.redefined);
  expected.orElse("result 1", Part::kNothing).orSpoilt(Part::kBeginning);
  return context.check([&] { return EMFAlarmI::getRedefineAlarmInfo(redefined); },
                       [&] { return rowsOf(redefined); }, expected);
}

}  // namespace

void addAlarmOperations(std::vector<Operation>& all) {
  all.insert(all.end(), {{"EMFAlarmI::getAllAlarms", 2, getAllAlarms},
                         {"EMFAlarmI::getAllEvents", 1, getAllEvents},
                         {"EMFAlarmI::getAllAlarmCfg", 1, getAllAlarmCfg},
                         {"EMFAlarmI::getAllAlarmReason", 1, getAllAlarmReason},
                         {"EMFAlarmI::getRedefineAlarmInfo", 5, getRedefineAlarmInfo}});
}

}  // namespace soak
