#include "orma/rest/rest_client.h"

#include <utility>

#include "http_client.h"
#include "orma/bundle/configuration.h"

namespace NS_UTIL {

Nimbola::RestReq MakeRestReq() {
  Nimbola::RestReq request;
  request.target = orma::Configuration::current()->text("rest.target");
  return request;
}

}  // namespace NS_UTIL

namespace Nimbola {

bool SendRestReq(const RestReq& request, Json::Value& response) {
  const auto client = orma::rest::HttpClient::current();
  orma::rest::Failure failure;
  Json::Value answer;
  auto connection = client->fetch(request, failure);
  const bool good = connection && client->read(std::move(connection), request, answer, failure);
  if (!good) client->traceFailure(request, failure);
  // Last, since a caller may hand in a part of the request as the response.
  response.swap(answer);
  return good;
}

// The platform's services take a query document as it stands.
Json::Value Json2PostData(const Json::Value& document) { return document; }

}  // namespace Nimbola
