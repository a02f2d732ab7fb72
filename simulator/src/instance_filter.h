// What a request asks of resource instances, as a condition for the database.
//
//   const InstanceFilter filter = instanceFilterOf(condition, members, CaseFlag::Boolean);
//   Statement rows(database, select + filter.sql);  // filter.values are its further parameters
//
// Thread-safety: thread-safe. Failure: BadRequest that names the member which is not understood.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "topology_filter.h"

namespace ormasim {

// A member of the objects of a class, and the column that it comes from.
struct InstanceMember {
  const char* name;
  const char* column;
  bool number;
};

struct InstanceFilter {
  std::string sql;  // " AND (…)" with a "?" for each value, or empty
  std::vector<std::variant<std::string, std::int64_t>> values;
};

InstanceFilter instanceFilterOf(const Json::Value& condition,
                                const std::vector<InstanceMember>& members, CaseFlag caseFlag);

// The member of that name; a BadRequest that names `what` when there is none.
const InstanceMember& memberNamed(const std::vector<InstanceMember>& members,
                                  const Json::Value& name, const char* what);

}  // namespace ormasim
