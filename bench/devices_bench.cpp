// Reading 100,000 devices over loopback: EMFTopoI::getAllDevices, with all that it does, against
// the same pages fetched by one bare libcurl handle and parsed by jsoncpp's reader.
#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <json/reader.h>

#include <list>
#include <memory>
#include <stdexcept>
#include <string>

#include "emftopointerface.h"
#include "paired.h"
#include "simulated_network.h"

namespace {

constexpr int kDevices = 100000;
constexpr char kListing[] = "/rest/resource/v2/dev-properties?limit=1000";  // the default page

std::size_t append(char* bytes, std::size_t size, std::size_t count, void* text) {
  static_cast<std::string*>(text)->append(bytes, size * count);
  return size * count;
}

class BareClient {
 public:
  explicit BareClient(std::string url) : url_(std::move(url)), curl_(curl_easy_init()) {
    curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(curl_, CURLOPT_WRITEDATA, &body_);
    const Json::CharReaderBuilder builder;
    reader_.reset(builder.newCharReader());
  }
  BareClient(const BareClient&) = delete;
  BareClient& operator=(const BareClient&) = delete;
  ~BareClient() { curl_easy_cleanup(curl_); }

  // The number of rows.
  std::size_t readAll() {
    std::size_t rows = 0;
    std::string marker;
    do {
      const Json::Value page = read(marker.empty() ? url_ : url_ + "&marker=" + marker);
      rows += page["objList"].size();
      marker = page["marker"].asString();
    } while (!marker.empty());
    return rows;
  }

 private:
  Json::Value read(const std::string& url) {
    body_.clear();
    curl_easy_setopt(curl_, CURLOPT_URL, url.c_str());
    const CURLcode code = curl_easy_perform(curl_);
    if (code != CURLE_OK) throw std::runtime_error(curl_easy_strerror(code));
    Json::Value page;
    std::string problems;
    if (!reader_->parse(body_.data(), body_.data() + body_.size(), &page, &problems)) {
      throw std::runtime_error(problems);
    }
    return page;
  }

  const std::string url_;
  CURL* curl_;
  std::string body_;
  std::unique_ptr<Json::CharReader> reader_;
};

void getAllDevices(benchmark::State& state) {
  const SimulatedNetwork network(kDevices);
  BareClient bare(network.url(kListing));
  std::list<Device> devices;
  std::size_t rows = 0;
  comparePaired(
      state,
      [&] {
        devices.clear();
        EMFTopoI::getAllDevices(devices);
      },
      [&] { rows = bare.readAll(); });
  if (devices.size() != kDevices || rows <= devices.size()) {
    state.SkipWithError("the two readers did not see the whole network");
  }
}
BENCHMARK(getAllDevices)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

}  // namespace
