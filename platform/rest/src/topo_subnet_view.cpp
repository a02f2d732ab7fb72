#include <string>

#include "orma/rest/nbi_http_proxy.h"
#include "orma/rest/rest_client.h"

namespace {

constexpr char kPath[] = "/rest/topology/v3/subnet-view";
constexpr Json::Value::UInt kObjectsPerPage = 1000;

}  // namespace

namespace NS_UTIL {

bool NBIHTTPProxy::getTopoSubnetViewInfo(const Json::Value& filter, std::string marker,
                                         Json::Value& response) {
  Json::Value document(Json::objectValue);
  document["condition"]["filter"] = filter;
  document["limit"] = kObjectsPerPage;
  if (!marker.empty()) document["marker"] = marker;
  Nimbola::RestReq request = MakeRestReq();
  request.url = kPath;
  request.method = Nimbola::kMethodBody;
  request.body = Nimbola::Json2PostData(document);
  return Nimbola::SendRestReq(request, response);
}

}  // namespace NS_UTIL
