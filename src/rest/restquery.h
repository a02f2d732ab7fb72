// Filter expressions and the two builders that turn them into a request.
//
//   Nimbola::TsNodesQuery query;
//   query.conditions = Nimbola::SimpleConditions{{"nodeClass", "subnet", Nimbola::OPERATOR_EQUAL}};
//   Nimbola::RestReq request = query.ToRestReq();
//
// Thread-safety: thread-compatible values without I/O.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "restreq.h"

namespace Nimbola {

// RestReq::mode of the resource instance requests.
constexpr std::uint8_t kInstanceMode = 4;

// How filters combine; any value but 0 is written as "or".
enum LogOp : std::int32_t { LOG_OP_AND = 0, LOG_OP_OR = 1 };

// One filter expression.
struct SimpleExp {
  std::string name;   // the attribute compared
  Json::Value value;  // a string, or an array for the membership test
  OperatorType op = OPERATOR_EQUAL;
  bool caseSensitive = true;  // written as a JSON boolean
};

struct SimpleCondition {
  LogOp logOp = LOG_OP_AND;
  SimpleExp exp;
};

// Conditions in the order of the list, each combined by "and".
struct SimpleConditions : std::vector<SimpleCondition> {
  SimpleConditions(std::initializer_list<SimpleExp> expressions);
};

// One element of the complex filter.
struct SimpleExpGroup {
  LogOp logOp = LOG_OP_AND;
  std::vector<SimpleExp> exps;
};

// A query for resource instances; the simple filter takes precedence over the complex one.
struct ResourceV3InstancesObjectsQuery {
  std::vector<std::string> contentSelector;
  LogOp logOp = LOG_OP_OR;
  std::vector<SimpleExp> simple;
  LogOp complexLogOp = LOG_OP_OR;
  std::vector<SimpleExpGroup> complex;

  // The POST request for `url`.
  RestReq ToRestReq(const std::string& url) const;
};

// A query for topology nodes.
struct TsNodesQuery {
  std::vector<SimpleCondition> conditions;
  std::vector<std::string> contentSelector;

  // The GET request for "/rest/topology/v3/tsnodes".
  RestReq ToRestReq() const;
};

}  // namespace Nimbola
