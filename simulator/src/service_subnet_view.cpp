// POST /rest/topology/v3/subnet-view: topology view objects, page by page.
#include "json_writer.h"
#include "parameters.h"
#include "services.h"
#include "topology_objects.h"

namespace ormasim {
namespace {

constexpr std::int64_t kMaxLimit = 10'000;

TopologyFilter filterOf(const Json::Value& document) {
  requireMembers(document["condition"], "\"condition\"", {"filter"});
  const Json::Value& filter = document["condition"]["filter"];
  requireMembers(filter, "\"filter\"", {"logOp", "simple"});
  requireAnd(filter["logOp"]);
  TopologyFilter parsed;
  parsed.add(filter["simple"], CaseFlag::Text);
  return parsed;
}

TopologyPosition positionFrom(const Json::Value& marker) {
  const auto position = marker.isString() ? topologyPositionOf(marker.asString()) : std::nullopt;
  if (!position) throw BadRequest("\"marker\" is none that a page has handed out");
  return *position;
}

}  // namespace

std::string answerSubnetView(const httplib::Request& request, Inventory& inventory) {
  requireKnownParameters(request, {});
  requireJsonBody(request);
  const Json::Value document = parseDocument(request.body, "the body");
  TopologyPosition start;
  if (document.isObject() && document.isMember("marker")) {
    requireMembers(document, "the body", {"condition", "limit", "marker"});
    start = positionFrom(document["marker"]);
  } else {
    requireMembers(document, "the body", {"condition", "limit"});
  }
  const TopologyFilter filter = filterOf(document);
  const std::int64_t limit = limitOf(document["limit"], kMaxLimit);

  std::string body = "{\"dataList\":";
  const TopologyPage page =
      inventory.reader<TopologyObjects>().appendPage(filter, start, limit, body);
  body += page.more ? ",\"hasNext\":true," : ",\"hasNext\":false,";
  appendMember(body, "marker", page.more ? markerFor(page.last) : "");
  body += "}\n";
  return body;
}

}  // namespace ormasim
