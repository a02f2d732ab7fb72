#include "orma/rest/nbi_http_proxy.h"

#include <future>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "http_client.h"
#include "orma/rest/rest_client.h"

namespace NS_UTIL {
namespace {

constexpr const char* kDevicesPath = "/rest/resource/v2/dev-properties";

using orma::rest::Connection;
using orma::rest::Failure;
using orma::rest::HttpClient;
using orma::rest::JsonTopLevel;

// What became of one page's exchange.
struct Fetched {
  std::unique_ptr<Connection> connection;  // null on failure
  Failure failure;
};

// One walk over the pages of the device listing. While a page is built, the next one is fetched in
// the background: the service then works at the same time as this thread.
class DeviceWalk {
 public:
  DeviceWalk() : client_(HttpClient::current()), request_(MakeRestReq()) {
    request_.url = kDevicesPath;
    request_.params["limit"] = client_->settings().devicePageSize;
  }

  // True when every page came.
  bool run() {
    const auto maxPages = client_->settings().maxPages;
    for (pages_ = 1; pages_ <= maxPages; ++pages_) {
      Json::Value page;
      if (!nextPage(page) || !takeDevices(page)) return false;
      if (!hasMore(page)) return complete_;
    }
    return fail("there are more than " + std::to_string(maxPages) + " pages (rest.maxPages)");
  }

  std::vector<Json::Value>& devices() { return devices_; }
  std::size_t skipped() const { return skipped_; }

 private:
  bool nextPage(Json::Value& page) {
    Fetched fetched = ahead_.valid() ? ahead_.get() : fetch(client_, request_);
    const auto glance = [this](const JsonTopLevel& top) { fetchAhead(top); };
    if (fetched.connection &&
        client_->read(std::move(fetched.connection), request_, page, fetched.failure, glance)) {
      return true;
    }
    client_->traceFailure(request_, fetched.failure);
    return false;
  }

  static Fetched fetch(const std::shared_ptr<HttpClient>& client, const Nimbola::RestReq& request) {
    Fetched fetched;
    fetched.connection = client->fetch(request, fetched.failure);
    return fetched;
  }

  // Starts on the next page when this one is sure to ask for it.
  void fetchAhead(const JsonTopLevel& top) {
    if (pages_ == client_->settings().maxPages) return;
    const std::string marker = top.text("marker");
    if (!top.isArray("objList") || !top.isTrue("isTruncated") || marker.empty()) return;
    if (markers_.count(marker) != 0) return;
    Nimbola::RestReq next = request_;
    next.params["marker"] = marker;
    try {
      ahead_ = std::async(std::launch::async, fetch, client_, std::move(next));
    } catch (const std::system_error&) {
      // No thread to be had: the page is fetched when its turn comes.
    }
  }

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
                      orma::rest::shownAddress(client_->settings().baseUrl, kDevicesPath) +
                      " failed at page " + std::to_string(pages_) + ": " + reason +
                      "; check that rest.baseUrl names the right service in a matching release");
    return false;
  }

  std::shared_ptr<HttpClient> client_;
  Nimbola::RestReq request_;
  std::future<Fetched> ahead_;  // the next page, where it is being fetched already
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
