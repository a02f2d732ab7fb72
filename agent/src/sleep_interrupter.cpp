#include "sleep_interrupter.h"

#include <dirent.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <system_error>

namespace ormaagent {

namespace {

constexpr int kSignal = SIGUSR1;

void doNothing(int) {}

// Without SA_RESTART, so that the sleep ends. Never taken back: a signal that was sent may still
// be on its way to its thread.
void installHandler() {
  struct sigaction action {};
  action.sa_handler = doNothing;
  sigemptyset(&action.sa_mask);
  ::sigaction(kSignal, &action, nullptr);
}

// Whether a thread is asleep. The kernel tells the call that a thread waits in; where it does not,
// every thread counts as asleep, for the signal is harmless to the others. A sleep that was broken
// by a signal without a handler (the stop and start of a job, the end of a child) goes on as
// restart_syscall, and so do a few other waits.
bool isAsleep(pid_t thread) {
  const std::string path = "/proc/self/task/" + std::to_string(thread) + "/syscall";
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"), std::fclose);
  if (!file) return true;
  long call = -1;
  if (std::fscanf(file.get(), "%ld", &call) != 1) return false;  // "running"
  return call == SYS_nanosleep || call == SYS_clock_nanosleep || call == SYS_restart_syscall;
}

pid_t currentThread() { return static_cast<pid_t>(::syscall(SYS_gettid)); }

}  // namespace

SleepInterrupter::SleepInterrupter() : owner_(currentThread()) {
  installHandler();
  try {
    thread_ = std::thread([this] { run(); });
  } catch (const std::system_error&) {
  }
}

SleepInterrupter::~SleepInterrupter() {
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
  }
  ending_.notify_one();
  if (thread_.joinable()) thread_.join();
}

void SleepInterrupter::run() {
  std::unique_lock lock(mutex_);
  while (!ending_.wait_for(lock, kPeriod, [this] { return ended_; })) interruptSleepers();
}

void SleepInterrupter::interruptSleepers() const {
  std::unique_ptr<DIR, int (*)(DIR*)> threads(::opendir("/proc/self/task"), ::closedir);
  if (!threads) return;
  while (const dirent* entry = ::readdir(threads.get())) {
    const auto thread = static_cast<pid_t>(std::atoi(entry->d_name));
    if (thread <= 0 || thread == owner_ || thread == currentThread() || !isAsleep(thread)) continue;
    ::syscall(SYS_tgkill, ::getpid(), thread, kSignal);
  }
}

}  // namespace ormaagent
