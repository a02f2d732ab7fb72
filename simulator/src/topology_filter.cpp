#include "topology_filter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "services.h"

namespace ormasim {
namespace {

// SQLite binds up to 32,766 values in a statement.
constexpr Json::ArrayIndex kMaxValues = 1000;

struct AttributeName {
  const char* name;
  TopologyAttribute attribute;
};

constexpr AttributeName kAttributes[] = {{"nodeClass", TopologyAttribute::NodeClass},
                                         {"objId", TopologyAttribute::ObjId},
                                         {"parentId", TopologyAttribute::ParentId},
                                         {"nativeId", TopologyAttribute::NativeId},
                                         {"topoId", TopologyAttribute::TopoId}};

TopologyAttribute attributeOf(const Json::Value& name) {
  const auto* row =
      std::find_if(std::begin(kAttributes), std::end(kAttributes),
                   [&name](const AttributeName& known) { return name == known.name; });
  if (row == std::end(kAttributes)) {
    throw BadRequest("\"name\" is none of nodeClass, objId, parentId, nativeId and topoId");
  }
  return row->attribute;
}

std::variant<std::string, std::int64_t> comparedValue(const Json::Value& value,
                                                      TopologyAttribute attribute) {
  if (attribute == TopologyAttribute::TopoId) {
    if (!value.isInt64()) throw BadRequest("\"value\" of topoId must be a whole number");
    return value.asInt64();
  }
  if (!value.isString()) throw BadRequest("\"value\" must be a text");
  return value.asString();
}

}  // namespace

void TopologyFilter::add(const Json::Value& expression, CaseFlag caseFlag) {
  requireMembers(expression, "an expression", {"name", "operator", "value", "caseSensitive"});
  TopologyExpression parsed{attributeOf(expression["name"]), {}, false};
  const Json::Value& value = expression["value"];
  if (expression["operator"] == "equal") {
    parsed.anyOf.push_back(comparedValue(value, parsed.attribute));
  } else if (expression["operator"] == "in") {
    if (!value.isArray() || value.empty() || value.size() > kMaxValues) {
      throw BadRequest("\"value\" of operator \"in\" must be an array of 1 to " +
                       std::to_string(kMaxValues) + " values");
    }
    for (const Json::Value& member : value) {
      parsed.anyOf.push_back(comparedValue(member, parsed.attribute));
    }
  } else {
    throw BadRequest("\"operator\" must be \"equal\" or \"in\"");
  }
  parsed.caseSensitive = caseSensitiveOf(expression["caseSensitive"], caseFlag);
  expressions_.push_back(std::move(parsed));
}

bool caseSensitiveOf(const Json::Value& flag, CaseFlag caseFlag) {
  if (caseFlag == CaseFlag::Boolean) {
    if (!flag.isBool()) throw BadRequest("\"caseSensitive\" must be true or false");
    return flag.asBool();
  }
  if (flag != "true" && flag != "false") {
    throw BadRequest("\"caseSensitive\" must be the text \"true\" or \"false\"");
  }
  return flag == "true";
}

void requireAnd(const Json::Value& logOp) {
  if (logOp != "and") throw BadRequest("\"logOp\" must be \"and\"");
}

}  // namespace ormasim
