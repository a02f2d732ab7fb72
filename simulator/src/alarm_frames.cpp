#include "alarm_frames.h"

#include <algorithm>
#include <limits>

namespace ormasim {
namespace {

constexpr char kAlarms[] =
    "FROM alarm WHERE serial_no > ?1 AND serial_no <= ?2 AND raised_at >= ?3 ";

constexpr char kColumns[] =
    "SELECT a.serial_no, a.dev_id, d.main_type * 65536 + d.sub_type, a.group_id, a.alarm_id, "
    "a.severity, k.function_type, k.event_type, a.reason_id, a.raised_at, a.acked_at, a.acked_by, "
    "k.name, r.causes, r.repair_action, k.description, a.location, a.fdn, a.para, d.name "
    "FROM alarm a JOIN device d USING (dev_id) "
    "JOIN alarm_definition k USING (group_id, alarm_id) "
    "JOIN alarm_reason r USING (group_id, alarm_id, reason_id) "
    "WHERE a.serial_no > ?1 AND a.serial_no <= ?2 AND a.raised_at >= ?3 "
    "ORDER BY a.serial_no DESC";

}  // namespace

AlarmFrames::AlarmFrames(Database& database, const FrameOptions& options,
                         std::optional<std::int64_t> raisedSince)
    : options_(options),
      pageEnd_(database, "SELECT max(serial_no) FROM (SELECT serial_no " + std::string(kAlarms) +
                             "ORDER BY serial_no LIMIT ?4)"),
      rows_(database, kColumns),
      out_(options.tagging),
      since_(raisedSince.value_or(std::numeric_limits<std::int64_t>::min())) {
  Statement count(database, "SELECT count(*), coalesce(max(serial_no), 0) " + std::string(kAlarms));
  count.bindAll(std::int64_t{0}, std::numeric_limits<std::int64_t>::max(), since_);
  count.step();
  total_ = (count.integer(0) + options_.items - 1) / options_.items;
  through_ = count.integer(1);
}

std::string_view AlarmFrames::next(const FrameSpoiling& spoiling) {
  out_.clear();
  pageEnd_.bindAll(last_, through_, since_, options_.items);
  pageEnd_.step();
  // No alarm is left when those not yet sent have been removed meanwhile.
  const std::int64_t pageEnd = std::max(pageEnd_.integer(0), last_);
  pageEnd_.reset();
  if (!spoiling.empty) writeItems(pageEnd, spoiling.bare);
  last_ = pageEnd;
  closeReply({spoiling.errorCode, total_, ++sent_}, out_);
  return out_.bytes();
}

// Backwards, as the message is written.
void AlarmFrames::writeItems(std::int64_t through, bool bare) {
  rows_.bindAll(last_, through, since_);
  while (rows_.step()) writeItem(item(), bare, out_);
  rows_.reset();
}

AlarmItem AlarmFrames::item() const {
  AlarmItem item;
  std::int64_t AlarmItem::*const numbers[] = {
      &AlarmItem::serialNo, &AlarmItem::deviceId, &AlarmItem::nodeType,     &AlarmItem::groupId,
      &AlarmItem::alarmId,  &AlarmItem::severity, &AlarmItem::functionType, &AlarmItem::eventType,
      &AlarmItem::reasonId, &AlarmItem::raisedAt, &AlarmItem::ackedAt};
  std::string_view AlarmItem::*const texts[] = {
      &AlarmItem::ackedBy,      &AlarmItem::name,        &AlarmItem::causes,
      &AlarmItem::repairAction, &AlarmItem::description, &AlarmItem::location,
      &AlarmItem::fdn,          &AlarmItem::parameters,  &AlarmItem::deviceName};
  int column = 0;
  for (const auto number : numbers) item.*number = rows_.integer(column++);
  for (const auto text : texts) item.*text = rows_.text(column++);
  return item;
}

}  // namespace ormasim
