#include "alarm_rest_double.h"

#include <utility>

#include "orma/rest/nbi_http_proxy.h"
#include "outage.h"
#include "platform.h"

namespace emf::doubles {

void AlarmRestDouble::answersBy(Responder responder) {
  std::lock_guard lock(mutex_);
  responder_ = std::move(responder);
}

std::vector<AlarmQuery> AlarmRestDouble::queries() const {
  std::lock_guard lock(mutex_);
  return queries_;
}

void AlarmRestDouble::reset() {
  std::lock_guard lock(mutex_);
  responder_ = nullptr;
  queries_.clear();
}

bool AlarmRestDouble::query(const char* operation, const std::string& body, Json::Value& answer) {
  platform().journal.note(std::string("alarm query: ") + operation);
  const AlarmQuery asked = {operation, body, answer};
  if (const auto failed = exchangeOutage("alarm query", answer)) return *failed;
  Responder responder;
  {
    std::lock_guard lock(mutex_);
    queries_.push_back(asked);
    responder = responder_;
  }
  answer = Json::Value();
  return responder && responder(asked, answer);
}

}  // namespace emf::doubles

using emf::doubles::platform;

namespace NS_UTIL {

bool NBIHTTPProxy::QueryAlarmDefinitionInfo(Json::Value& answer, const std::string& body) {
  return platform().alarms.query("QueryAlarmDefinitionInfo", body, answer);
}

bool NBIHTTPProxy::QueryAlarmReasonInfo(Json::Value& answer, const std::string& body) {
  return platform().alarms.query("QueryAlarmReasonInfo", body, answer);
}

bool NBIHTTPProxy::QueryRedefineAlarmDataList(Json::Value& answer, const std::string& body) {
  return platform().alarms.query("QueryRedefineAlarmDataList", body, answer);
}

}  // namespace NS_UTIL
