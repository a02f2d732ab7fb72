// The soak of the whole product: threads go through all operations of the plug-in, which runs as a
// service of this process, over real sockets to an ormasim that raises alarms and misbehaves, and
// every answer is compared with the inventory database. docs/testing.md tells how to read it.
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>

#include "crew.h"
#include "growth.h"
#include "orma/metrics/outside_services.h"
#include "platform_side.h"
#include "refreshes.h"
#include "service_host.h"

namespace soak {

namespace {

constexpr std::chrono::seconds kPatience{120};
constexpr std::chrono::seconds kTick{1};
constexpr std::size_t kRememberedInTimesOfKept = 3;

using Unsigned = unsigned long long;

// Standard output is the plug-in's, which prints to it: what is told here goes to where it led.
std::FILE* takeStandardOutput() {
  std::FILE* out = ::fdopen(::dup(STDOUT_FILENO), "w");
  const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (out == nullptr || nowhere < 0) throw std::runtime_error("standard output cannot be used");
  ::dup2(nowhere, STDOUT_FILENO);
  ::close(nowhere);
  return out;
}

// With an arena for each thread, resident memory would depend for hours on which thread was the
// last to fill the caches.
void shareOneArena() { ::mallopt(M_ARENA_MAX, 1); }

class Soak {
 public:
  Soak(const SoakOptions& options, std::FILE* out)
      : options_(options),
        out_(out),
        platform_(options),
        network_(platform_.database()),
        alarms_(platform_.database(),
                static_cast<std::size_t>(options.alarmsKept) * kRememberedInTimesOfKept),
        host_(platform_.agentConfiguration()),
        crew_(network_, alarms_, options),
        growth_(options) {}

  bool run() {
    if (!host_.start()) throw std::runtime_error("the services did not start");
    if (!awaitRefreshes(1, kPatience)) throw std::runtime_error("no subnet names were read");
    const std::int64_t alarmsBefore = alarms_.mark();
    crew_.askEachOnce();
    platform_.raiseAlarms();
    crew_.start();
    watch();
    crew_.stop();
    alarmsRaised_ = alarms_.mark() - alarmsBefore;
    host_.stop();
    const std::string ends = platform_.stop();
    return report(ends);
  }

 private:
  void watch() {
    const auto start = std::chrono::steady_clock::now();
    auto nextSample = start + options_.betweenSamples;
    while (!crew_.overWithin(kTick)) {
      const auto now = std::chrono::steady_clock::now();
      if (options_.rounds == 0 && now - start >= options_.length) return;
      alarms_.mark();
      if (now < nextSample) continue;
      nextSample = now + options_.betweenSamples;
      refreshed_ &= refreshNow(kPatience);
      crew_.pause();
      growth_.sample(platform_.simulator());
      crew_.goOn();
    }
  }

  bool report(const std::string& ends) {
    bool well = reportOperations();
    std::fprintf(out_, "alarms: %llu raised, %llu received\n", static_cast<Unsigned>(alarmsRaised_),
                 static_cast<Unsigned>(crew_.alarmsReceived()));
    std::fprintf(out_, "refreshes of the subnet names: %llu; fillings of the device cache: %llu\n",
                 static_cast<Unsigned>(refreshes()), static_cast<Unsigned>(deviceCacheFillings()));
    std::fprintf(out_, "port states that another thread's answer had taken the place of: %llu\n",
                 static_cast<Unsigned>(crew_.statesTaken()));
    std::fprintf(out_, "exchanges that failed: %llu\n", static_cast<Unsigned>(failedExchanges()));
    well &= growth_.report(out_);
    if (!options_.samplesFile.empty()) growth_.write(options_.samplesFile);
    if (!refreshed_) std::fprintf(out_, "the subnet names were not refreshed in time\n");
    std::fputs(ends.c_str(), out_);
    well = well && refreshed_ && ends.empty();
    std::fprintf(out_, "%s\n", well ? "passed" : "FAILED");
    return well;
  }

  bool reportOperations() {
    std::uint64_t answers = 0;
    std::uint64_t failures = 0;
    bool enough = true;
    std::fprintf(out_, "%-52s %10s %10s %9s %9s\n", "operation", "calls", "right", "failed",
                 "wrong");
    for (std::size_t i = 0; i < crew_.operations().size(); ++i) {
      const OperationCounts& counts = crew_.counts(i);
      const bool few = counts.right < options_.rightAnswers;
      std::fprintf(out_, "%-52s %10llu %10llu %9llu %9llu%s\n", crew_.operations()[i].name,
                   static_cast<Unsigned>(counts.calls()), static_cast<Unsigned>(counts.right),
                   static_cast<Unsigned>(counts.failed), static_cast<Unsigned>(counts.wrong),
                   few ? "  TOO FEW RIGHT ANSWERS" : "");
      answers += counts.calls();
      failures += counts.failed;
      enough = enough && !few;
    }
    std::fprintf(out_, "answers checked: %llu, failures met: %llu, mismatches: %llu\n",
                 static_cast<Unsigned>(answers), static_cast<Unsigned>(failures),
                 static_cast<Unsigned>(crew_.wrongAnswers()));
    return enough && crew_.wrongAnswers() == 0;
  }

  const SoakOptions options_;
  std::FILE* const out_;
  PlatformSide platform_;
  const Network network_;
  AlarmHistory alarms_;
  ormaagent::ServiceHost host_;
  Crew crew_;
  Growth growth_;
  bool refreshed_ = true;
  std::int64_t alarmsRaised_ = 0;
};

// Few elements, no fault that only a deadline ends, and an end that depends on no time.
void makeShort(SoakOptions& options) {
  options.rounds = 1;
  options.callsTogether = 2;
  options.elements = 60;
  options.equipped = 6;
  options.definitions = 0;
  options.alarmsKept = 200;
  options.alarmsOfAFrame = 20;
  options.alarmsASecond = 100;
  options.betweenSamples = std::chrono::seconds(2);
  options.endlessStalls = false;
  options.rightAnswers = 1;
}

int runSoak(int argc, char** argv) {
  CLI::App app("The soak of the whole product", "emf_soak");
  SoakOptions options;
  double minutes = 30;
  double warmUp = 5;
  bool isShort = false;
  app.add_option("--minutes", minutes, "How long it asks [30]")->check(CLI::Range(0.1, 100'000.0));
  app.add_option("--warm-up", warmUp, "Minutes before growth counts [5]")
      ->check(CLI::Range(0.0, 1000.0));
  app.add_option("--threads", options.threads, "Threads that ask [8]")->check(CLI::Range(1, 64));
  app.add_option("--seed", options.seed, "Of the network, the faults and the threads [1]");
  app.add_option("--elements", options.elements, "Elements of the network [10000]")
      ->check(CLI::Range(50, 1'000'000));
  app.add_option("--rate", options.alarmsASecond, "Alarms a second [1000]")
      ->check(CLI::Range(1, 100'000));
  app.add_option("--samples", options.samplesFile, "Write what was held, and when, as CSV")
      ->type_name("FILE");
  app.add_flag("--short", isShort, "One round of each thread over a small network");
  CLI11_PARSE(app, argc, argv);
  options.length = std::chrono::seconds(static_cast<std::int64_t>(minutes * 60));
  options.warmUp = std::chrono::seconds(static_cast<std::int64_t>(warmUp * 60));
  if (isShort) makeShort(options);

  shareOneArena();
  std::FILE* const out = takeStandardOutput();
  std::fprintf(out, "seed %llu, %d threads, %d elements, %d alarms a second\n",
               static_cast<Unsigned>(options.seed), options.threads, options.elements,
               options.alarmsASecond);
  std::fflush(out);
  const bool passed = Soak(options, out).run();
  std::fclose(out);
  return passed ? 0 : 1;
}

}  // namespace

}  // namespace soak

int main(int argc, char** argv) {
  try {
    return soak::runSoak(argc, argv);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "emf_soak: %s\n", failure.what());
    return 1;
  }
}
