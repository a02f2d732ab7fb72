// Queries of the resource service that take one exchange each.
#include <string>
#include <utility>

#include "http_client.h"
#include "orma/rest/nbi_http_proxy.h"
#include "orma/rest/rest_client.h"

namespace NS_UTIL {
namespace {

using orma::rest::Failure;
using orma::rest::HttpClient;
using orma::rest::JsonOutcome;
using orma::rest::JsonReader;

constexpr char kLocationMaintenancePath[] = "/rest/resource/v2/location-maintenance";

Nimbola::RestReq postTo(const std::string& path) {
  Nimbola::RestReq request = MakeRestReq();
  request.url = path;
  request.method = Nimbola::kMethodBody;
  return request;
}

bool readProperties(const char* path, const std::vector<std::string>& fdns, Json::Value& answer) {
  Json::Value document(Json::objectValue);
  Json::Value& ids = document["nativeIds"] = Json::Value(Json::arrayValue);
  for (const std::string& fdn : fdns) ids.append(fdn);
  Nimbola::RestReq request = postTo(path);
  request.body = Nimbola::Json2PostData(document);
  return Nimbola::SendRestReq(request, answer);
}

// The exchange of a query whose document comes as text.
bool postText(const std::string& path, const std::string& body, Json::Value& answer) {
  Nimbola::RestReq request = postTo(path);
  const auto client = HttpClient::current();
  std::string text = body;
  Failure failure;
  if (JsonReader(client->settings().maxNesting).read(text, request.body, failure.reason) ==
      JsonOutcome::Refused) {
    failure.reason = "the query is no JSON: " + failure.reason;
    failure.check = "what made the query, nothing was sent";
    client->traceFailure(request, failure);
    answer = Json::Value();
    return false;
  }
  return Nimbola::SendRestReq(request, answer);
}

}  // namespace

bool NBIHTTPProxy::GetPortResourcePropertyByFDNs(Json::Value& answer,
                                                 const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/port-properties", fdns, answer);
}

bool NBIHTTPProxy::GetSlotResourcePropertyByFDNs(Json::Value& answer,
                                                 const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/slot-properties", fdns, answer);
}

bool NBIHTTPProxy::GetCardResourcePropertyByFDNs(Json::Value& answer,
                                                 const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/card-properties", fdns, answer);
}

bool NBIHTTPProxy::GetFrameResourcePropertyByFDNs(Json::Value& answer,
                                                  const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/frame-properties", fdns, answer);
}

bool NBIHTTPProxy::GetNEResourcePropertyByFDNs(Json::Value& answer,
                                               const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/ne-properties", fdns, answer);
}

bool NBIHTTPProxy::GetAcessResource(Json::Value& answer, const std::string& path,
                                    const std::string& body) {
  return postText(path, body, answer);
}

bool NBIHTTPProxy::QueryLocalInfoAndMaintenInfo(Json::Value& answer, const std::string& body) {
  return postText(kLocationMaintenancePath, body, answer);
}

}  // namespace NS_UTIL
