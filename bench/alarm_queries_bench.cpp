// Reading the alarm catalogue and the current alarms over loopback, with all that the operations
// do.
//
// getAllAlarmCfg for 50,000 definitions: against the same pages fetched by one bare libcurl handle
// and parsed by jsoncpp's reader.
//
// getAllAlarms for 100,000 alarms in frames of 1,000: against the same frames read from a bare
// socket and decoded by asn1c's generated code. A server in this process has the frames ready.
#include <benchmark/benchmark.h>

#include <list>
#include <string>
#include <vector>

#include "bare_client.h"
#include "emfalminterface.h"
#include "paired.h"
#include "simulated_network.h"

#ifdef EMF_BENCH_ASN1C
#include <stdexcept>
#include <utility>

#include "alarm_frame.h"
#include "alarm_peers.h"
#include "bare_fault_client.h"
#include "orma/bundle/configuration.h"
#include "prepared_fault_server.h"
#endif

namespace {

constexpr int kElements = 1000;

constexpr std::size_t kDefinitions = 50000;
constexpr int kPage = 5000;
constexpr char kDefinitionsPath[] = "/rest/fault/v1/alarm-definitions";
// The simulator's own definitions, again and again with other numbers.
constexpr char kManyDefinitions[] =
    "WITH RECURSIVE n(i) AS (SELECT (SELECT count(*) FROM alarm_definition) UNION ALL "
    "SELECT i + 1 FROM n WHERE i < 49999) "
    "INSERT INTO alarm_definition SELECT n.i, 7, 10000 + n.i, d.event_type, d.function_type, "
    "d.severity, d.name || '_' || n.i, d.description FROM n JOIN alarm_definition d "
    "ON d.seq = n.i % 20";

// The number of elements.
std::size_t readDefinitions(BareClient& client, const std::string& url) {
  std::size_t elements = 0;
  std::size_t total = 1;
  for (std::size_t offset = 0; offset < total; offset += kPage) {
    const Json::Value page =
        client.post(url, "{\"limit\":5000,\"offset\":" + std::to_string(offset) + "}");
    total = page["totalCount"].asUInt64();
    elements += page["definitions"].size();
  }
  return elements;
}

void getAllAlarmCfg(benchmark::State& state) {
  const SimulatedNetwork network(kElements, kManyDefinitions);
  BareClient bare;
  const std::string url = network.url(kDefinitionsPath);
  std::vector<AlarmCfg> definitions;
  std::size_t elements = 0;
  comparePaired(
      state,
      [&] {
        definitions = {};
        EMFAlarmI::getAllAlarmCfg(definitions);
      },
      [&] { elements = readDefinitions(bare, url); });
  if (definitions.size() != kDefinitions + 1 || elements != kDefinitions) {
    state.SkipWithError("the two readers did not see the whole catalogue");
  }
}
BENCHMARK(getAllAlarmCfg)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

#ifdef EMF_BENCH_ASN1C
constexpr int kFrames = 100;
constexpr int kItems = 1000;

std::vector<std::string> alarmFrames() {
  std::vector<std::string> frames;
  for (int number = 1; number <= kFrames; ++number) {
    frames.push_back(alarmFrame(kItems, number, kFrames));
  }
  return frames;
}

void useServer(unsigned short port) {
  std::vector<orma::ConfigProblem> problems;
  auto configuration = orma::Configuration::parse(
      R"({"faultServer":{"host":"127.0.0.1","port":)" + std::to_string(port) + "}}", "benchmark",
      "", problems);
  if (!configuration) throw std::runtime_error(problems.front().what);
  orma::Configuration::install(std::move(configuration));
}

void getAllAlarms(benchmark::State& state) {
  const PreparedFaultServer server(alarmFrames());
  useServer(server.port());
  std::list<FaultRecord> alarms;
  std::size_t items = 0;
  comparePaired(
      state,
      [&] {
        alarms.clear();
        EMFAlarmI::getAllAlarms(alarms);
      },
      [&] {
        items = 0;
        BareFaultClient client(server.port());
        for (std::string frame; client.next(frame);) items += Asn1cReply(frame).items();
      });
  if (alarms.size() != kFrames * kItems || items != alarms.size()) {
    state.SkipWithError("the two readers did not see every alarm");
  }
}
BENCHMARK(getAllAlarms)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);
#endif

}  // namespace
