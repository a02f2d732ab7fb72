// The topology's reads against what they cannot do without.
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

void configureLog(const char* text) {
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = orma::Configuration::parse(text, "benchmark", "", problems);
  if (!configuration) throw std::runtime_error(problems.front().what);
  orma::configureLog(*configuration);
}

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
