// What a line of the agent log costs, with one thread and with eight, against a bare fwrite and
// flush by as many threads. The counter `lines` is lines a second, `ratio` ours by the peer's time.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "filelogs.h"
#include "paired.h"

namespace {

constexpr int kLines = 20000;
constexpr char kLine[] =
    "Thread:1234567, 2026-03-01 12:34:56 a line of one hundred bytes, as a diagnosis may well "
    "be..\n";

// A directory that takes the log files, as working directory and as prefix, while the program runs.
class LogDirectory {
 public:
  LogDirectory() {
    std::string path = (std::filesystem::temp_directory_path() / "emf_log_XXXXXX").string();
    if (::mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary directory");
    path_ = path;
    std::filesystem::create_directory(path_ / "log");
    std::filesystem::current_path(path_);
    ::setenv(".", path_.c_str(), 1);
  }
  ~LogDirectory() { std::filesystem::remove_all(path_); }

 private:
  std::filesystem::path path_;
};

// Calls `write` kLines times, shared out among the threads.
template <class Write>
void writeLines(int threads, Write write) {
  const auto share = [&write, threads] {
    for (int i = 0; i < kLines / threads; ++i) write();
  };
  if (threads == 1) return share();
  std::vector<std::thread> running;
  for (int i = 0; i < threads; ++i) running.emplace_back(share);
  for (std::thread& thread : running) thread.join();
}

void agentLog(benchmark::State& state) {
  static const LogDirectory directory;
  const int threads = static_cast<int>(state.range(0));
  const auto ours = [threads] { writeLines(threads, [] { WriteLog(kLine); }); };
  const auto bare = [threads] {
    std::FILE* const file = std::fopen("bare.log", "w+");
    if (file == nullptr) throw std::runtime_error("no file");
    writeLines(threads, [file] {
      std::fwrite(kLine, 1, std::strlen(kLine), file);
      std::fflush(file);
    });
    std::fclose(file);
  };
  comparePaired(state, ours, bare);
  state.counters["lines"] = benchmark::Counter(static_cast<double>(state.iterations()) * kLines,
                                               benchmark::Counter::kIsRate);
}
BENCHMARK(agentLog)->Arg(1)->Arg(8)->ArgName("threads")->UseManualTime()->MinTime(1.0);

}  // namespace
