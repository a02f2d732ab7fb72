#include "sleep_interrupter.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <fstream>
#include <future>
#include <string>
#include <thread>

namespace ormaagent {
namespace {

using std::chrono::seconds;

constexpr seconds kDeadline{20};

// Sleeps half an hour as often as told; the number of sleeps that a signal ended.
int interruptedSleeps(int times) {
  int interrupted = 0;
  for (int i = 0; i < times; ++i) {
    const timespec interval{1800, 0};
    if (::nanosleep(&interval, nullptr) == -1 && errno == EINTR) ++interrupted;
  }
  return interrupted;
}

TEST(SleepInterrupter, ASleeperThatSleepsAgainIsWokenAgain) {
  std::future<int> sleeper = std::async(std::launch::async, interruptedSleeps, 3);
  const SleepInterrupter interrupter;
  ASSERT_EQ(sleeper.wait_for(kDeadline), std::future_status::ready);
  EXPECT_EQ(sleeper.get(), 3);
}

TEST(SleepInterrupter, EverySleeperIsWoken) {
  std::future<int> sleepers[] = {std::async(std::launch::async, interruptedSleeps, 1),
                                 std::async(std::launch::async, interruptedSleeps, 1),
                                 std::async(std::launch::async, interruptedSleeps, 1)};
  const SleepInterrupter interrupter;
  for (auto& sleeper : sleepers) {
    ASSERT_EQ(sleeper.wait_for(kDeadline), std::future_status::ready);
    EXPECT_EQ(sleeper.get(), 1);
  }
}

long callOf(pid_t thread) {
  long call = -1;
  std::ifstream("/proc/self/task/" + std::to_string(thread) + "/syscall") >> call;
  return call;
}

bool awaitCall(pid_t thread, long first, long second) {
  const auto end = std::chrono::steady_clock::now() + kDeadline;
  while (std::chrono::steady_clock::now() < end) {
    const long call = callOf(thread);
    if (call == first || call == second) return true;
    std::this_thread::yield();
  }
  return false;
}

// As after the end of a child: the signal has no handler, so the kernel goes on with the sleep.
TEST(SleepInterrupter, ASleeperWhoseSleepWasRestartedIsWoken) {
  std::promise<pid_t> started;
  std::future<int> sleeper = std::async(std::launch::async, [&started] {
    started.set_value(static_cast<pid_t>(::syscall(SYS_gettid)));
    return interruptedSleeps(1);
  });
  const pid_t thread = started.get_future().get();
  ASSERT_TRUE(awaitCall(thread, SYS_nanosleep, SYS_clock_nanosleep));

  // Nobody else takes it. Were it blocked nowhere, it would be dropped where it is sent.
  sigset_t child;
  sigset_t before;
  sigemptyset(&child);
  sigaddset(&child, SIGCHLD);
  ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &child, &before), 0);
  ASSERT_EQ(::kill(::getpid(), SIGCHLD), 0);
  ASSERT_TRUE(awaitCall(thread, SYS_restart_syscall, SYS_restart_syscall));
  ASSERT_EQ(::pthread_sigmask(SIG_SETMASK, &before, nullptr), 0);

  const SleepInterrupter interrupter;
  ASSERT_EQ(sleeper.wait_for(kDeadline), std::future_status::ready);
  EXPECT_EQ(sleeper.get(), 1);
}

TEST(SleepInterrupter, ThreadsThatWaitForOtherThingsAreLeftAlone) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  std::future<ssize_t> reader = std::async(std::launch::async, [&ends] {
    char byte;
    return ::read(ends[0], &byte, 1);
  });
  std::future<int> sleeper = std::async(std::launch::async, interruptedSleeps, 3);
  const SleepInterrupter interrupter;
  ASSERT_EQ(sleeper.wait_for(kDeadline), std::future_status::ready);
  ASSERT_EQ(::write(ends[1], "x", 1), 1);
  EXPECT_EQ(reader.get(), 1);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(SleepInterrupter, TheThreadThatMadeItIsLeftAlone) {
  const SleepInterrupter interrupter;
  const timespec threePeriods{0, 300000000};
  EXPECT_EQ(::nanosleep(&threePeriods, nullptr), 0);
}

TEST(SleepInterrupter, GoesAtOnce) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 50; ++i) const SleepInterrupter interrupter;
  EXPECT_LT(std::chrono::steady_clock::now() - start, 50 * SleepInterrupter::kPeriod);
}

}  // namespace
}  // namespace ormaagent
