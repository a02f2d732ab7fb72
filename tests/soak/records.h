// The records of the interface as rows of text, and the calls that give them.
//
//   Answer answer = ask([&] { return EMFTopoI::getAllDevices(devices); });
//   answer.rows = rowsOf(devices);
//
// Thread-safety: thread-safe on distinct objects. Nothing fails.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "answer.h"
#include "emfalmrecords.h"
#include "emfresrecords.h"
#include "emftoporecords.h"
#include "orma/asn1/csm_exception.h"
#include "processexception.h"

namespace soak {

inline std::string textOf(const std::string& text) { return text; }
inline std::string textOf(const char* text) { return text; }
inline std::string textOf(std::int64_t number) { return std::to_string(number); }

// The fields with "|" between them.
template <class First, class... Others>
std::string joined(const First& first, const Others&... others) {
  std::string row = textOf(first);
  ((row += "|" + textOf(others)), ...);
  return row;
}

std::string rowOf(const Device& device);
std::string rowOf(const Node& node);
std::string rowOf(const SubMap& subMap);
std::string rowOf(const ResourceDn& resource);
std::string rowOf(const Resource& resource);
std::string rowOf(const LocationInfo_& place);
std::string rowOf(const MaintenanceInfo& keeper);
std::string rowOf(const ResourceAttribute& attribute);
std::string rowOf(const NbiResMainType& type);
std::string rowOf(const AlarmCfg& definition);
std::string rowOf(const AlarmReason& reason);
std::string rowOf(const FaultRecord& alarm);
// Without the states, which stand for themselves.
std::string rowOf(const PhysicalLink& link);

template <class Key, class Value>
std::string rowOf(const std::pair<const Key, Value>& entry) {
  return joined(entry.first, entry.second);
}

template <class Records>
Rows rowsOf(const Records& records) {
  Rows rows;
  rows.reserve(records.size());
  for (const auto& record : records) rows.push_back(rowOf(record));
  return rows;
}

// Makes a call that gives a number; what it throws is part of the answer.
template <class Call>
Answer ask(const Call& call) {
  Answer answer;
  try {
    answer.result = call();
  } catch (ProcessException& failure) {
    answer.thrown = "ProcessException";
    answer.result = failure.errCode;
  } catch (const Json::LogicError&) {
    answer.thrown = "Json::LogicError";
  } catch (const std::exception& failure) {
    answer.thrown = typeid(failure).name();
  } catch (CSM_Exception* failure) {
    const std::unique_ptr<CSM_Exception> owned(failure);
    answer.thrown = "CSM_Exception";
  }
  return answer;
}

}  // namespace soak
