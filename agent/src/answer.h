// What a command gives back: the result of the operation it called and its records, as rows of
// typed values under the names of the record's fields. Every output format works on this alone.
//
//   constexpr Column<Device> kColumns[] = {{"id", [](const Device& d) { return Value(d.id); }}};
//   Answer answer = answerOf(EMFTopoI::getAllDevices(devices), kColumns, devices);
//
// Thread-safety: thread-compatible. Nothing fails.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace ormaagent {

// A time in UTC: "2026-11-21T08:30:00Z". Tables show it as people read it.
struct UtcTime {
  std::string iso;
};
inline bool operator==(const UtcTime& a, const UtcTime& b) { return a.iso == b.iso; }

// Monostate is no value at all: NULL of a database.
using Value =
    std::variant<std::int64_t, std::uint64_t, std::string, double, std::monostate, UtcTime>;

struct Answer {
  std::int64_t result = 0;
  std::vector<std::string> fields;          // in the record's own order
  std::vector<std::vector<Value>> records;  // each as long as `fields`
  // How deep each record lies in a tree: tables indent its first field so. Empty: no tree.
  std::vector<std::size_t> depths;
  // How many of the last records only mark the end of a list, as the interface has it: tables leave
  // them out and say so.
  std::size_t closingRecords = 0;
  // How many records the command's options left out.
  std::size_t leftOut = 0;
};

// One field of a record class: its name and how it is read.
template <class Record>
struct Column {
  const char* name;
  Value (*read)(const Record&);
};

template <class Record, class Type>
Record recordOf(Type Record::*member);

// Reads a field as it stands: `{"label", fieldOf<&Node::label>}`.
template <auto member, class Record = decltype(recordOf(member))>
Value fieldOf(const Record& record) {
  if constexpr (std::is_convertible_v<decltype(record.*member), std::int64_t>) {
    return std::int64_t{record.*member};
  } else {
    return record.*member;
  }
}

template <class Record, std::size_t count, class Records>
Answer answerOf(std::int64_t result, const Column<Record> (&columns)[count],
                const Records& records) {
  Answer answer;
  answer.result = result;
  for (const auto& column : columns) answer.fields.emplace_back(column.name);
  for (const Record& record : records) {
    std::vector<Value> row;
    row.reserve(count);
    for (const auto& column : columns) row.push_back(column.read(record));
    answer.records.push_back(std::move(row));
  }
  return answer;
}

}  // namespace ormaagent
