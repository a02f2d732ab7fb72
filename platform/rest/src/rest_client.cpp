#include "orma/rest/rest_client.h"

#include "orma/bundle/configuration.h"

namespace NS_UTIL {

Nimbola::RestReq MakeRestReq() {
  Nimbola::RestReq request;
  request.target = orma::Configuration::current()->text("rest.target");
  return request;
}

}  // namespace NS_UTIL

namespace Nimbola {

bool SendRestReq(const RestReq&, Json::Value& response) {
  response = Json::Value();
  return false;
}

Json::Value Json2PostData(const Json::Value& document) { return document; }

}  // namespace Nimbola
