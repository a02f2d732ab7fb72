// EMFAlarmI and its records.
#include "alarm_records.h"
#include "catalogue_service.h"
#include "emfalminterface.h"
#include "faultmessages.h"
#include "operation.h"
#include "platform.h"

namespace emf::torture {
namespace {

using doubles::json;
using doubles::platform;

// Texts are longer than what a std::string holds without memory.
const std::string kLongText = " and a text that takes memory of its own";

// --- Current alarms

void frame(int number, int total, const std::vector<int>& ids) {
  AsnSvrToOtherQryResp reply;
  reply.ulFrameNo = number;
  reply.ulFrameTotal = total;
  for (const int id : ids) {
    auto& item = reply.lstItem.add();
    item.ulDevSerialNo = id;
    item.faultTime->sYear = 2024;
    item.faultTime->cMonth = 1;
    item.strFdn.make().ReSet(("NE=" + std::to_string(id) + kLongText).c_str());
    item.strPara.ReSet(kLongText.c_str());
    item.strReason.ReSet("not read");
  }
  platform().channel.frame(reply);
}

void scriptFrames() {
  frame(1, 2, {1, 2});
  frame(2, 2, {3});
  platform().channel.ends();
}

FaultRecord alarmOf(int id) {
  FaultRecord record;
  record.devSerialNo = id;
  record.faultTime.tm_year = 124;
  record.faultTime.tm_mon = 0;
  record.faultTime.tm_wday = record.faultTime.tm_yday = record.faultTime.tm_isdst = -1;
  record.fdn = "NE=" + std::to_string(id) + kLongText;
  record.para = kLongText;
  record.faultFlag = 1;
  return record;
}

const std::list<FaultRecord> kAlarmBefore = {alarmOf(9)};
const std::list<FaultRecord> kAlarms = {alarmOf(9), alarmOf(1), alarmOf(2), alarmOf(3)};

// A send that failed is what the receiving tells, and here the receiving goes well.
const std::map<std::string, Texts> kChannelOutages = {
    {"command", {kNoMemory}},
    {"receive", {"throws ProcessException 6105", "0", "throws CSM_Exception"}},
};

// --- Catalogues: two pages by the total, of two elements each

void scriptCatalogue() {
  platform().alarms.answersBy([](const doubles::AlarmQuery& query, Json::Value& answer) {
    const int offset = json(query.body)["offset"].asInt();
    answer["totalCount"] = 5002;
    for (int index = offset; index < offset + 2; ++index) {
      Json::Value element = test::CatalogueService::element(index);
      element["description"] = element["repairAction"] = kLongText;
      answer["definitions"].append(element);
    }
    return true;
  });
}

AlarmCfg definitionOf(int index) {
  AlarmCfg record;
  record.alarmId = record.alarmGroupId = record.eventType = record.severity = index;
  record.alarmName = "name " + std::to_string(index);
  record.description = kLongText;
  return record;
}

AlarmReason reasonOf(int index) {
  AlarmReason record;
  record.alarmId = record.alarmGroupId = record.reasonId = index;
  record.causes = "name " + std::to_string(index);
  record.repairAction = kLongText;
  return record;
}

AlarmCfg closingDefinition() {
  AlarmCfg record;
  record.alarmId = record.alarmGroupId = -999;
  return record;
}

AlarmReason closingReason() {
  AlarmReason record;
  record.alarmId = record.alarmGroupId = record.reasonId = -999;
  return record;
}

const std::vector<AlarmCfg> kDefinitionBefore = {definitionOf(7)};
const std::vector<AlarmCfg> kDefinitions = {definitionOf(7),    definitionOf(0),
                                            definitionOf(1),    definitionOf(5000),
                                            definitionOf(5001), closingDefinition()};
const std::vector<AlarmReason> kReasonBefore = {reasonOf(7)};
const std::vector<AlarmReason> kReasons = {reasonOf(7),    reasonOf(0),    reasonOf(1),
                                           reasonOf(5000), reasonOf(5001), closingReason()};

// --- Redefined alarms

void scriptRedefined() {
  platform().alarms.answersBy([](const doubles::AlarmQuery&, Json::Value& answer) {
    answer["count"] = 3;
    for (const char* row : {"0", "1"}) {
      answer[row]["alarmGroupId"] = answer[row]["alarmId"] = row;
      answer[row]["newSeverity"] = 3;
      answer[row]["OldLevel"] = 4;
      answer[row]["Name"] = row + kLongText;
    }
    return true;  // the third row is missing, which is logged
  });
}

AlarmCfg redefinedOf(int row) {
  AlarmCfg record;
  record.alarmGroupId = record.alarmId = row;
  record.severity = 3;
  record.oldSeverity = 4;
  record.alarmName = std::to_string(row) + kLongText;
  return record;
}

const std::vector<AlarmCfg> kRedefined = {definitionOf(7), redefinedOf(0), redefinedOf(1),
                                          AlarmCfg()};

// --- Words of codes

template <class Record, class Method>
Operation word(const char* name, Method method, Record record, const std::string& text) {
  return {name,
          calling(scriptNothing, std::string(),
                  [method, record](std::string& out) {
                    const auto value = (record.*method)();
                    if constexpr (std::is_same_v<std::decay_t<decltype(value)>, const char*>) {
                      out = value;
                      return 0;
                    } else {
                      return static_cast<int>(value);
                    }
                  }),
          {text.empty() ? "1" : "0", {text}, {}},
          Left::kAnything};
}

FaultRecord codedFault() {
  FaultRecord record;
  record.eventType = record.functionType = record.severity = 1;
  record.faultFlag = 2;
  return record;
}

AlarmCfg codedDefinition() {
  AlarmCfg record;
  record.alarmClass = record.alarmFunc = record.severity = 1;
  return record;
}

}  // namespace

const std::vector<Operation>& alarmOperations() {
  static const std::vector<Operation> rows = {
      {"EMFAlarmI::getAllAlarms",
       calling(scriptFrames, kAlarmBefore, [](auto& out) { return EMFAlarmI::getAllAlarms(out); }),
       {"0", textsOf(kAlarms), {}},
       Left::kStart,
       kChannelOutages,
       {},
       {},
       1},
      {"EMFAlarmI::getAllEvents",
       calling(scriptFrames, kAlarmBefore,
               [](auto& out) { return EMFAlarmI::getAllEvents(out, 60); }),
       {"0", textsOf(kAlarms), {}},
       Left::kStart,
       kChannelOutages,
       {},
       {},
       1},
      {"EMFAlarmI::getAllAlarmCfg",
       calling(scriptCatalogue, kDefinitionBefore,
               [](auto& out) { return EMFAlarmI::getAllAlarmCfg(out); }),
       {"0", textsOf(kDefinitions), {}},
       Left::kSome,
       {{"alarm query", {"1", "0", "0", kNoMemory}}},
       {},
       {},
       1},
      {"EMFAlarmI::getAllAlarmReason",
       calling(scriptCatalogue, kReasonBefore,
               [](auto& out) { return EMFAlarmI::getAllAlarmReason(out); }),
       {"0", textsOf(kReasons), {}},
       Left::kSome,
       {{"alarm query", {"1", "0", "0", kNoMemory}}},
       {},
       {},
       1},
      {"EMFAlarmI::getRedefineAlarmInfo",
       calling(scriptRedefined, kDefinitionBefore,
               [](auto& out) { return EMFAlarmI::getRedefineAlarmInfo(out); }),
       {"0", textsOf(kRedefined), {}},
       Left::kStart,
       {{"alarm query", {"1", "1", "1", kNoMemory}}},
       {},
       {},
       1},
      word("FaultRecord::alarmClass2Str", &FaultRecord::alarmClass2Str, codedFault(),
           "communicationsAlarm"),
      word("FaultRecord::alarmFunc2Str", &FaultRecord::alarmFunc2Str, codedFault(), "power"),
      word("FaultRecord::alarmLevel2TMF", &FaultRecord::alarmLevel2TMF, codedFault(), ""),
      word("FaultRecord::isRecover", &FaultRecord::isRecover, codedFault(), ""),
      word("AlarmCfg::alarmClass2Str", &AlarmCfg::alarmClass2Str, codedDefinition(),
           "communicationsAlarm"),
      word("AlarmCfg::alarmFunc2Str", &AlarmCfg::alarmFunc2Str, codedDefinition(), "power"),
      word("AlarmCfg::alarmLevel2TMF", &AlarmCfg::alarmLevel2TMF, codedDefinition(), ""),
  };
  return rows;
}

}  // namespace emf::torture
