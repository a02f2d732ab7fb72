// The operations that read the alarm catalogues.
#include "emfalminterface.h"
#include "rest_operation_groups.h"

namespace emf::faults {
namespace {

// Two pages of a catalogue of 5001; their numbers are the service's word.
template <typename Record>
RestOperation catalogue(const std::string& name, const std::string& failureLine,
                        std::vector<Exchange> pages, const std::string& closing,
                        std::int64_t (*operation)(std::vector<Record>&)) {
  RestOperation row{name, "definitions", {"0", "1", "0", ""}, std::move(pages), [operation] {
                      return appended(std::vector<Record>(1), operation);
                    }};
  for (Exchange& page : row.exchanges) {
    page.answer = R"({"totalCount":5001,"definitions":[)" + page.answer + "]}";
    page.failureLine = failureLine;
  }
  row.before = {earlier<Record>()};
  row.closing = {closing};
  row.counted = true;
  row.throws = {kLogicError};
  return row;
}

Exchange definition(const std::string& id) {
  return {R"({"alarmGroupId":"1","alarmId":")" + id +
              R"(","eventType":1,"severity":2,"alarmName":"A)" + id + R"(","description":"d"})",
          {"1|" + id + "|1|2|0|A" + id + "|d"}};
}

Exchange reason(const std::string& id) {
  return {R"({"alarmGroupId":"1","alarmId":"7","reasonId":)" + id +
              R"(,"causes":"c","repairAction":"r"})",
          {"1|7|" + id + "|c|r"}};
}

void addAlarms(std::vector<RestOperation>& all) {
  all.push_back(catalogue<AlarmCfg>(
      "EMFAlarmI::getAllAlarmCfg",
      "[NBIHTTPProxy::QueryAlarmDefinitionInfo]:call rest interface failed!",
      {definition("7"), definition("8")}, "-999|-999|0|0|0||", EMFAlarmI::getAllAlarmCfg));
  all.push_back(catalogue<AlarmReason>(
      "EMFAlarmI::getAllAlarmReason",
      "[NBIHTTPProxy::getAllAlarmReason]:call rest interface failed!", {reason("3"), reason("4")},
      "-999|-999|-999||", EMFAlarmI::getAllAlarmReason));
  RestOperation redefined{
      "EMFAlarmI::getRedefineAlarmInfo",
      "rows",
      {"0", "1", "1", "1"},
      {{R"({"count":1,"rows":[{"alarmGroupId":"1","alarmId":"7",)"
        R"("newSeverity":2,"OldLevel":1,"Name":"LINK_DOWN"}]})",
        {"1|7|0|2|1|LINK_DOWN|"}}},
      [] { return appended(std::vector<AlarmCfg>(1), EMFAlarmI::getRedefineAlarmInfo); }};
  redefined.before = {earlier<AlarmCfg>()};
  redefined.throws = {kLogicError};
  all.push_back(redefined);
}

}  // namespace

void addAlarmOperations(std::vector<RestOperation>& all) { addAlarms(all); }

}  // namespace emf::faults
