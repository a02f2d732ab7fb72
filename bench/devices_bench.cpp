// Reading 100,000 devices over loopback: EMFTopoI::getAllDevices, with all that it does, against
// the same pages fetched by one bare libcurl handle and parsed by jsoncpp's reader.
#include <benchmark/benchmark.h>

#include <list>
#include <string>

#include "bare_client.h"
#include "emftopointerface.h"
#include "paired.h"
#include "simulated_network.h"

namespace {

constexpr int kDevices = 100000;
constexpr char kListing[] = "/rest/resource/v2/dev-properties?limit=1000";  // the default page

// The number of rows.
std::size_t readAll(BareClient& client, const std::string& url) {
  std::size_t rows = 0;
  std::string marker;
  do {
    const Json::Value page = client.get(marker.empty() ? url : url + "&marker=" + marker);
    rows += page["objList"].size();
    marker = page["marker"].asString();
  } while (!marker.empty());
  return rows;
}

void getAllDevices(benchmark::State& state) {
  const SimulatedNetwork network(kDevices);
  BareClient bare;
  const std::string url = network.url(kListing);
  std::list<Device> devices;
  std::size_t rows = 0;
  comparePaired(
      state,
      [&] {
        devices.clear();
        EMFTopoI::getAllDevices(devices);
      },
      [&] { rows = readAll(bare, url); });
  if (devices.size() != kDevices || rows <= devices.size()) {
    state.SkipWithError("the two readers did not see the whole network");
  }
}
BENCHMARK(getAllDevices)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

}  // namespace
