// Ready-made queries of the platform's northbound services. Paging stays behind their face.
//
// Thread-safety: thread-safe; every operation blocks in REST exchanges.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "orma/bundle/export.h"

namespace NS_UTIL {

class ORMA_API NBIHTTPProxy {
 public:
  // Appends one JSON object for each resource of the network, each with "nativeId", "typeId",
  // "ipAddress" and "name". True when every page came. On failure (logged) nothing is appended
  // and the result is false, so that half a network is never taken for the whole.
  static bool GetAllDevProperty(std::vector<Json::Value>& out);

  // One page of the topology view objects that match `filter`: POST of
  //   {"condition": {"filter": <filter>}, "limit": 1000, "marker": "<marker>"}
  // to /rest/topology/v3/subnet-view, with "marker" only when it is not empty, which asks for the
  // first page. True when `response` holds the answer,
  //   {"dataList": [<object>, ...], "hasNext": true|false, "marker": "<marker of the next page>"};
  // otherwise `response` is null, and the failure is logged.
  static bool getTopoSubnetViewInfo(const Json::Value& filter, std::string marker,
                                    Json::Value& response);
};

}  // namespace NS_UTIL
