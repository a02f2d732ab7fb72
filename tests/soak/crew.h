// Threads that go through all operations, each in an order of its own, and what came of it.
//
//   Crew crew(operations(), network, alarms, options);
//   crew.start();
//   crew.pause(); sample(); crew.goOn();
//   crew.stop();
//
// A wrong answer is told on standard error at once.
//
// Thread-safety: thread-compatible; it belongs to the thread that made it. Nothing fails.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "operation.h"
#include "soak_options.h"

namespace soak {

struct OperationCounts {
  std::atomic<std::uint64_t> right{0};
  std::atomic<std::uint64_t> failed{0};
  std::atomic<std::uint64_t> wrong{0};

  std::uint64_t calls() const { return right + failed + wrong; }
};

class Crew {
 public:
  Crew(const Network& network, AlarmHistory& alarms, const SoakOptions& options);
  ~Crew();

  // Each operation once, on this thread, where no fault can meet it: every answer has to be right.
  void askEachOnce();
  void start();
  // Waits until no operation is under way; none begins until goOn.
  void pause();
  void goOn();
  // Waits until all rounds are over, or for so long; whether they are.
  bool overWithin(std::chrono::milliseconds time);
  // Ends the threads behind their operations.
  void stop();

  const std::vector<Operation>& operations() const { return operations_; }
  const OperationCounts& counts(std::size_t operation) const { return counts_[operation]; }
  std::uint64_t wrongAnswers() const;
  std::uint64_t alarmsReceived() const { return alarmsReceived_; }
  std::uint64_t statesTaken() const { return statesTaken_; }

 private:
  void run(std::uint64_t seed);
  void goThroughTogether(Context& context, std::uint64_t seed);
  void goThrough(std::vector<std::size_t>& round, Context& context, std::uint64_t seed);
  void callOne(std::size_t operation, Context& context, std::uint64_t seed, bool faultless);
  // Rests while the others shall; false when it is over.
  bool mayBegin();
  // Waits until every thread has come here as often.
  void meet();
  std::vector<std::size_t> round() const;

  const Network& network_;
  AlarmHistory& alarms_;
  const SoakOptions options_;
  const std::vector<Operation> operations_;
  std::vector<OperationCounts> counts_;
  std::atomic<std::uint64_t> alarmsReceived_{0};
  std::atomic<std::uint64_t> statesTaken_{0};

  std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  bool paused_ = false;
  bool ended_ = false;
  int atWork_ = 0;
  std::uint64_t arrivals_ = 0;  // where threads meet
  int left_ = 0;                // threads that have not ended
  std::vector<std::thread> threads_;
};

}  // namespace soak
