// What a request asks of topology objects: expressions that must all hold, none for all objects.
//
//   TopologyFilter filter;
//   filter.add(expression, CaseFlag::Boolean);
//
// Thread-safety: thread-compatible. Failure: BadRequest that names the member which is not
// understood.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "request_document.h"

namespace ormasim {

// The attributes that can be asked for, in the order of TopologyObjects' columns.
enum class TopologyAttribute { NodeClass, ObjId, ParentId, NativeId, TopoId };

// How a service spells "caseSensitive": the two services differ.
enum class CaseFlag { Boolean, Text };

// Holds for an object whose attribute equals any of the values.
struct TopologyExpression {
  TopologyAttribute attribute;
  std::vector<std::variant<std::string, std::int64_t>> anyOf;
  bool caseSensitive;
};

class TopologyFilter {
 public:
  // Takes {"name", "operator", "value", "caseSensitive"}.
  void add(const Json::Value& expression, CaseFlag caseFlag);

  const std::vector<TopologyExpression>& expressions() const { return expressions_; }

 private:
  std::vector<TopologyExpression> expressions_;
};

// Whether capitals count, as the service spells it.
bool caseSensitiveOf(const Json::Value& flag, CaseFlag caseFlag);
// Refuses a combination of filters other than "and".
void requireAnd(const Json::Value& logOp);

}  // namespace ormasim
