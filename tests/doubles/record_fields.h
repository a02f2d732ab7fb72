// Whole records, compared and printed by the fields that fieldsOf names. A header of records
// defines fieldsOf for each, and whatever a field needs to be printed, and includes this behind
// them:
//
//   inline auto fieldsOf(const Node& node) { return std::tie(node.nodeId, node.label); }
//   #include "record_fields.h"
//
// Thread-safety: immutable.
#pragma once

#include <ostream>
#include <tuple>

template <typename Record>
auto operator==(const Record& a, const Record& b) -> decltype(fieldsOf(a) == fieldsOf(b)) {
  return fieldsOf(a) == fieldsOf(b);
}

template <typename Record>
auto operator<<(std::ostream& out, const Record& record)
    -> decltype(fieldsOf(record), static_cast<std::ostream&>(out)) {
  const char* separator = "{";
  std::apply([&](const auto&... field) { ((out << separator << field, separator = " | "), ...); },
             fieldsOf(record));
  return out << '}';
}
