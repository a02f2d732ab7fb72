// GET /rest/resource/v2/dev-properties?limit=N[&marker=M]: the property listing, page by page.
#include "device_listing.h"
#include "json_writer.h"
#include "parameters.h"
#include "services.h"

namespace ormasim {
namespace {

constexpr std::int64_t kDefaultLimit = 200;
constexpr std::int64_t kMaxLimit = 100'000;

DevicePosition startOf(const httplib::Request& request) {
  const auto marker = request.params.find("marker");
  if (marker == request.params.end()) return {};
  const std::optional<DevicePosition> position = positionOf(marker->second);
  if (!position) {
    throw BadRequest("parameter \"marker\" is " + quoted(marker->second) +
                     ", which no page has handed out");
  }
  return *position;
}

}  // namespace

std::string answerDevProperties(const httplib::Request& request, Inventory& inventory) {
  requireKnownParameters(request, {"limit", "marker"});
  const std::int64_t limit = integerParameter(request, "limit", kDefaultLimit, 1, kMaxLimit);
  const DevicePosition start = startOf(request);

  std::string body = "{\"objList\":";
  const DevicePage page = inventory.reader<DeviceListing>().appendPage(start, limit, body);
  body += page.more ? ",\"isTruncated\":true," : ",\"isTruncated\":false,";
  appendMember(body, "marker", page.more ? markerFor(page.last) : "");
  body += "}\n";
  return body;
}

}  // namespace ormasim
