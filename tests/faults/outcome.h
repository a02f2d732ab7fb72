// What a caller sees of one operation: its result and the records in its output, as texts.
//
//   Outcome outcome = appended(std::list<Device>(1), [](auto& out) {
//     return EMFTopoI::getAllDevices(out);
//   });
//
// Thread-safety: thread-compatible.
#pragma once

#include <list>
#include <map>
#include <ostream>
#include <string>
#include <vector>

class AlarmCfg;
class AlarmReason;
class Device;
class FaultRecord;
class Node;
class PhysicalLink;
class SubMap;
struct LocationInfo_;
struct MaintenanceInfo;
struct NbiResMainType;
struct Resource;
struct ResourceAttribute;
struct ResourceDn;
struct ResourceEightLoc;

namespace emf::faults {

struct Outcome {
  std::string result;  // the number, or what was thrown
  std::vector<std::string> records;

  friend bool operator==(const Outcome& a, const Outcome& b) {
    return a.result == b.result && a.records == b.records;
  }
};
void PrintTo(const Outcome& outcome, std::ostream* out);

// A record's fields, one behind the other.
std::string text(const AlarmCfg& record);
std::string text(const AlarmReason& record);
std::string text(const Device& record);
std::string text(const FaultRecord& record);
std::string text(const LocationInfo_& record);
std::string text(const MaintenanceInfo& record);
std::string text(const NbiResMainType& record);
std::string text(const Node& record);
std::string text(const PhysicalLink& record);
std::string text(const Resource& record);
std::string text(const ResourceAttribute& record);
std::string text(const ResourceDn& record);
std::string text(const ResourceEightLoc& record);
std::string text(const SubMap& record);
std::string text(const std::string& record);
std::string text(int record);
template <typename Key, typename Value>
std::string text(const std::pair<const Key, Value>& entry) {
  return text(entry.first) + '|' + text(entry.second);
}

// What the exception under way is, in words. Frees the decoder's.
std::string thrown();

template <typename Call>
std::string resultOf(Call call) {
  try {
    return std::to_string(call());
  } catch (...) {
    return thrown();
  }
}

// An operation whose output is a container, which holds `out` before.
template <typename Container, typename Call>
Outcome appended(Container out, Call call) {
  Outcome outcome;
  outcome.result = resultOf([&] { return call(out); });
  for (const auto& record : out) outcome.records.push_back(text(record));
  return outcome;
}

// An operation whose output is one record.
template <typename Record, typename Call>
Outcome written(Record out, Call call) {
  Outcome outcome;
  outcome.result = resultOf([&] { return call(out); });
  outcome.records.push_back(text(out));
  return outcome;
}

}  // namespace emf::faults
