// The REST client: one exchange with the platform's services over HTTP(S), as configured in the
// "rest" section.
//
//   Nimbola::RestReq request = NS_UTIL::MakeRestReq();
//   request.url = "/rest/topology/v3/tsnodes";
//   Json::Value answer;
//   if (!Nimbola::SendRestReq(request, answer)) return;  // logged already, answer is null
//
// Thread-safety: thread-safe; connections are kept and shared by all threads. SendRestReq blocks
// up to the configured timeouts. Nothing is thrown but std::bad_alloc.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>
#include <vector>

#include "orma/bundle/export.h"
#include "restreq.h"

namespace NS_UTIL {
// A request with every default in place.
ORMA_API Nimbola::RestReq MakeRestReq();
}  // namespace NS_UTIL

namespace Nimbola {

// Performs the exchange. True only for a 2xx answer that parses as JSON, which then is in
// `response`; otherwise address, status and reason are logged, `response` is null and the result
// is false. `method` 2 posts `body` as JSON; any other value sends GET with `params`.
ORMA_API bool SendRestReq(const RestReq& request, Json::Value& response);

// The value to store in `body` or `params` for a query document.
ORMA_API Json::Value Json2PostData(const Json::Value& document);

// The operator's word: "equal", "notEqual", "greater", "less", "in", "like"; empty for others.
ORMA_API std::string ToString(OperatorType op);

// The main type that the FDN's last segment denotes; MAIN_TYPE_UNKNOWN when its key is unknown.
ORMA_API MainType GetMainTypeFromFDN(const std::string& fdn);
// The JSON key in which a resource of that main type carries its sub type.
ORMA_API std::string GetResSubTypeFieldName(MainType type);
// The sub type read from a JSON resource object; 0 when absent or no number.
ORMA_API std::int64_t GetResSubTypeFromObj(const Json::Value& object, MainType type);

}  // namespace Nimbola
