// The topology's reads against what they cannot do without.
//
// getAllNodes and getAllSubMaps over 100,000 objects below the root: against the same pages fetched
// by one bare libcurl handle and parsed by jsoncpp's reader.
//
// getAllPhyLinks over 20,000 links: against the bare southbound calls that it makes, one for the
// ids, one for each 2000 links and one for each end of a link. The messages of the port lookups are
// above the threshold; a second benchmark writes them, four a link, to a file that swallows them.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <list>
#include <stdexcept>
#include <string>
#include <vector>

#include "bare_client.h"
#include "emftopointerface.h"
#include "orma/bundle/configuration.h"
#include "orma/log/log_sink.h"
#include "orma/southbound/southbound.h"
#include "paired.h"
#include "simulated_network.h"

namespace {

using NS_DOMAIN_SOUTHAPISET::TEErrInfoReturn;
using NS_DOMAIN_SOUTHAPISET::TELinkInfo;
using NS_DOMAIN_SOUTHAPISET::TEPortOAMStatus;
using NS_DOMAIN_SOUTHAPISET::TEUniResID;

constexpr int kElements = 16668;  // with 20,000 links
constexpr std::size_t kLinks = 19900;
constexpr std::ptrdiff_t kBatch = 2000;
constexpr int kAllAttributes = 0x3FF;

constexpr std::size_t kObjects = 100000;
constexpr char kNodesBelowTheRoot[] = "UPDATE device SET subnet_id = '102'";
constexpr char kSubnetsBelowTheRoot[] =
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000)"
    " INSERT INTO subnet SELECT 'b' || i, '102', 1000000 + i, '/b' || i, 'Subnet ' || i, 200, 2,"
    " '/icons/subnet.png', 'ProcID 7 x', i % 1000, i / 1000 FROM n";

constexpr char kViewPath[] = "/rest/topology/v3/subnet-view";
constexpr char kView[] =
    R"("condition":{"filter":{"logOp":"and","simple":{"caseSensitive":"false",)"
    R"("name":"nodeClass","operator":"in","value":["ne","container"]}}},"limit":1000)";
constexpr char kNodesPath[] = "/rest/topology/v3/tsnodes?limit=200&conditions=";
constexpr char kSubnets[] =
    R"([{"logOp":"and","simple":{"caseSensitive":true,"name":"nodeClass","operator":"equal",)"
    R"("value":"subnet"}},{"logOp":"and","simple":{"caseSensitive":true,"name":"parentId",)"
    R"("operator":"equal","value":"102"}}])";

void configureLog(const char* text) {
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = orma::Configuration::parse(text, "benchmark", "", problems);
  if (!configuration) throw std::runtime_error(problems.front().what);
  orma::configureLog(*configuration);
}

// The number of objects over all pages, each fetched by the marker of the one before.
template <typename Fetch>
std::size_t readPages(Fetch fetch) {
  std::size_t objects = 0;
  std::string marker;
  do {
    const Json::Value page = fetch(marker);
    objects += page["dataList"].size();
    marker = page["marker"].asString();
  } while (!marker.empty());
  return objects;
}

void getAllNodes(benchmark::State& state) {
  configureLog(R"({"log": {"level": 0}})");
  const SimulatedNetwork network(kObjects, kNodesBelowTheRoot);
  const std::string url = network.url(kViewPath);
  BareClient bare;
  std::list<Node> nodes;
  std::size_t objects = 0;
  comparePaired(
      state,
      [&nodes] {
        nodes.clear();
        EMFTopoI::getAllNodes("", nodes);
      },
      [&] {
        objects = readPages([&](const std::string& marker) {
          const std::string next = marker.empty() ? "" : R"(,"marker":")" + marker + '"';
          return bare.post(url, "{" + std::string(kView) + next + "}");
        });
      });
  if (nodes.size() < kObjects || objects != nodes.size()) {
    state.SkipWithError("the two readers did not see the same network");
  }
}
BENCHMARK(getAllNodes)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(11);

void getAllSubMaps(benchmark::State& state) {
  configureLog(R"({"log": {"level": 0}})");
  const SimulatedNetwork network(100, kSubnetsBelowTheRoot);
  BareClient bare;
  const std::string url = network.url(kNodesPath) + bare.escaped(kSubnets);
  std::list<SubMap> maps;
  std::size_t objects = 0;
  comparePaired(
      state,
      [&maps] {
        maps.clear();
        EMFTopoI::getAllSubMaps("S102", maps);
      },
      [&] {
        objects = readPages([&](const std::string& marker) {
          return bare.get(marker.empty() ? url : url + "&marker=" + bare.escaped(marker));
        });
      });
  if (maps.size() < kObjects || objects != maps.size() + 1) {  // the root is its own child
    state.SkipWithError("the two readers did not see the same network");
  }
}
BENCHMARK(getAllSubMaps)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(11);

std::size_t askState(const std::string& port) {
  std::vector<TEUniResID> ids(1);
  ids[0].uniResId = port;
  TEErrInfoReturn errors;
  std::vector<TEPortOAMStatus> states;
  NS_DOMAIN_SOUTHAPISET::GetPortStatus(ids, errors, states);
  return states.size();
}

// The number of ends whose state is known.
std::size_t bareLinks() {
  std::vector<TEUniResID> ids;
  NS_DOMAIN_SOUTHAPISET::GetLinkID({}, {}, ids);
  std::size_t states = 0;
  for (auto start = ids.begin(); start != ids.end();) {
    const auto end = start + std::min(kBatch, ids.end() - start);
    std::vector<TELinkInfo> infos;
    NS_DOMAIN_SOUTHAPISET::GetLinkInfo({start, end}, kAllAttributes, infos);
    for (const TELinkInfo& info : infos) {
      states += askState(info.srcPortResId) + askState(info.dstPortResId);
    }
    start = end;
  }
  return states;
}

void compareLinks(benchmark::State& state) {
  const SimulatedNetwork network(kElements);
  std::list<PhysicalLink> links;
  std::size_t states = 0;
  comparePaired(
      state,
      [&links] {
        links.clear();
        EMFTopoI::getAllPhyLinks(links);
      },
      [&states] { states = bareLinks(); });
  if (links.size() < kLinks || states != 2 * links.size()) {
    state.SkipWithError("the two readers did not see the same network");
  }
  state.counters["links"] = static_cast<double>(links.size());
}

void getAllPhyLinks(benchmark::State& state) {
  configureLog(R"({"log": {"level": 0}})");
  compareLinks(state);
}
BENCHMARK(getAllPhyLinks)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

void getAllPhyLinksTraced(benchmark::State& state) {
  configureLog(R"({"log": {"level": 1, "stderr": false, "file": "/dev/null"}})");
  compareLinks(state);
}
BENCHMARK(getAllPhyLinksTraced)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

// One question for a port's state.
void getPortStatus(benchmark::State& state) {
  configureLog(R"({"log": {"level": 0}})");
  const SimulatedNetwork network(1000);
  std::vector<TEUniResID> ids;
  NS_DOMAIN_SOUTHAPISET::GetLinkID({}, {}, ids);
  std::vector<TELinkInfo> infos;
  NS_DOMAIN_SOUTHAPISET::GetLinkInfo(ids, kAllAttributes, infos);
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(askState(infos[next % infos.size()].srcPortResId));
    ++next;
  }
}
BENCHMARK(getPortStatus)->Unit(benchmark::kMicrosecond);

}  // namespace
