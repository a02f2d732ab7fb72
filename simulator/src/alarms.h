// The catalogue of alarms and the alarms themselves.
//
//   writeAlarmCatalogue(database, 0);
//   AlarmRaiser(database, seed).raise(50, now);
//
// Thread-safety: thread-compatible. Failure: SimError. The caller holds the transaction, but for
// raiseAlarms.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "random.h"
#include "sqlite.h"

namespace ormasim {

constexpr std::uint64_t kMaxAlarms = 10'000'000;
constexpr std::uint64_t kMaxAlarmRate = 100'000;
constexpr std::uint64_t kMaxDefinitions = 1'000'000;

// Writes definitions, reasons and redefined severities. There are as many definitions as the tables
// give, and numbered ones behind them up to `least`.
void writeAlarmCatalogue(Database& database, std::uint64_t least);

// Removes alarms and catalogue.
void clearAlarms(Database& database);

// Raises alarms on the devices of an inventory. The same inventory, seed and times give the same
// alarms on every machine.
class AlarmRaiser {
 public:
  AlarmRaiser(Database& database, std::uint64_t seed);

  // Only on this device from now on; fails when there is none.
  void chooseDevice(std::int64_t id);
  // One alarm raised at that time, in seconds since 1970. Without devices it does nothing.
  void raise(std::int64_t time);
  // Removes the alarms but for so many, which have the highest serial numbers.
  void removeAllBut(std::uint64_t newest);

  std::size_t devices() const { return devices_.size(); }

 private:
  struct Device {
    std::int64_t id;
    std::int64_t group;
  };

  struct Definition {
    std::int64_t alarmId;
    std::int64_t severity;
    std::int64_t reasons;  // their ids count from 1
  };

  void readDevices();
  void readDefinitions();
  std::string resourceOf(const Device& device);
  std::string parametersFor();

  Database& database_;
  Random random_;
  Statement insert_;
  Statement remove_;
  Statement port_;
  std::vector<Device> devices_;
  std::vector<std::vector<Definition>> definitions_;  // by group
  std::int64_t serial_ = 0;
};

// How many alarms a network of that size has unless another number is asked for.
std::uint64_t usualAlarms(std::uint64_t elements);
// Adds alarms to a network that was just made, spread over the year before a fixed day.
void generateAlarms(Database& database, std::uint64_t count, std::uint64_t seed);

struct RaiseOptions {
  std::optional<std::uint64_t> count = std::nullopt;  // none: 1, or without end at a rate
  std::optional<std::int64_t> device = std::nullopt;  // none: any
  std::uint64_t rate = 0;                             // a second; 0: all at once
  std::uint64_t keep = 0;                             // the newest ones that stay; 0: all
};

// Raises alarms now in an inventory that may be served meanwhile: all of them or none. How many.
std::uint64_t raiseAlarms(const std::string& databaseFile, const RaiseOptions& options);

// Raises them over time, `options.rate` a second, until they are as many or `restOrEnd` gives true:
// it is called between two steps and rests for the time that it is given, or less when the end has
// come. How many were raised.
std::uint64_t raiseSteadily(const std::string& databaseFile, const RaiseOptions& options,
                            const std::function<bool(std::chrono::milliseconds)>& restOrEnd);

}  // namespace ormasim
