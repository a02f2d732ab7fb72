// Alarms, their definitions and reasons.
#include <list>
#include <vector>

#include "alarm_filter.h"
#include "emfalminterface.h"
#include "operations.h"
#include "utc_time.h"
#include "waiting_line.h"

namespace ormaagent {

namespace {

constexpr std::int32_t kClosingId = -999;

// The words and the level behind the fields are what the record's own operations make of them.
constexpr Column<FaultRecord> kAlarm[] = {
    {"auxValue1", fieldOf<&FaultRecord::auxValue1>},
    {"auxValue2", fieldOf<&FaultRecord::auxValue2>},
    {"auxText1", fieldOf<&FaultRecord::auxText1>},
    {"auxText2", fieldOf<&FaultRecord::auxText2>},
    {"devSerialNo", fieldOf<&FaultRecord::devSerialNo>},
    {"nodeType", fieldOf<&FaultRecord::nodeType>},
    {"devType", fieldOf<&FaultRecord::devType>},
    {"eventType", fieldOf<&FaultRecord::eventType>},
    {"severity", fieldOf<&FaultRecord::severity>},
    {"functionType", fieldOf<&FaultRecord::functionType>},
    {"faultId", fieldOf<&FaultRecord::faultId>},
    {"reasonId", fieldOf<&FaultRecord::reasonId>},
    {"faultTime", [](const FaultRecord& alarm) -> Value { return utcTime(alarm.faultTime); }},
    {"fdn", fieldOf<&FaultRecord::fdn>},
    {"para", fieldOf<&FaultRecord::para>},
    {"faultFlag", fieldOf<&FaultRecord::faultFlag>},
    {"class", [](const FaultRecord& alarm) -> Value { return alarm.alarmClass2Str(); }},
    {"function", [](const FaultRecord& alarm) -> Value { return alarm.alarmFunc2Str(); }},
    {"level",
     [](const FaultRecord& alarm) -> Value { return std::int64_t{alarm.alarmLevel2TMF()}; }},
};

constexpr Column<AlarmCfg> kDefinition[] = {
    {"alarmGroupId", fieldOf<&AlarmCfg::alarmGroupId>},
    {"alarmId", fieldOf<&AlarmCfg::alarmId>},
    {"eventType", fieldOf<&AlarmCfg::eventType>},
    {"alarmClass", fieldOf<&AlarmCfg::alarmClass>},
    {"alarmFunc", fieldOf<&AlarmCfg::alarmFunc>},
    {"severity", fieldOf<&AlarmCfg::severity>},
    {"oldSeverity", fieldOf<&AlarmCfg::oldSeverity>},
    {"auxText", fieldOf<&AlarmCfg::auxText>},
    {"auxValue1", fieldOf<&AlarmCfg::auxValue1>},
    {"alarmName", fieldOf<&AlarmCfg::alarmName>},
    {"description", fieldOf<&AlarmCfg::description>},
    {"auxValue2", fieldOf<&AlarmCfg::auxValue2>},
    {"class", [](const AlarmCfg& definition) -> Value { return definition.alarmClass2Str(); }},
    {"function", [](const AlarmCfg& definition) -> Value { return definition.alarmFunc2Str(); }},
    {"level",
     [](const AlarmCfg& definition) -> Value { return std::int64_t{definition.alarmLevel2TMF()}; }},
};

constexpr Column<AlarmReason> kReason[] = {
    {"alarmGroupId", fieldOf<&AlarmReason::alarmGroupId>},
    {"alarmId", fieldOf<&AlarmReason::alarmId>},
    {"reasonId", fieldOf<&AlarmReason::reasonId>},
    {"causes", fieldOf<&AlarmReason::causes>},
    {"repairAction", fieldOf<&AlarmReason::repairAction>},
};

// The answer of those records that the command's options let pass.
template <class Record, std::size_t count, class Records>
Answer filteredAnswer(std::int64_t result, const Column<Record> (&columns)[count],
                      const Records& records, const Arguments& arguments) {
  const auto shown = AlarmFilter(arguments).shownOf(records);
  Answer answer = answerOf(result, columns, shown);
  answer.leftOut = records.size() - shown.size();
  return answer;
}

// The same of a catalogue, which a successful read ends by a record of its own: it is no element,
// so no option leaves it out.
template <class Record, std::size_t count>
Answer catalogueAnswer(std::int64_t result, const Column<Record> (&columns)[count],
                       std::vector<Record>& records, const Arguments& arguments) {
  std::vector<Record> closing;
  if (result == 0 && !records.empty() && records.back().alarmId == kClosingId) {
    closing.push_back(records.back());
    records.pop_back();
  }
  Answer answer = filteredAnswer(result, columns, records, arguments);
  for (auto& record : answerOf(result, columns, closing).records) {
    answer.records.push_back(std::move(record));
  }
  answer.closingRecords = closing.size();
  return answer;
}

}  // namespace

Answer alarmCurrent(const Arguments& arguments) {
  std::list<FaultRecord> alarms;
  const WaitingLine line("Reading the alarms");
  const std::int64_t result = EMFAlarmI::getAllAlarms(alarms);
  return filteredAnswer(result, kAlarm, alarms, arguments);
}

Answer alarmEvents(const Arguments& arguments) {
  std::list<FaultRecord> events;
  const WaitingLine line("Reading the events");
  const std::int64_t result = EMFAlarmI::getAllEvents(events, arguments.number<unsigned int>(0));
  return filteredAnswer(result, kAlarm, events, arguments);
}

Answer alarmDefinitions(const Arguments& arguments) {
  std::vector<AlarmCfg> definitions;
  const WaitingLine line("Reading the alarm definitions");
  const std::int64_t result = EMFAlarmI::getAllAlarmCfg(definitions);
  return catalogueAnswer(result, kDefinition, definitions, arguments);
}

Answer alarmReasons(const Arguments& arguments) {
  std::vector<AlarmReason> reasons;
  const WaitingLine line("Reading the alarm reasons");
  const std::int64_t result = EMFAlarmI::getAllAlarmReason(reasons);
  return catalogueAnswer(result, kReason, reasons, arguments);
}

Answer alarmRedefined(const Arguments& arguments) {
  std::vector<AlarmCfg> redefined;
  const std::int64_t result = EMFAlarmI::getRedefineAlarmInfo(redefined);
  return filteredAnswer(result, kDefinition, redefined, arguments);
}

}  // namespace ormaagent
