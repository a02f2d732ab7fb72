#include "orma/rest/nbi_http_proxy.h"

#include <iterator>
#include <string>
#include <unordered_set>
#include <utility>

#include "http_client.h"
#include "orma/rest/rest_client.h"

namespace NS_UTIL {
namespace {

constexpr const char* kDevicesPath = "/rest/resource/v2/dev-properties";

// One walk over the pages of the device listing.
class DeviceWalk {
 public:
  DeviceWalk() : settings_(orma::rest::HttpClient::current()), request_(MakeRestReq()) {
    request_.url = kDevicesPath;
    request_.params["limit"] = settings_->settings().devicePageSize;
  }

  // True when every page came.
  bool run() {
    const auto maxPages = settings_->settings().maxPages;
    for (pages_ = 1; pages_ <= maxPages; ++pages_) {
      Json::Value page;
      if (!Nimbola::SendRestReq(request_, page)) return false;  // traced there
      if (!takeDevices(page)) return false;
      if (!hasMore(page)) return complete_;
    }
    return fail("there are more than " + std::to_string(maxPages) + " pages (rest.maxPages)");
  }

  std::vector<Json::Value>& devices() { return devices_; }
  std::size_t skipped() const { return skipped_; }

 private:
  bool takeDevices(Json::Value& page) {
    if (!page.isObject()) return fail("it is no object");
    Json::Value& list = page["objList"];
    if (!list.isArray()) return fail("it has no array \"objList\"");
    for (Json::Value& device : list) {
      if (device.isObject()) {
        devices_.push_back(std::move(device));  // copying a built value costs half of parsing it
      } else {
        ++skipped_;
      }
    }
    return true;
  }

  // False at the last page, and when the next one cannot be asked for: then the walk is not
  // complete.
  bool hasMore(const Json::Value& page) {
    const Json::Value& truncated = page["isTruncated"];
    if (!truncated.isNull() && !truncated.isBool()) return fail("\"isTruncated\" is no boolean");
    if (!truncated.isBool() || !truncated.asBool()) {
      complete_ = true;
      return false;
    }
    const Json::Value& marker = page["marker"];
    if (!marker.isString() || marker.asString().empty()) {
      return fail("more pages are announced and \"marker\" is no text or empty");
    }
    if (!markers_.insert(marker.asString()).second) {
      return fail("its \"marker\" came before, the pages would never end");
    }
    request_.params["marker"] = marker;
    return true;
  }

  bool fail(const std::string& reason) const {
    REST_TRACE(0, "Device listing " +
                      orma::rest::shownAddress(settings_->settings().baseUrl, kDevicesPath) +
                      " failed at page " + std::to_string(pages_) + ": " + reason +
                      "; check that rest.baseUrl names the right service in a matching release");
    return false;
  }

  std::shared_ptr<orma::rest::HttpClient> settings_;
  Nimbola::RestReq request_;
  std::vector<Json::Value> devices_;
  std::unordered_set<std::string> markers_;
  std::uint64_t pages_ = 0;
  std::size_t skipped_ = 0;
  bool complete_ = false;
};

}  // namespace

bool NBIHTTPProxy::GetAllDevProperty(std::vector<Json::Value>& out) {
  DeviceWalk walk;
  if (!walk.run()) return false;
  if (walk.skipped() != 0) {
    REST_TRACE(1, "Device listing: " + std::to_string(walk.skipped()) +
                      " elements are no objects and were left out");
  }
  std::vector<Json::Value>& devices = walk.devices();
  if (out.empty()) {
    out.swap(devices);
  } else {
    out.reserve(out.size() + devices.size());
    out.insert(out.end(), std::make_move_iterator(devices.begin()),
               std::make_move_iterator(devices.end()));
  }
  return true;
}

}  // namespace NS_UTIL
