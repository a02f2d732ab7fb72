// The catalogue: kinds times groups, and numbered definitions to make it as large as is wished.
#include <algorithm>
#include <iterator>

#include "alarm_tables.h"
#include "alarms.h"

namespace ormasim {
namespace {

constexpr std::int64_t kGroups = kLastAlarmGroup - kFirstAlarmGroup + 1;

class CatalogueWriter {
 public:
  explicit CatalogueWriter(Database& database)
      : definition_(database, "INSERT INTO alarm_definition VALUES (?,?,?,?,?,?,?,?)"),
        reason_(database, "INSERT INTO alarm_reason VALUES (?,?,?,?,?,?)"),
        redefined_(database, "INSERT INTO redefined_alarm VALUES (?,?,?,?,?,?)") {}

  void addKinds() {
    for (std::int64_t group = kFirstAlarmGroup; group <= kLastAlarmGroup; ++group) {
      std::int64_t alarmId = kFirstAlarmId;
      for (const AlarmKind& kind : kAlarmKinds) add(kind, group, alarmId++, kind.name);
    }
  }

  // Definitions like the kinds, whose names carry a number.
  void addNumbered(std::int64_t least) {
    constexpr auto kinds = static_cast<std::int64_t>(std::size(kAlarmKinds));
    for (std::int64_t n = 0; definitions_ < least; ++n) {
      const AlarmKind& kind = kAlarmKinds[n % kinds];
      const std::int64_t alarmId = kFirstAlarmId + kinds + n / kGroups;
      add(kind, kFirstAlarmGroup + n % kGroups, alarmId,
          std::string(kind.name) + "_" + std::to_string(alarmId));
    }
  }

 private:
  void add(const AlarmKind& kind, std::int64_t group, std::int64_t alarmId,
           const std::string& name) {
    const std::int64_t severity = kind.severity;
    definition_.run(definitions_, group, alarmId, std::int64_t{kind.eventType},
                    std::int64_t{kind.functionType}, severity, name,
                    std::string_view(kind.description));
    std::int64_t reasonId = 0;
    for (const AlarmCause& cause : kind.causes) {
      if (cause.causes == nullptr) break;
      reason_.run(reasons_++, group, alarmId, ++reasonId, std::string_view(cause.causes),
                  std::string_view(cause.repairAction));
    }
    if (definitions_ % kRedefinedEvery == 0) {
      redefined_.run(redefinitions_++, group, alarmId, severity % 4 + 1, severity, name);
    }
    ++definitions_;
  }

  Statement definition_;
  Statement reason_;
  Statement redefined_;
  std::int64_t definitions_ = 0;
  std::int64_t reasons_ = 0;
  std::int64_t redefinitions_ = 0;
};

}  // namespace

void writeAlarmCatalogue(Database& database, std::uint64_t least) {
  CatalogueWriter writer(database);
  writer.addKinds();
  writer.addNumbered(static_cast<std::int64_t>(least));
}

void clearAlarms(Database& database) {
  for (const char* table : {"alarm", "redefined_alarm", "alarm_reason", "alarm_definition"}) {
    database.execute(std::string("DELETE FROM ") + table);
  }
}

}  // namespace ormasim
