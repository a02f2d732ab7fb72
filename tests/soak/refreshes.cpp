#include "refreshes.h"

#include <atomic>
#include <condition_variable>
#include <cstring>
#include <mutex>

#include "emfwatch.h"
#include "sleep_interrupter.h"

namespace soak {

namespace {

std::mutex mutex;
std::condition_variable changed;
std::uint64_t ended = 0;  // guarded by mutex
std::atomic<std::uint64_t> fillings{0};

}  // namespace

std::uint64_t refreshes() {
  const std::lock_guard lock(mutex);
  return ended;
}

bool awaitRefreshes(std::uint64_t count, std::chrono::seconds longest) {
  std::unique_lock lock(mutex);
  return changed.wait_for(lock, longest, [count] { return ended >= count; });
}

bool refreshNow(std::chrono::seconds longest) {
  const std::uint64_t before = refreshes();
  const ormaagent::SleepInterrupter interrupter;
  return awaitRefreshes(before + 1, longest);
}

std::uint64_t deviceCacheFillings() { return fillings; }

}  // namespace soak

extern "C" EMF_API void emfOperationEnded(const char* operation, std::int64_t, int) noexcept {
  if (std::strcmp(operation, kEmfSubnetRefresh) != 0) return;
  {
    const std::lock_guard lock(soak::mutex);
    ++soak::ended;
  }
  soak::changed.notify_all();
}

extern "C" EMF_API void emfCacheFilled(const char* cache, std::size_t) noexcept {
  if (std::strcmp(cache, "devices") == 0) ++soak::fillings;
}
