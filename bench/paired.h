// Compares two ways of doing one thing in turns, so that both meet the same weather: what else the
// machine does falls on both and mostly leaves their ratio alone.
//
//   void devices(benchmark::State& state) { comparePaired(state, plugin, bare); }
//   BENCHMARK(devices)->UseManualTime();
//
// The benchmark's time is that of `ours`. The counters are `peer`, the peer's median time in
// seconds, `ratio`, the median of ours / peer over the pairs, and `cpu_ratio`, the same for the
// processor time of this process, which leaves out what both wait for.
//
// What ours leaves behind may be cleared untimed, by a third body that runs before each run of
// ours:
//
//   comparePaired(state, plugin, bare, [&] { devices.clear(); });
//
// Thread-safety: thread-compatible.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

struct Cost {
  double seconds;
  double cpuSeconds;  // of the whole process
};

inline double cpuSecondsNow() {
  timespec now{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

template <class Body>
Cost costOf(Body& body) {
  const auto start = std::chrono::steady_clock::now();
  const double cpuStart = cpuSecondsNow();
  body();
  const double cpu = cpuSecondsNow() - cpuStart;
  return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), cpu};
}

inline double median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Each body leaves the state that its next run needs.
template <class Ours, class Peer, class Clear>
void comparePaired(benchmark::State& state, Ours ours, Peer peer, Clear clear) {
  std::vector<double> peerSeconds;
  std::vector<double> ratios;
  std::vector<double> cpuRatios;
  bool oursFirst = false;
  for (auto _ : state) {
    oursFirst = !oursFirst;  // neither always runs on what the other left in the caches
    Cost theirs{};
    if (!oursFirst) theirs = costOf(peer);
    clear();
    const Cost our = costOf(ours);
    if (oursFirst) theirs = costOf(peer);
    state.SetIterationTime(our.seconds);
    peerSeconds.push_back(theirs.seconds);
    ratios.push_back(our.seconds / theirs.seconds);
    cpuRatios.push_back(our.cpuSeconds / theirs.cpuSeconds);
  }
  state.counters["peer"] = median(peerSeconds);
  state.counters["ratio"] = median(ratios);
  state.counters["cpu_ratio"] = median(cpuRatios);
}

template <class Ours, class Peer>
void comparePaired(benchmark::State& state, Ours ours, Peer peer) {
  comparePaired(state, ours, peer, [] {});
}
