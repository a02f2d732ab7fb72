#include "alarms.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <limits>

#include "alarm_tables.h"
#include "equipment_tables.h"
#include "error.h"
#include "progress.h"

namespace ormasim {
namespace {

// 2026-01-01T00:00:00Z, and the year before it.
constexpr std::int64_t kGeneratedBefore = 1'767'225'600;
constexpr std::int64_t kGeneratedOver = 365 * 86'400;
constexpr std::uint64_t kElementsOfAnAlarm = 4;
// Of 100 alarms, those that somebody has acknowledged, those that name no resource, and the first
// of those that name a port of the device if it has any.
constexpr std::uint32_t kAcknowledged = 20;
constexpr std::uint32_t kWithoutResource = 5;
constexpr std::uint32_t kInTheDevice = 60;
constexpr std::int64_t kAcknowledgedAfter = 300;
// So many places are told apart among the resources of a device.
constexpr std::uint32_t kPlaces = 1000;
// The first resource of a main type from a place on.
constexpr char kResourceAt[] =
    "SELECT native_id FROM resource WHERE dev_id = ?1 AND main_type = ?2 AND seq * ?4 >= ?3 * "
    "(SELECT max(seq) FROM resource WHERE dev_id = ?1) ORDER BY seq LIMIT 1";

// Keeps a network's alarms apart from the network itself.
constexpr std::uint64_t kSeedStep = 0x9E6C63D0876A9A35u;

std::int64_t numberFrom(Database& database, const char* sql) {
  Statement number(database, sql);
  return number.step() ? number.integer(0) : 0;
}

// How often alarms are raised that come at a rate. A step makes up for as many as it raises anyhow,
// so that it never locks the database for long.
constexpr std::chrono::milliseconds kStep{100};
constexpr std::uint64_t kLargestStepsOfASecond = 5;
// Nobody waits for alarms that come at a rate: a reader that is slow does not end them.
constexpr int kLongBusyTimeoutMs = 60'000;

std::int64_t now() {
  const auto time = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(time).count();
}

// Each time other alarms, the same after the same history.
AlarmRaiser raiserFor(Database& database, const RaiseOptions& options) {
  const std::int64_t last = numberFrom(database, "SELECT coalesce(max(serial_no), 0) FROM alarm");
  AlarmRaiser raiser(database, static_cast<std::uint64_t>(last));
  if (raiser.devices() == 0) throw SimError("there are no devices in " + database.file());
  if (options.device) raiser.chooseDevice(*options.device);
  return raiser;
}

}  // namespace

AlarmRaiser::AlarmRaiser(Database& database, std::uint64_t seed)
    : database_(database),
      random_(seed),
      insert_(database, "INSERT INTO alarm VALUES (?,?,?,?,?,?,?,?,?,?,?,?)"),
      remove_(database, "DELETE FROM alarm WHERE serial_no <= ?"),
      port_(database, kResourceAt),
      serial_(numberFrom(database, "SELECT max(serial_no) FROM alarm")) {
  readDevices();
  readDefinitions();
}

void AlarmRaiser::readDevices() {
  Statement row(database_, "SELECT dev_id, main_type FROM device ORDER BY dev_id");
  while (row.step()) devices_.push_back({row.integer(0), row.integer(1)});
}

void AlarmRaiser::readDefinitions() {
  definitions_.resize(kLastAlarmGroup + 1);
  Statement row(database_,
                "SELECT group_id, alarm_id, severity, (SELECT count(*) FROM alarm_reason r WHERE "
                "r.group_id = d.group_id AND r.alarm_id = d.alarm_id) FROM alarm_definition d "
                "WHERE group_id BETWEEN ? AND ? ORDER BY seq");
  row.bindAll(kFirstAlarmGroup, kLastAlarmGroup);
  while (row.step()) {
    definitions_[static_cast<std::size_t>(row.integer(0))].push_back(
        {row.integer(1), row.integer(2), row.integer(3)});
  }
}

void AlarmRaiser::chooseDevice(std::int64_t id) {
  for (const Device& device : devices_) {
    if (device.id != id) continue;
    devices_ = {device};
    return;
  }
  throw SimError("there is no device " + std::to_string(id) + " in " + database_.file() +
                 "; its ids stand in table device");
}

void AlarmRaiser::raise(std::int64_t time) {
  if (devices_.empty()) return;
  const Device device = devices_[random_.below(static_cast<std::uint32_t>(devices_.size()))];
  const bool known = device.group >= kFirstAlarmGroup && device.group <= kLastAlarmGroup;
  const std::int64_t group = known ? device.group : kFirstAlarmGroup;
  const auto& choice = definitions_[static_cast<std::size_t>(group)];
  if (choice.empty()) throw SimError(database_.file() + " has no catalogue of alarms");
  const Definition& definition = choice[random_.below(static_cast<std::uint32_t>(choice.size()))];
  const std::int64_t reason = 1 + random_.below(static_cast<std::uint32_t>(definition.reasons));
  const bool acknowledged = random_.percent(kAcknowledged);
  const char* const by = random_.pick(kOperators);
  const std::string resource = resourceOf(device);
  const std::string parameters = parametersFor();
  const std::string location = "shelf " + std::to_string(random_.below(4));
  insert_.run(++serial_, device.id, group, definition.alarmId, reason, definition.severity, time,
              acknowledged ? time + kAcknowledgedAfter : std::int64_t{0},
              std::string_view(acknowledged ? by : ""), resource, parameters, location);
}

void AlarmRaiser::removeAllBut(std::uint64_t newest) {
  remove_.run(serial_ - static_cast<std::int64_t>(newest));
}

std::string AlarmRaiser::resourceOf(const Device& device) {
  const std::uint32_t kind = random_.below(100);
  const std::int64_t place = random_.below(kPlaces);
  if (kind < kWithoutResource) return "";
  std::string name = "NE=" + std::to_string(device.id);
  if (kind < kInTheDevice) return name;
  port_.bindAll(device.id, kPortType, place, std::int64_t{kPlaces});
  if (port_.step()) name = port_.text(0);
  port_.reset();
  return name;
}

std::string AlarmRaiser::parametersFor() {
  std::string parameters = "threshold=" + std::to_string(random_.below(100));
  return parameters + " value=" + std::to_string(random_.below(1000));
}

std::uint64_t usualAlarms(std::uint64_t elements) { return elements / kElementsOfAnAlarm; }

void generateAlarms(Database& database, std::uint64_t count, std::uint64_t seed) {
  AlarmRaiser raiser(database, seed ^ kSeedStep);
  if (raiser.devices() == 0) return;
  Progress progress("Raising", count);
  for (std::uint64_t n = 0; n < count; ++n) {
    const auto before = static_cast<std::int64_t>((count - n) * kGeneratedOver / (count + 1));
    raiser.raise(kGeneratedBefore - before);
    progress.advance();
  }
}

std::uint64_t raiseAlarms(const std::string& databaseFile, const RaiseOptions& options) {
  Database database(databaseFile, Database::Mode::ReadWrite);
  database.requireInventory();
  Transaction transaction(database, "BEGIN IMMEDIATE");
  AlarmRaiser raiser = raiserFor(database, options);
  const std::int64_t seconds = now();
  const std::uint64_t count = options.count.value_or(1);
  for (std::uint64_t n = 0; n < count; ++n) raiser.raise(seconds);
  if (options.keep > 0) raiser.removeAllBut(options.keep);
  transaction.commit();
  return count;
}

std::uint64_t raiseSteadily(const std::string& databaseFile, const RaiseOptions& options,
                            const std::function<bool(std::chrono::milliseconds)>& restOrEnd) {
  using Clock = std::chrono::steady_clock;
  Database database(databaseFile, Database::Mode::ReadWrite);
  database.requireInventory();
  sqlite3_busy_timeout(database.handle(), kLongBusyTimeoutMs);
  AlarmRaiser raiser = raiserFor(database, options);
  const Clock::time_point start = Clock::now();
  const std::uint64_t count = options.count.value_or(std::numeric_limits<std::uint64_t>::max());
  std::uint64_t raised = 0;
  while (raised < count && !restOrEnd(kStep)) {
    const std::chrono::duration<double> passed = Clock::now() - start;
    const auto due = static_cast<std::uint64_t>(passed.count() * static_cast<double>(options.rate));
    const std::uint64_t most = std::max<std::uint64_t>(options.rate / kLargestStepsOfASecond, 1);
    const std::uint64_t until = std::min({due, raised + most, count});
    if (until == raised) continue;
    Transaction transaction(database, "BEGIN IMMEDIATE");
    for (; raised < until; ++raised) raiser.raise(now());
    if (options.keep > 0) raiser.removeAllBut(options.keep);
    transaction.commit();
  }
  return raised;
}

}  // namespace ormasim
