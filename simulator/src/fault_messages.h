// The messages between an agent and the fault server, stated from
// docs/formats/alarm_exchange.asn1.
//
// Thread-safety: thread-safe functions; values are thread-compatible. Failure: BadMessage.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "ber_value.h"
#include "ber_writer.h"

namespace ormasim {

constexpr std::uint32_t kAlarmsSince = 2157;
constexpr std::uint32_t kAllAlarms = 2158;

// One alarm of a reply. Texts are borrowed.
struct AlarmItem {
  std::int64_t serialNo = 0;
  std::int64_t deviceId = 0;
  std::int64_t nodeType = 0;
  std::int64_t groupId = 0;
  std::int64_t alarmId = 0;
  std::int64_t severity = 0;
  std::int64_t functionType = 0;
  std::int64_t eventType = 0;
  std::int64_t reasonId = 0;
  std::int64_t raisedAt = 0;  // seconds since 1970, UTC
  std::int64_t ackedAt = 0;   // 0: not acknowledged
  std::string_view ackedBy;
  std::string_view name;
  std::string_view causes;
  std::string_view repairAction;
  std::string_view description;
  std::string_view location;
  std::string_view fdn;  // empty: left out
  std::string_view parameters;
  std::string_view deviceName;
};

// Writes the item in front of what is there. A bare one has no optional field.
void writeItem(const AlarmItem& item, bool bare, BerWriter& out);

struct ReplyHead {
  std::int64_t errorCode = 0;
  std::int64_t frameTotal = 0;
  std::int64_t frameNo = 0;
};

// Makes everything in `out`, the items, one reply.
void closeReply(const ReplyHead& head, BerWriter& out);

// The time, in seconds since 1970, since which the request asks for alarms; none for all of them.
std::optional<std::int64_t> readRequest(std::uint32_t command, std::string_view body,
                                        Tagging tagging);

}  // namespace ormasim
