// The resource queries against what they cannot do without: the same requests by one bare libcurl
// handle, the answers parsed by jsoncpp's reader.
//
// getResourceLabels for 50,000 ports, getAllManagedElements over 100,000 elements, and
// getContainedResourceByMainType where one of 1000 objects is wanted, out of 100,000.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <list>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "bare_client.h"
#include "emfresinterface.h"
#include "orma/bundle/configuration.h"
#include "orma/log/log_sink.h"
#include "paired.h"
#include "simulated_network.h"

namespace {

constexpr std::size_t kPorts = 50000;
constexpr std::size_t kFirstBatch = 100;
constexpr int kElements = 100000;
constexpr std::size_t kObjects = 100000;
constexpr std::size_t kFrames = kObjects / 1000;

constexpr char kPortsOfOneElement[] =
    "DELETE FROM resource WHERE dev_id = 2;"
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50000)"
    " INSERT INTO resource SELECT 9000000000000000000 + i, 2, i, 2,"
    " 'NE=2,FR=0,S=' || (i / 48) || ',SS=0,PP=' || (i % 48), 6, 65538,"
    " 'GE0/' || (i / 48) || '/' || (i % 48) FROM n";
constexpr char kAFrameInAThousand[] =
    "DELETE FROM resource WHERE dev_id = 2;"
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000)"
    " INSERT INTO resource SELECT 9000000000000000000 + i, 2, i, 2,"
    " CASE i % 1000 WHEN 0 THEN 'NE=2,FR=' || i ELSE 'NE=2,FR=0,S=1,SS=0,PP=' || i END,"
    " CASE i % 1000 WHEN 0 THEN 3 ELSE 6 END, 65538, 'Resource ' || i FROM n";

constexpr char kPortPath[] = "/rest/resource/v2/port-properties";
constexpr char kElementPath[] = "/rest/resource/v3/instances/objects/FixedNetworkElement";
constexpr char kContentsPath[] = "/rest/resource/v3/instances/objects";
constexpr char kElementQuery[] = R"("content-selector":["name","nativeId","neType"],"limit":1000)";
constexpr char kContentsQuery[] =
    R"({"limit":1000,"query-text":)"
    R"("\"g.V('NE=2').hasLabel('FixedNetworkElement').out('Has')\""})";

void logErrorsOnly() {
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = orma::Configuration::parse(R"({"log": {"level": 0, "stderr": false}})",
                                                        "benchmark", "", problems);
  if (!configuration) throw std::runtime_error(problems.front().what);
  orma::configureLog(*configuration);
}

std::map<int, std::string> portNames() {
  std::map<int, std::string> names;
  for (std::size_t i = 1; i <= kPorts; ++i) {
    names[static_cast<int>(i) - 1] =
        "NE=2,FR=0,S=" + std::to_string(i / 48) + ",SS=0,PP=" + std::to_string(i % 48);
  }
  return names;
}

// The request bodies of the batches.
std::vector<std::string> portBatches(const std::map<int, std::string>& names) {
  std::vector<std::string> bodies;
  std::size_t position = 0;
  for (std::size_t bound = kFirstBatch; position < names.size(); bound *= 2) {
    std::string ids;
    for (; position < std::min(bound, names.size()); ++position) {
      ids += (ids.empty() ? "\"" : ",\"") + names.at(static_cast<int>(position)) + '"';
    }
    bodies.push_back(R"({"nativeIds":[)" + ids + "]}");
  }
  return bodies;
}

void getResourceLabels(benchmark::State& state) {
  logErrorsOnly();
  const SimulatedNetwork network(10, kPortsOfOneElement);
  const std::map<int, std::string> names = portNames();
  const std::vector<std::string> batches = portBatches(names);
  const std::string url = network.url(kPortPath);
  BareClient bare;
  std::list<ResourceDn> labels;
  std::size_t objects = 0;
  comparePaired(
      state, [&] { EMFResMgrI::getResourceLabels(labels, names); },
      [&] {
        objects = 0;
        for (const std::string& body : batches) objects += bare.post(url, body)["objList"].size();
      },
      [&] { labels.clear(); });
  if (labels.size() != kPorts || objects != kPorts) {
    state.SkipWithError("the two readers did not see every port");
  }
}
BENCHMARK(getResourceLabels)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

// The number of objects over all pages.
std::size_t readElements(BareClient& bare, const std::string& url) {
  std::size_t objects = 0;
  std::string marker;
  do {
    const std::string next = marker.empty() ? "" : R"(,"marker":")" + marker + '"';
    const Json::Value page = bare.post(url, "{" + std::string(kElementQuery) + next + "}");
    objects += page["objList"].size();
    marker = page["marker"].asString();
  } while (!marker.empty());
  return objects;
}

void getAllManagedElements(benchmark::State& state) {
  logErrorsOnly();
  const SimulatedNetwork network(kElements);
  const std::string url = network.url(kElementPath);
  BareClient bare;
  std::list<Resource> elements;
  std::size_t objects = 0;
  comparePaired(
      state, [&] { EMFResMgrI::getAllManagedElements(elements); },
      [&] { objects = readElements(bare, url); }, [&] { elements.clear(); });
  if (elements.size() != kElements + 1 || objects != kElements) {
    state.SkipWithError("the two readers did not see every element");
  }
}
BENCHMARK(getAllManagedElements)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(11);

std::size_t readContents(BareClient& bare, const std::string& url) {
  std::size_t objects = 0;
  std::string body = kContentsQuery;
  std::string cursor;
  do {
    const Json::Value page = bare.post(url, body);
    objects += page["objList"].size();
    cursor = page["queryId"].asString();
    body = R"({"query-id":")" + cursor + R"("})";
  } while (!cursor.empty());
  return objects;
}

void getContainedResourceByMainType(benchmark::State& state) {
  logErrorsOnly();
  const SimulatedNetwork network(10, kAFrameInAThousand);
  const std::string url = network.url(kContentsPath);
  BareClient bare;
  std::list<Resource> frames;
  std::size_t objects = 0;
  comparePaired(
      state, [&] { EMFResMgrI::getContainedResourceByMainType({2}, 3, frames); },
      [&] { objects = readContents(bare, url); }, [&] { frames.clear(); });
  if (frames.size() != kFrames || objects != kObjects) {
    state.SkipWithError("the two readers did not see what the element contains");
  }
}
BENCHMARK(getContainedResourceByMainType)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(11);

}  // namespace
