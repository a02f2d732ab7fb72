#include "paginators.h"

#include <utility>

#include "orma/rest/rest_client.h"

namespace Nimbola {
namespace {

Json::Value& parametersOf(RestReq& request) {
  return request.method == kMethodBody ? request.body : request.params;
}

// What both walks share: ask, let the paginator note where to go on, store the list. The noting
// comes before the result of the exchange is looked at, so a failed one leaves nothing to go on
// with. An answer that is no object holds no page.
template <class Paginator, class Advance>
bool exchangePage(const Paginator& paginator, Json::Value& page, Advance advance) {
  Json::Value response;
  bool sent = SendRestReq(paginator.request, response);
  if (!response.isNull() && !response.isObject()) {
    sent = false;
    response = Json::Value();
  }
  advance(response);
  if (!sent) return false;
  page = std::move(response[paginator.listKey]);
  return true;
}

}  // namespace

MarkerPaginator::MarkerPaginator(const RestReq& pagedRequest) : request(pagedRequest) {}

bool MarkerPaginator::NextPage(Json::Value& page) {
  if (!hasMore) return false;
  Json::Value& parameters = parametersOf(request);
  parameters["limit"] = Json::Value::UInt(limit);
  if (!marker.empty()) parameters["marker"] = marker;
  return exchangePage(*this, page, [this](Json::Value& response) {
    hasMore = response["isTruncated"].asBool();
    marker = hasMore ? response["marker"].asString() : std::string();
  });
}

QueryIdPaginator::QueryIdPaginator(const RestReq& pagedRequest) : request(pagedRequest) {}

bool QueryIdPaginator::NextPage(Json::Value& page) {
  if (!hasMore) return false;
  Json::Value& parameters = parametersOf(request);
  if (queryId.empty()) {
    parameters["limit"] = Json::Value::UInt(limit);
  } else {
    // The cursor stands for the whole query from here on.
    parameters = Json::Value(Json::objectValue);
    parameters["query-id"] = queryId;
  }
  return exchangePage(*this, page, [this](Json::Value& response) {
    queryId = response["queryId"].asString();
    hasMore = !queryId.empty();
  });
}

}  // namespace Nimbola
