// Objects of the topology node service, as JSON.
//
//   std::vector<Json::Value> subnets = {subnet("1", "Region", "1"), subnet("2", "City", "1")};
//   std::vector<Json::Value> nodes = {node("NE=12", "1", "2")};
//
// Thread-safety: thread-compatible values.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

namespace emf::test {

using Objects = std::vector<Json::Value>;

inline Json::Value subnet(const std::string& objId, const std::string& label,
                          const std::string& parentId) {
  Json::Value object(Json::objectValue);
  object["objId"] = objId;
  object["label"] = label;
  object["parentId"] = parentId;
  return object;
}

inline Json::Value node(const std::string& nativeId, const std::string& origin,
                        const std::string& parentId) {
  Json::Value object(Json::objectValue);
  object["nativeId"] = nativeId;
  object["origin"] = origin;
  object["parentId"] = parentId;
  return object;
}

// One page of the service, the last one when it has no marker.
inline Json::Value nodePage(const Objects& objects, const std::string& marker = std::string()) {
  Json::Value page(Json::objectValue);
  page["dataList"] = Json::Value(Json::arrayValue);
  for (const Json::Value& object : objects) page["dataList"].append(object);
  page["isTruncated"] = !marker.empty();
  if (!marker.empty()) page["marker"] = marker;
  return page;
}

}  // namespace emf::test
