#include "orma/rest/rest_client.h"

#include <new>

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
namespace {

namespace rest = orma::rest;

void traceFailure(const rest::HttpClient& client, const RestReq& request,
                  const rest::Failure& failure) {
  const char* const verb = request.method == kMethodBody ? "POST " : "GET ";
  REST_TRACE(0, "REST request " + std::string(verb) +
                    rest::shownAddress(client.settings().baseUrl, request.url) +
                    " failed: " + failure.reason + "; check " + failure.check);
}

}  // namespace

bool SendRestReq(const RestReq& request, Json::Value& response) {
  const auto client = rest::HttpClient::current();
  rest::Failure failure;
  Json::Value answer;
  bool good = false;
  try {
    good = client->send(request, answer, failure);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& unexpected) {
    failure = {rest::printable(unexpected.what()), "the caller of this request"};
  }
  // Only now, since a caller may hand in a part of the request as the response.
  if (!good) traceFailure(*client, request, failure);
  response.swap(answer);
  return good;
}

// The platform's services take a query document as it stands.
Json::Value Json2PostData(const Json::Value& document) { return document; }

}  // namespace Nimbola
