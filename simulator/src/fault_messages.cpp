#include "fault_messages.h"

#include <ctime>

namespace ormasim {
namespace {

constexpr BerType kInteger{BerKind::Integer};
constexpr BerType kOctets{BerKind::Octets};

template <std::size_t kCount>
constexpr BerType sequence(const BerField (&fields)[kCount]) {
  return {BerKind::Sequence, fields, kCount, nullptr};
}
constexpr BerType listOf(const BerType& element) {
  return {BerKind::SequenceOf, nullptr, 0, &element};
}

constexpr BerType kIntegers = listOf(kInteger);
constexpr BerType kOctetsList = listOf(kOctets);

constexpr BerField kTimeFields[] = {{"sYear", &kInteger},   {"cMonth", &kInteger},
                                    {"cDay", &kInteger},    {"cHour", &kInteger},
                                    {"cMinute", &kInteger}, {"cSecond", &kInteger}};
constexpr BerType kTime = sequence(kTimeFields);

constexpr BerField kKeyFields[] = {{"cDevType", &kInteger}, {"sAlmID", &kInteger}};
constexpr BerType kKey = sequence(kKeyFields);
constexpr BerType kKeys = listOf(kKey);

constexpr BerField kAddiInfoFields[] = {
    {"columnName", &kOctets}, {"type", &kInteger}, {"value", &kOctets}};
constexpr BerType kAddiInfo = sequence(kAddiInfoFields);
constexpr BerType kAddiInfos = listOf(kAddiInfo);

constexpr BerField kConditionFields[] = {{"strExtFieldName", &kOctets},
                                         {"lstStrExtFieldValue", &kOctetsList},
                                         {"ucExtFieldType", &kInteger},
                                         {"ucIsNotFalg", &kInteger},
                                         {"ucCompareType", &kInteger}};
constexpr BerType kCondition = sequence(kConditionFields);
constexpr BerType kConditions = listOf(kCondition);

constexpr BerField kRelationFields[] = {
    {"iRelation", &kInteger}, {"iDepend", &kInteger}, {"aResDN", &kOctetsList}};
constexpr BerType kRelation = sequence(kRelationFields);
constexpr BerType kRelations = listOf(kRelation);

constexpr BerField kResourceFields[] = {{"resDN", &kOctets},
                                        {"label", &kOctets, 0},
                                        {"maintype", &kInteger, 1},
                                        {"subtype", &kInteger, 2},
                                        {"iResNumber", &kInteger, 3},
                                        {"wholeLabel", &kOctets, 4},
                                        {"aResRelation", &kRelations, 5}};
constexpr BerType kResource = sequence(kResourceFields);
constexpr BerType kResources = listOf(kResource);

constexpr BerField kRequestFields[] = {
    {"ucTypeFlag", &kInteger},          {"lstSeverity", &kIntegers, 0},
    {"lstFunctionType", &kIntegers, 1}, {"lstEventType", &kIntegers, 2},
    {"lstStatus", &kIntegers, 3},       {"lstFaultID", &kKeys, 4},
    {"occurBeginTm", &kTime},           {"occurEndTm", &kTime},
    {"recoverBeginTm", &kTime, 5},      {"recoverEndTm", &kTime, 6},
    {"lstTopoOID", &kResources},        {"strPara", &kOctets},
    {"asnExtQryCon", &kConditions, 7},  {"rCorflag", &kInteger, 8},
    {"resTypeFlag", &kInteger, 9},      {"lstSerialNo", &kIntegers, 10},
    {"addiInfoList", &kAddiInfos, 11}};
constexpr BerType kRequest = sequence(kRequestFields);

std::tm brokenDown(std::int64_t seconds) {
  const std::time_t time = seconds;
  std::tm parts{};
  ::gmtime_r(&time, &parts);
  return parts;
}

// A time of a reply: years and months as people count them.
void writeTime(std::int64_t seconds, BerWriter& out, int context = kNoContext) {
  const std::tm parts = brokenDown(seconds);
  const std::size_t mark = out.size();
  out.integer(parts.tm_sec);
  out.integer(parts.tm_min);
  out.integer(parts.tm_hour);
  out.integer(parts.tm_mday);
  out.integer(parts.tm_mon + 1);
  out.integer(parts.tm_year + 1900);
  out.sequence(mark, context);
}

void writeAddiInfoList(const AlarmItem& item, BerWriter& out, int context) {
  const std::size_t list = out.size();
  const std::size_t info = out.size();
  out.octets(item.deviceName);
  out.integer(0);
  out.octets("deviceName");
  out.sequence(info);
  out.sequence(list, context);
}

// A time of a request counts years from 1900 and months from 0, unlike that of a reply: meant so.
std::optional<std::int64_t> timeOf(const BerValue& time) {
  const auto part = [&time](const char* name) {
    return static_cast<int>(time.member(name).number);
  };
  std::tm parts{};
  parts.tm_year = part("sYear");
  parts.tm_mon = part("cMonth");
  parts.tm_mday = part("cDay");
  parts.tm_hour = part("cHour");
  parts.tm_min = part("cMinute");
  parts.tm_sec = part("cSecond");
  if (parts.tm_year == -1) return std::nullopt;
  return ::timegm(&parts);
}

}  // namespace

void writeItem(const AlarmItem& item, bool bare, BerWriter& out) {
  const bool acknowledged = !bare && item.ackedAt != 0;
  const std::size_t mark = out.size();
  out.integer(0);  // rootCauseAlarmIndication
  if (!bare) writeAddiInfoList(item, out, 4);
  out.octets(item.description);  // strDetail
  out.octets(item.parameters);
  if (!bare && !item.fdn.empty()) out.octets(item.fdn, 5);
  out.octets(item.location);
  if (acknowledged) out.octets(item.ackedBy, 3);
  out.integer(0);  // neZone
  if (acknowledged) writeTime(item.ackedAt, out, 1);
  writeTime(item.raisedAt, out);
  if (!bare) out.integer(1, 0);  // ucFaultFlag
  out.octets(item.description);  // strMeaning
  out.octets(item.repairAction);
  out.octets(item.causes);
  out.integer(item.reasonId);
  out.octets(item.name);
  out.integer(item.eventType);
  out.integer(item.functionType);
  out.integer(item.severity);
  out.integer(item.alarmId);
  out.integer(item.groupId);
  out.integer(item.deviceId);
  out.integer(item.nodeType);
  out.integer(item.deviceId);
  out.integer(item.serialNo);
  out.sequence(mark);
}

void closeReply(const ReplyHead& head, BerWriter& out) {
  out.sequence(0);
  out.integer(head.frameNo);
  out.integer(head.frameTotal);
  out.integer(head.errorCode);
  out.sequence(0);
}

std::optional<std::int64_t> readRequest(std::uint32_t command, std::string_view body,
                                        Tagging tagging) {
  const BerValue request = readBer(body, kRequest, tagging);
  return command == kAlarmsSince ? timeOf(request.member("occurBeginTm")) : std::nullopt;
}

}  // namespace ormasim
