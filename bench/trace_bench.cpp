// What a trace call costs: the five steps of the call form with a message above the threshold,
// and the same written to a file that swallows everything.
#include <benchmark/benchmark.h>

#include <vector>

#include "orma/bundle/configuration.h"
#include "orma/log/log_sink.h"
#include "orma/log/trace.h"

namespace {

bool configure(const char* text) {
  std::vector<orma::ConfigProblem> problems;
  const auto configuration = orma::Configuration::parse(text, "benchmark", "", problems);
  if (configuration) orma::configureLog(*configuration);
  return configuration != nullptr;
}

void traceFound(int count) {
  NS_CORBA::GetTss()->file = "emftopointerface";
  NS_CORBA::GetTss()->function = "unknown";
  NS_CORBA::GetTss()->line = __LINE__;
  NS_CORBA::TaDebugWithPara(3, "found %d of %s", count, "devices");
}

void traceAboveThreshold(benchmark::State& state) {
  if (!configure(R"({"log": {"level": 1}})")) state.SkipWithError("bad configuration");
  int count = 0;
  for (auto _ : state) traceFound(++count);
}
BENCHMARK(traceAboveThreshold)->ThreadRange(1, 2);

void traceWritten(benchmark::State& state) {
  if (!configure(R"({"log": {"level": 3, "stderr": false, "file": "/dev/null"}})")) {
    state.SkipWithError("bad configuration");
  }
  int count = 0;
  for (auto _ : state) traceFound(++count);
}
BENCHMARK(traceWritten);

}  // namespace
