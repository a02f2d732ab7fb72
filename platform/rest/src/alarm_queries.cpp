// Queries of the fault service.
#include <string>
#include <utility>

#include "failure.h"
#include "orma/bundle/configuration.h"
#include "orma/rest/nbi_http_proxy.h"

namespace NS_UTIL {
namespace {

constexpr char kDefinitionsPath[] = "/rest/fault/v1/alarm-definitions";
constexpr char kReasonsPath[] = "/rest/fault/v1/alarm-reasons";
constexpr char kRedefinedPath[] = "/rest/fault/v1/redefined-alarms";

// The rows by their index: what callers expect is neither an array nor what a service would send.
Json::Value byIndex(Json::Value& rows) {
  Json::Value answer(Json::objectValue);
  answer["count"] = static_cast<Json::Int>(rows.size());
  for (Json::ArrayIndex i = 0; i < rows.size(); ++i) {
    answer[std::to_string(i)] = std::move(rows[i]);
  }
  return answer;
}

bool failRedefined() {
  const std::string baseUrl = orma::Configuration::current()->text("rest.baseUrl");
  REST_TRACE(0, "Redefined alarms: the answer of " +
                    orma::rest::shownAddress(baseUrl, kRedefinedPath) +
                    " has no array \"rows\"; check that rest.baseUrl names the right service in a "
                    "matching release");
  return false;
}

}  // namespace

bool NBIHTTPProxy::QueryAlarmDefinitionInfo(Json::Value& answer, const std::string& body) {
  return GetAcessResource(answer, kDefinitionsPath, body);
}

bool NBIHTTPProxy::QueryAlarmReasonInfo(Json::Value& answer, const std::string& body) {
  return GetAcessResource(answer, kReasonsPath, body);
}

bool NBIHTTPProxy::QueryRedefineAlarmDataList(Json::Value& answer, const std::string& body) {
  Json::Value page;
  answer = Json::Value();
  if (!GetAcessResource(page, kRedefinedPath, body)) return false;
  if (!page.isObject() || !page["rows"].isArray()) return failRedefined();
  answer = byIndex(page["rows"]);
  return true;
}

}  // namespace NS_UTIL
