#include "resource_rest_double.h"

#include <utility>

#include "orma/rest/nbi_http_proxy.h"
#include "outage.h"
#include "platform.h"

namespace emf::doubles {

void ResourceRestDouble::answersBy(Responder responder) {
  std::lock_guard lock(mutex_);
  responder_ = std::move(responder);
}

void ResourceRestDouble::answers(const Json::Value& answer, bool result) {
  answersBy([answer, result](const ResourceQuery&, Json::Value& out) {
    out = answer;
    return result;
  });
}

std::vector<ResourceQuery> ResourceRestDouble::queries() const {
  std::lock_guard lock(mutex_);
  return queries_;
}

void ResourceRestDouble::reset() {
  std::lock_guard lock(mutex_);
  responder_ = nullptr;
  queries_.clear();
}

bool ResourceRestDouble::query(ResourceQuery query, Json::Value& answer) {
  platform().journal.note("resource query: " + query.operation);
  query.answerBefore = answer;
  if (const auto failed = exchangeOutage("resource query", answer)) return *failed;
  Responder responder;
  {
    std::lock_guard lock(mutex_);
    queries_.push_back(query);
    responder = responder_;
  }
  answer = Json::Value();
  return responder && responder(query, answer);
}

}  // namespace emf::doubles

using emf::doubles::platform;

namespace NS_UTIL {

#define EMF_PROPERTY_READ(operation)                                                        \
  bool NBIHTTPProxy::operation(Json::Value& answer, const std::vector<std::string>& fdns) { \
    return platform().resources.query({#operation, fdns, "", "", Json::Value()}, answer);   \
  }

EMF_PROPERTY_READ(GetPortResourcePropertyByFDNs)
EMF_PROPERTY_READ(GetSlotResourcePropertyByFDNs)
EMF_PROPERTY_READ(GetCardResourcePropertyByFDNs)
EMF_PROPERTY_READ(GetFrameResourcePropertyByFDNs)
EMF_PROPERTY_READ(GetNEResourcePropertyByFDNs)

bool NBIHTTPProxy::GetAcessResource(Json::Value& answer, const std::string& path,
                                    const std::string& body) {
  return platform().resources.query({"GetAcessResource", {}, path, body, Json::Value()}, answer);
}

bool NBIHTTPProxy::QueryLocalInfoAndMaintenInfo(Json::Value& answer, const std::string& body) {
  return platform().resources.query({"QueryLocalInfoAndMaintenInfo", {}, "", body, Json::Value()},
                                    answer);
}

}  // namespace NS_UTIL
