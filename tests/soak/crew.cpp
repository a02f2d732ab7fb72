#include "crew.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <utility>

namespace soak {

namespace {

constexpr std::uint64_t kMostTold = 20;

}  // namespace

Crew::Crew(const Network& network, AlarmHistory& alarms, const SoakOptions& options)
    : network_(network),
      alarms_(alarms),
      options_(options),
      operations_(soak::operations()),
      counts_(operations_.size()) {}

Crew::~Crew() { stop(); }

void Crew::askEachOnce() {
  Context context(network_, alarms_, options_.seed);
  for (std::size_t i = 0; i < operations_.size(); ++i) callOne(i, context, options_.seed, true);
}

void Crew::start() {
  atWork_ = left_ = options_.threads;
  for (int i = 1; i <= options_.threads; ++i) {
    threads_.emplace_back(&Crew::run, this, options_.seed * 1000 + static_cast<std::uint64_t>(i));
  }
}

void Crew::pause() {
  std::unique_lock lock(mutex_);
  paused_ = true;
  changed_.wait(lock, [this] { return atWork_ == 0; });
}

void Crew::goOn() {
  {
    const std::lock_guard lock(mutex_);
    paused_ = false;
  }
  changed_.notify_all();
}

bool Crew::overWithin(std::chrono::milliseconds time) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, time, [this] { return left_ == 0; });
}

void Crew::stop() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    paused_ = false;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
}

std::uint64_t Crew::wrongAnswers() const {
  std::uint64_t wrong = 0;
  for (const OperationCounts& counts : counts_) wrong += counts.wrong;
  return wrong;
}

void Crew::run(std::uint64_t seed) {
  Context context(network_, alarms_, seed);
  goThroughTogether(context, seed);
  std::vector<std::size_t> order = round();
  const std::uint64_t rounds = options_.rounds;
  for (std::uint64_t i = 0; (rounds == 0 || i < rounds) && mayBegin(); ++i) {
    goThrough(order, context, seed);
  }
  {
    const std::lock_guard lock(mutex_);
    --atWork_;
    --left_;
  }
  changed_.notify_all();
}

// All threads call the same operation at a time, so that the product has made early what it makes
// for the largest number of callers: connections, sessions, and room for their largest answers.
void Crew::goThroughTogether(Context& context, std::uint64_t seed) {
  for (std::size_t operation = 0; operation < operations_.size(); ++operation) {
    meet();
    const int calls = std::min(operations_[operation].weight, options_.callsTogether);
    for (int i = 0; i < calls && mayBegin(); ++i) callOne(operation, context, seed, false);
  }
}

void Crew::goThrough(std::vector<std::size_t>& order, Context& context, std::uint64_t seed) {
  std::shuffle(order.begin(), order.end(), context.random);
  for (const std::size_t operation : order) {
    if (!mayBegin()) return;
    callOne(operation, context, seed, false);
  }
}

void Crew::callOne(std::size_t operation, Context& context, std::uint64_t seed, bool faultless) {
  Verdict verdict;
  try {
    verdict = operations_[operation].run(context);
  } catch (const std::exception& failure) {
    verdict = wrong(std::string("the check failed: ") + failure.what());
  }
  if (faultless && verdict.kind == Verdict::kFailed) {
    verdict = wrong("failed where no fault could meet it");
  }
  alarmsReceived_ += std::exchange(context.alarmsReceived, 0);
  statesTaken_ += std::exchange(context.statesTaken, 0);
  OperationCounts& counts = counts_[operation];
  if (verdict.kind == Verdict::kRight) ++counts.right;
  if (verdict.kind == Verdict::kFailed) ++counts.failed;
  if (verdict.kind == Verdict::kWrong && ++counts.wrong <= kMostTold) {
    std::fprintf(stderr, "MISMATCH %s, seed %llu, call %llu: %s\n", operations_[operation].name,
                 static_cast<unsigned long long>(seed),
                 static_cast<unsigned long long>(counts.calls()), verdict.difference.c_str());
  }
}

bool Crew::mayBegin() {
  std::unique_lock lock(mutex_);
  if (paused_) {
    --atWork_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return !paused_ || ended_; });
    ++atWork_;
  }
  return !ended_;
}

void Crew::meet() {
  std::unique_lock lock(mutex_);
  const auto all = static_cast<std::uint64_t>(options_.threads);
  const std::uint64_t awaited = (arrivals_++ / all + 1) * all;
  --atWork_;
  changed_.notify_all();
  changed_.wait(lock, [&] { return arrivals_ >= awaited || ended_; });
  ++atWork_;
}

std::vector<std::size_t> Crew::round() const {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    order.insert(order.end(), static_cast<std::size_t>(operations_[i].weight), i);
  }
  return order;
}

}  // namespace soak
