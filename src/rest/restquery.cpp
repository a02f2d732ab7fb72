#include "restquery.h"

#include <utility>

#include "orma/rest/rest_client.h"

namespace Nimbola {
namespace {

const char* word(LogOp op) { return op != LOG_OP_AND ? "or" : "and"; }

Json::Value expressionDocument(const SimpleExp& expression) {
  Json::Value document(Json::objectValue);
  document["name"] = expression.name;
  document["operator"] = ToString(expression.op);
  document["value"] = expression.value;
  document["caseSensitive"] = expression.caseSensitive;
  return document;
}

Json::Value expressionArray(const std::vector<SimpleExp>& expressions) {
  Json::Value array(Json::arrayValue);
  for (const SimpleExp& expression : expressions) array.append(expressionDocument(expression));
  return array;
}

Json::Value textArray(const std::vector<std::string>& texts) {
  Json::Value array(Json::arrayValue);
  for (const std::string& text : texts) array.append(text);
  return array;
}

Json::Value groupArray(const std::vector<SimpleExpGroup>& groups) {
  Json::Value array(Json::arrayValue);
  for (const SimpleExpGroup& group : groups) {
    Json::Value document(Json::objectValue);
    document["simple"] = expressionArray(group.exps);
    if (group.exps.size() > 1) document["logOp"] = word(group.logOp);
    array.append(std::move(document));
  }
  return array;
}

Json::Value filterDocument(const ResourceV3InstancesObjectsQuery& query) {
  Json::Value filter(Json::objectValue);
  if (!query.simple.empty()) {
    filter["logOp"] = word(query.logOp);
    filter["simple"] = expressionArray(query.simple);
  } else {
    filter["logOp"] = word(query.complexLogOp);
    filter["complex"] = groupArray(query.complex);
  }
  return filter;
}

}  // namespace

SimpleConditions::SimpleConditions(std::initializer_list<SimpleExp> expressions) {
  reserve(expressions.size());
  for (const SimpleExp& expression : expressions) push_back({LOG_OP_AND, expression});
}

RestReq ResourceV3InstancesObjectsQuery::ToRestReq(const std::string& url) const {
  Json::Value root;
  if (!simple.empty() || !complex.empty()) root["condition"]["filter"] = filterDocument(*this);
  if (!contentSelector.empty()) root["content-selector"] = textArray(contentSelector);
  RestReq request = NS_UTIL::MakeRestReq();
  request.url = url;
  request.method = kMethodBody;
  request.body = Json2PostData(root);
  request.mode = kInstanceMode;
  return request;
}

RestReq TsNodesQuery::ToRestReq() const {
  RestReq request = NS_UTIL::MakeRestReq();
  request.url = "/rest/topology/v3/tsnodes";
  request.method = kMethodParams;
  Json::Value root;
  for (const SimpleCondition& condition : conditions) {
    Json::Value document(Json::objectValue);
    document["logOp"] = word(condition.logOp);
    document["simple"] = expressionDocument(condition.exp);  // one object here, meant so
    root["conditions"].append(std::move(document));
  }
  // Meant so: not the "content-selector" of the resource query.
  if (!contentSelector.empty()) root["contentSelector"] = textArray(contentSelector);
  request.params = Json2PostData(root);
  return request;
}

}  // namespace Nimbola
