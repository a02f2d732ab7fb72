#include <json/value.h>

#include <string>

#include "alarmcodes.h"
#include "alarmjson.h"
#include "emfalminterface.h"
#include "emfglobal.h"
#include "orma/rest/nbi_http_proxy.h"
#include "processexception.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emfalminterface";

constexpr std::int64_t kSuccess = 0;
constexpr std::int64_t kNothingToRead = 1;

// One page, from the first row as this service counts; further rows are not asked for.
constexpr std::uint64_t kFirstRow = 1;
constexpr std::uint32_t kRows = 500;

// One member of a row, how it becomes a field, and what is logged when it is missing.
struct Member {
  const char* key;
  void (*read)(const Json::Value& value, AlarmCfg& record);
  const char* missing;
};

template <std::int32_t AlarmCfg::*field>
void identifier(const Json::Value& value, AlarmCfg& record) {
  record.*field = emf::textNumber(value);
}

template <std::int32_t AlarmCfg::*field>
void severity(const Json::Value& value, AlarmCfg& record) {
  record.*field = emf::northSeverity(value.asInt());
}

// Not converted, unlike the name of a definition: meant so.
void name(const Json::Value& value, AlarmCfg& record) { record.alarmName = value.asCString(); }

// The keys' capitals are the service's.
constexpr Member kMembers[] = {
    {"alarmGroupId", identifier<&AlarmCfg::alarmGroupId>,
     "[getRedefineAlarmInfo] The field (GroupID) with no value!"},
    {"alarmId", identifier<&AlarmCfg::alarmId>,
     "[getRedefineAlarmInfo] The field (AlarmID) with no value!"},
    {"newSeverity", severity<&AlarmCfg::severity>,
     "[getRedefineAlarmInfo] The field (NewLevel) with no value!"},
    {"OldLevel", severity<&AlarmCfg::oldSeverity>,
     "[getRedefineAlarmInfo] The field (OldLevel) with no value!"},
    {"Name", name, "[getRedefineAlarmInfo] The field (Name) with no value!"},
};

AlarmCfg recordOf(const Json::Value& row) {
  AlarmCfg record;
  for (const Member& member : kMembers) {
    const Json::Value& value = emf::memberOf(row, member.key);
    if (value.isNull()) {
      EMF_LOG(GetDomainLog(), kSourceName, LogText, 1, member.missing);
    } else {
      member.read(value, record);
    }
  }
  return record;
}

// The answer names its rows by their index, beside "count".
std::int64_t readRows(std::vector<AlarmCfg>& out, emf::WatchedCall& call) {
  Json::Value answer;
  // Meant so: what cannot be read reads as nothing to read.
  if (!NS_UTIL::NBIHTTPProxy::QueryRedefineAlarmDataList(answer,
                                                         emf::pageRequest(kFirstRow, kRows))) {
    call.fail();
  }
  const int count = emf::memberOf(answer, "count").asInt();  // 0 of a null value
  if (count == 0) return kNothingToRead;
  for (int row = 0; row < count; ++row) {
    out.push_back(recordOf(emf::memberOf(answer, std::to_string(row).c_str())));
  }
  return kSuccess;
}

}  // namespace

// To who watches, nothing to read is no failure.
std::int64_t EMFAlarmI::getRedefineAlarmInfo(std::vector<AlarmCfg>& out) {
  emf::WatchedCall call("EMFAlarmI::getRedefineAlarmInfo");
  try {
    return readRows(out, call);
  } catch (const ProcessException& failure) {
    EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1,
            "[EMFAlarmI::getRedefineAlarmInfo]: Call getRedefineAlarmInfo catch processException! "
            "errorCode = %d",
            failure.errCode);
    call.fail();
    return kSuccess;  // a failure that reads as success: meant so
  }
}
