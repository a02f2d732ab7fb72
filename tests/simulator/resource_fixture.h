// The services of resources, asked as the agent asks them.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "server_fixture.h"

namespace ormasim::testing {

constexpr char kGraphQuery[] = "/rest/resource/v3/instances/objects";
constexpr char kElements[] = "/rest/resource/v3/instances/objects/FixedNetworkElement";
constexpr char kFrames[] = "/rest/resource/v3/instances/objects/FixedNetworkFrame/actions/query";
constexpr char kCards[] = "/rest/resource/v3/instances/objects/FixedNetworkCard/actions/query";
constexpr char kMainTypesPath[] = "/rest/resource/v2/metadatas/main-resource-type";
constexpr char kLocation[] = "/rest/resource/v2/location-maintenance";

class ResourceTest : public ServerTest {
 protected:
  // The answer to a post that must succeed.
  Json::Value posted(const std::string& path, const std::string& body);
  Json::Value properties(const std::string& kind, const std::vector<std::string>& names);
  // The objects of all pages and the number of pages, asked for with these members of the body.
  std::vector<Json::Value> walk(const std::string& path, const std::string& members,
                                std::size_t& pages, const char* list = "objList");
  std::vector<Json::Value> contained(const std::string& element, int limit, std::size_t& pages);

  static std::string graphQuery(const std::string& element, const std::string& more = "");
  // {"filter": {"logOp": …, "simple": […]}}
  static std::string condition(const std::string& logOp,
                               const std::vector<std::string>& expressions);
  std::vector<std::string> rows(const std::string& sql) {
    return query(directory_.path("net.db"), sql);
  }
};

// An object as "main type|name on the platform|label|sub type".
std::string line(const Json::Value& object);
std::vector<std::string> lines(const std::vector<Json::Value>& objects);
std::vector<std::string> lines(const Json::Value& array);

// Such lines from the database, in the order of the resources.
std::string storedLines(const std::string& where);

}  // namespace ormasim::testing
