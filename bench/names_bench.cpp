// The names that are made for each resource: the northbound character set, and the FDN of a device
// with what its buffer costs in page faults and memory.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "emfresinterface.h"
#include "orma/bundle/configuration.h"
#include "resourcenames.h"

namespace {

// The label of a network element, half Chinese.
const std::string kLabel = "\xE4\xB8\x8A\xE6\xB5\xB7-\xE6\xA0\xB8\xE5\xBF\x83-NE40E-0012";

void toNorthCharset(benchmark::State& state) {
  std::vector<orma::ConfigProblem> problems;
  orma::Configuration::install(orma::Configuration::parse(
      R"({"text": {"characterSetSwitch": )" + std::to_string(state.range(0)) + "}}", "benchmark",
      "", problems));
  if (!problems.empty()) state.SkipWithError(problems.front().what.c_str());
  for (auto _ : state) benchmark::DoNotOptimize(ToNorthCharset(kLabel.c_str()));
  orma::Configuration::install(nullptr);
}
BENCHMARK(toNorthCharset)->ArgName("switch")->DenseRange(0, 2);

double minorFaults() {
  rusage usage;
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_minflt);
}

double residentBytes() {
  std::ifstream statm("/proc/self/statm");
  double total = 0;
  double resident = 0;
  statm >> total >> resident;
  return resident * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

void adpDevIdToFdn(benchmark::State& state) {
  std::string fdn;
  std::uint32_t id = 0;
  const double faults = minorFaults();
  const double resident = residentBytes();
  for (auto _ : state) benchmark::DoNotOptimize(EMFResMgrI::AdpDevID2FDN(++id, fdn));
  const double calls = static_cast<double>(state.iterations());
  state.counters["faults_per_call"] = (minorFaults() - faults) / calls;
  state.counters["bytes_per_call"] = (residentBytes() - resident) / calls;
}
BENCHMARK(adpDevIdToFdn)->ThreadRange(1, 2);

}  // namespace
