#include "growth.h"

#include <malloc.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

namespace soak {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr Seconds kShortestWindow{60};
// Resident memory goes up and down by some percent from sample to sample.
constexpr int kWindows = 5;  // behind the warm-up, of which the first and the last are compared
// A machine with other work gives fewer in a minute; then nothing is judged.
constexpr std::size_t kFewestSamples = 3;
constexpr double kMostGrowthPercent = 1.0;
constexpr double kMiB = 1024.0 * 1024.0;

template <class Sample, class Value>
double medianOf(const std::vector<Sample>& samples, Value value) {
  std::vector<double> values;
  for (const Sample& sample : samples) values.push_back(static_cast<double>(value(sample)));
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

template <class Sample, class Value>
std::size_t mostOf(const std::vector<Sample>& samples, Value value) {
  std::size_t most = 0;
  for (const Sample& sample : samples) most = std::max<std::size_t>(most, value(sample));
  return most;
}

}  // namespace

void Growth::sample(pid_t simulator) {
  if (samples_.size() == kMostSamples) return;
  Sample sample{std::chrono::steady_clock::now() - start_, heapBytes(), 0, 0, {}, {}};
  sample.database = static_cast<std::size_t>(::sqlite3_memory_used());
  sample.untrimmed = holdingsOf(::getpid()).residentBytes;
  ::malloc_trim(0);
  sample.process = holdingsOf(::getpid());
  sample.simulator = holdingsOf(simulator);
  samples_.push_back(sample);
}

void Growth::write(const std::string& file) const {
  std::ofstream out(file);
  out << "seconds,allocated,database,untrimmed,resident,threads,descriptors,simulatorResident,"
         "simulatorThreads,simulatorDescriptors\n";
  for (const Sample& sample : samples_) {
    out << sample.time.count() << ',' << sample.heap << ',' << sample.database << ','
        << sample.untrimmed << ',' << sample.process.residentBytes << ',' << sample.process.threads
        << ',' << sample.process.descriptors << ',' << sample.simulator.residentBytes << ','
        << sample.simulator.threads << ',' << sample.simulator.descriptors << '\n';
  }
}

Growth::Windows Growth::windows() const {
  Windows windows;
  const Seconds end = samples_.empty() ? Seconds(0) : samples_.back().time;
  const Seconds warm = options_.warmUp;
  windows.length = std::max(kShortestWindow, (end - warm) / kWindows);
  for (const Sample& sample : samples_) {
    if (sample.time < warm + windows.length) windows.warmUp.push_back(sample);
    if (sample.time >= warm && sample.time < warm + windows.length) windows.first.push_back(sample);
    if (sample.time >= warm + windows.length && sample.time > end - windows.length) {
      windows.last.push_back(sample);
    }
  }
  return windows;
}

template <class Value>
bool Growth::reportMedian(std::FILE* out, const char* name, const Windows& windows,
                          Value value) const {
  const double first = medianOf(windows.first, value);
  const double last = medianOf(windows.last, value);
  const double percent = first > 0 ? (last - first) * 100 / first : 0;
  const bool well = percent < kMostGrowthPercent;
  std::fprintf(out, "  %-44s %9.2f MiB  %9.2f MiB  %+6.2f %%  %s\n", name, first / kMiB,
               last / kMiB, percent, well ? "" : "GROWN");
  return well;
}

template <class Value>
bool Growth::reportMost(std::FILE* out, const char* name, const Windows& windows,
                        Value value) const {
  const std::size_t first = mostOf(windows.warmUp, value);
  const std::size_t last = mostOf(windows.last, value);
  std::fprintf(out, "  %-44s %9zu      %9zu      %+6lld    %s\n", name, first, last,
               static_cast<long long>(last) - static_cast<long long>(first),
               last <= first ? "" : "GROWN");
  return last <= first;
}

bool Growth::report(std::FILE* out) const {
  const Windows windows = this->windows();
  const auto warm = static_cast<long long>(options_.warmUp.count());
  const auto length = static_cast<long long>(windows.length.count());
  if (windows.first.size() < kFewestSamples || windows.last.size() < kFewestSamples) {
    std::fprintf(out, "growth: too short to be judged, %zu samples; that takes %lld s\n",
                 samples_.size(), warm + 120);
    return true;
  }
  std::fprintf(out,
               "growth: samples are taken while no operation is under way and the subnet task "
               "rests; both processes allocate from one arena.\n"
               "  memory: medians of the %zu samples of seconds %lld to %lld, and of the %zu "
               "samples of the last %lld seconds; at most +%.0f %%\n"
               "  threads, descriptors: most in seconds 0 to %lld, and in the last %lld; no more\n",
               windows.first.size(), warm, warm + length, windows.last.size(), length,
               kMostGrowthPercent, warm + length, length);
  bool well = reportMedian(out, "process: allocated (mallinfo2), without SQLite's", windows,
                           [](const Sample& sample) { return sample.heap - sample.database; });
  well &= reportMedian(out, "process: resident, behind malloc_trim", windows,
                       [](const Sample& sample) { return sample.process.residentBytes; });
  well &= reportMost(out, "process: threads", windows,
                     [](const Sample& sample) { return sample.process.threads; });
  well &= reportMost(out, "process: descriptors", windows,
                     [](const Sample& sample) { return sample.process.descriptors; });
  well &= reportMedian(out, "simulator: resident", windows,
                       [](const Sample& sample) { return sample.simulator.residentBytes; });
  well &= reportMost(out, "simulator: threads", windows,
                     [](const Sample& sample) { return sample.simulator.threads; });
  well &= reportMost(out, "simulator: descriptors", windows,
                     [](const Sample& sample) { return sample.simulator.descriptors; });
  std::fprintf(
      out, "  not judged: process resident before malloc_trim, most: %.2f MiB\n",
      static_cast<double>(mostOf(samples_, [](const Sample& sample) { return sample.untrimmed; })) /
          kMiB);
  std::fprintf(out, "  not judged: SQLite's page caches, at most 2 MB a session: %.2f MiB\n",
               medianOf(windows.last, [](const Sample& sample) { return sample.database; }) / kMiB);
  return well;
}

}  // namespace soak
