// Walking a paged REST answer:
//
//   Nimbola::MarkerPaginator pages(query.ToRestReq());
//   pages.listKey = "dataList";
//   Json::Value page;
//   do {
//     if (!pages.NextPage(page)) return failure;
//     for (const Json::Value& object : page) use(object);
//   } while (pages.hasMore);
//
// Only the server's word ends a walk. A failed exchange ends it at once; its failure has been
// logged by the REST client. Texts and flags of a wrong JSON type raise Json::LogicError.
//
// Thread-safety: thread-compatible; NextPage blocks in one REST exchange.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>

#include "restreq.h"

namespace Nimbola {

// Pages by "isTruncated" and "marker".
struct MarkerPaginator {
  explicit MarkerPaginator(const RestReq& pagedRequest);

  // Stores the next page's list in `page` (replaced); false when no page could be had.
  bool NextPage(Json::Value& page);

  RestReq request;
  std::string marker;
  std::string listKey = "objList";
  std::uint32_t limit = 200;
  bool hasMore = true;
};

// Pages by a cursor, "queryId".
struct QueryIdPaginator {
  explicit QueryIdPaginator(const RestReq& pagedRequest);

  // As above.
  bool NextPage(Json::Value& page);

  RestReq request;
  bool hasMore = true;
  std::string queryId;
  std::uint32_t limit = 200;
  std::string listKey = "objList";
};

}  // namespace Nimbola
