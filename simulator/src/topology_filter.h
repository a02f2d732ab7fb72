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
#include <initializer_list>
#include <string>
#include <variant>
#include <vector>

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

// Refuses a combination of filters other than "and".
void requireAnd(const Json::Value& logOp);
// Refuses what is no object, and members other than these, all of which must be there.
void requireMembers(const Json::Value& object, const char* what,
                    std::initializer_list<const char*> members);
// A JSON document of a request.
Json::Value parseDocument(const std::string& text, const char* what);

}  // namespace ormasim
