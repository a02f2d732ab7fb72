// GET /rest/topology/v3/tsnodes?conditions=[…]&limit=N[&marker=M]: topology nodes, page by page.
#include "json_writer.h"
#include "parameters.h"
#include "services.h"
#include "topology_objects.h"

namespace ormasim {
namespace {

constexpr std::int64_t kDefaultLimit = 200;
constexpr std::int64_t kMaxLimit = 10'000;

TopologyFilter filterOf(const httplib::Request& request) {
  TopologyFilter filter;
  const auto parameter = request.params.find("conditions");
  if (parameter == request.params.end()) return filter;
  const Json::Value conditions = parseDocument(parameter->second, "parameter \"conditions\"");
  if (!conditions.isArray()) throw BadRequest("parameter \"conditions\" must be an array");
  for (const Json::Value& condition : conditions) {
    requireMembers(condition, "a condition", {"logOp", "simple"});
    requireAnd(condition["logOp"]);
    filter.add(condition["simple"], CaseFlag::Boolean);
  }
  return filter;
}

TopologyPosition startOf(const httplib::Request& request) {
  const auto marker = request.params.find("marker");
  if (marker == request.params.end()) return {};
  const auto position = topologyPositionOf(marker->second);
  if (!position) throw BadRequest("parameter \"marker\" is none that a page has handed out");
  return *position;
}

}  // namespace

std::string answerTsNodes(const httplib::Request& request, Inventory& inventory) {
  requireKnownParameters(request, {"conditions", "limit", "marker"});
  const TopologyFilter filter = filterOf(request);
  const std::int64_t limit = integerParameter(request, "limit", kDefaultLimit, 1, kMaxLimit);
  const TopologyPosition start = startOf(request);

  std::string body = "{\"dataList\":";
  const TopologyPage page =
      inventory.reader<TopologyObjects>().appendPage(filter, start, limit, body);
  body += page.more ? ",\"isTruncated\":true," : ",\"isTruncated\":false,";
  appendMember(body, "marker", page.more ? markerFor(page.last) : "");
  body += "}\n";
  return body;
}

}  // namespace ormasim
