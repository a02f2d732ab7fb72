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

  // One page of the topology view: `marker` names it, an empty one the first. True when `response`
  // holds the answer; on failure (logged) it is null.
  static bool getTopoSubnetViewInfo(const Json::Value& filter, std::string marker,
                                    Json::Value& response);
};

}  // namespace NS_UTIL
