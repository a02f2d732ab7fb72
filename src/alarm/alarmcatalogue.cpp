// The catalogues of alarm definitions and reasons: one way of reading for both.
#include <json/value.h>

#include <utility>

#include "alarmjson.h"
#include "emfalminterface.h"
#include "emfglobal.h"
#include "orma/rest/nbi_http_proxy.h"
#include "resourcenames.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emfalminterface";

constexpr std::int64_t kSuccess = 0;
constexpr std::int64_t kReadFailed = 1;

constexpr std::uint32_t kPageSize = 5000;
constexpr std::int32_t kClosingId = -999;

// One member of a catalogue element, and how it becomes a field.
template <class Record>
struct Member {
  const char* key;
  void (*read)(const Json::Value& value, Record& record);
};

// Identifiers come as texts, the other numbers as numbers: meant so.
template <class Record, std::int32_t Record::*field>
void identifier(const Json::Value& value, Record& record) {
  record.*field = emf::textNumber(value);
}

template <class Record, std::int32_t Record::*field>
void number(const Json::Value& value, Record& record) {
  record.*field = static_cast<std::int32_t>(value.asInt64());
}

template <class Record, std::string Record::*field>
void text(const Json::Value& value, Record& record) {
  if (const char* bytes = value.asCString()) record.*field = ToNorthCharset(bytes);
}

struct Definitions {
  using Record = AlarmCfg;
  static constexpr auto kQuery = NS_UTIL::NBIHTTPProxy::QueryAlarmDefinitionInfo;
  static constexpr Member<AlarmCfg> kMembers[] = {
      {"alarmId", identifier<AlarmCfg, &AlarmCfg::alarmId>},
      {"alarmGroupId", identifier<AlarmCfg, &AlarmCfg::alarmGroupId>},
      {"eventType", number<AlarmCfg, &AlarmCfg::eventType>},
      {"severity", number<AlarmCfg, &AlarmCfg::severity>},
      {"alarmName", text<AlarmCfg, &AlarmCfg::alarmName>},
      {"description", text<AlarmCfg, &AlarmCfg::description>},
  };
  static constexpr char kFailed[] =
      "[NBIHTTPProxy::QueryAlarmDefinitionInfo]:call rest interface failed!";
  static constexpr char kTotal[] =
      "[EMFAlarmI::getAllAlarmCfg]:get totalCount by rest interface is: %d";
  // The blank at its end is meant.
  static constexpr char kDone[] = "[EMFAlarmI::getAllAlarmCfg]:Static Data amount: %d ";

  static void markClosing(AlarmCfg& record) {
    record.alarmGroupId = kClosingId;
    record.alarmId = kClosingId;
  }
};

struct Reasons {
  using Record = AlarmReason;
  static constexpr auto kQuery = NS_UTIL::NBIHTTPProxy::QueryAlarmReasonInfo;
  static constexpr Member<AlarmReason> kMembers[] = {
      {"alarmGroupId", identifier<AlarmReason, &AlarmReason::alarmGroupId>},
      {"alarmId", identifier<AlarmReason, &AlarmReason::alarmId>},
      {"reasonId", number<AlarmReason, &AlarmReason::reasonId>},
      {"causes", text<AlarmReason, &AlarmReason::causes>},
      {"repairAction", text<AlarmReason, &AlarmReason::repairAction>},
  };
  // Names the reading operation, not the query, unlike the text of the definitions: meant so.
  static constexpr char kFailed[] = "[NBIHTTPProxy::getAllAlarmReason]:call rest interface failed!";
  static constexpr char kTotal[] =
      "[EMFAlarmI::getAllAlarmReason]:get totalCount by rest interface is: %d";
  static constexpr char kDone[] = "[EMFAlarmI::getAllAlarmReason]:Static Data amount: %d";

  static void markClosing(AlarmReason& record) {
    record.alarmGroupId = kClosingId;
    record.alarmId = kClosingId;
    record.reasonId = kClosingId;
  }
};

template <class Catalogue>
bool readPage(std::uint64_t offset, Json::Value& answer) {
  if (Catalogue::kQuery(answer, emf::pageRequest(offset, kPageSize))) return true;
  EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1, Catalogue::kFailed);
  return false;
}

// The size of the catalogue, cut to 32 bits; 0 when the answer does not tell.
template <class Catalogue>
std::uint32_t totalOf(const Json::Value& answer) {
  const Json::Value& count = emf::memberOf(answer, "totalCount");
  if (count.isNull()) return 0;
  const auto total = static_cast<std::uint32_t>(count.asInt64());
  EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1, Catalogue::kTotal, static_cast<int>(total));
  return total;
}

template <class Catalogue, class Record = typename Catalogue::Record>
Record recordOf(const Json::Value& element) {
  Record record;
  for (const Member<Record>& member : Catalogue::kMembers) {
    const Json::Value& value = emf::memberOf(element, member.key);
    if (!value.isNull()) member.read(value, record);
  }
  return record;
}

// Appends a record for each element; an answer of another form has none.
template <class Catalogue>
void appendPage(Json::Value& answer, std::vector<typename Catalogue::Record>& out) {
  if (!answer.isObject()) return;
  for (Json::Value& element : answer["definitions"]) {
    out.push_back(recordOf<Catalogue>(element));
    Json::Value().swap(element);  // freed while the processor's caches still hold it
  }
}

// Appends the whole catalogue but for the closing record; false when a page could not be read.
// The first answer's total decides how many pages are asked for.
template <class Catalogue>
bool readAll(std::vector<typename Catalogue::Record>& out) {
  Json::Value first;
  if (!readPage<Catalogue>(0, first)) return false;
  const std::uint32_t total = totalOf<Catalogue>(first);
  if (total == 0) return true;
  appendPage<Catalogue>(first, out);
  for (std::uint64_t offset = kPageSize; offset < total; offset += kPageSize) {
    Json::Value answer;
    if (!readPage<Catalogue>(offset, answer)) return false;
    appendPage<Catalogue>(answer, out);
  }
  return true;
}

template <class Catalogue>
std::int64_t getCatalogue(std::vector<typename Catalogue::Record>& out) {
  if (!readAll<Catalogue>(out)) return kReadFailed;
  typename Catalogue::Record closing;
  Catalogue::markClosing(closing);
  out.push_back(std::move(closing));
  EMF_LOG(GetDomainLog(), kSourceName, LogFormat, 1, Catalogue::kDone,
          static_cast<int>(out.size()));
  return kSuccess;
}

}  // namespace

std::int64_t EMFAlarmI::getAllAlarmCfg(std::vector<AlarmCfg>& out) {
  emf::WatchedCall call("EMFAlarmI::getAllAlarmCfg");
  return call.result(getCatalogue<Definitions>(out));
}

std::int64_t EMFAlarmI::getAllAlarmReason(std::vector<AlarmReason>& out) {
  emf::WatchedCall call("EMFAlarmI::getAllAlarmReason");
  return call.result(getCatalogue<Reasons>(out));
}
