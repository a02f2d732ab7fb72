// The service manager that started the process, where there is one that wants to hear of it: it is
// told, in systemd's notify protocol, when the process is ready and when it is stopping, and in
// between that it is alive, as often as it asks for.
//
//   ServiceManager manager([&host] { return host.runsAny(); });
//   manager.ready();
//   ...
//   manager.stopping();  // the destructor does it, too
//
// A process that nobody watches has the environment variables NOTIFY_SOCKET and WATCHDOG_USEC not
// set; nothing happens then. A message that cannot be sent is told on standard error.
//
// Thread-safety: thread-compatible; `alive` is called on a thread of its own.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace ormaagent {

class ServiceManager {
 public:
  // `alive` says whether the process still does what it is for; it may block, and while it does, or
  // once it gives false, the watchdog hears nothing and takes its measures.
  explicit ServiceManager(std::function<bool()> alive);
  ServiceManager(const ServiceManager&) = delete;
  ServiceManager& operator=(const ServiceManager&) = delete;
  ~ServiceManager();

  // Throws std::system_error when there is no thread for the signs of life.
  void ready();
  // From here on nobody expects a sign of life. A second call does nothing.
  void stopping();

 private:
  void giveSigns(std::chrono::microseconds period);
  // True when there is to be no further sign.
  bool restFor(std::chrono::microseconds period);

  const std::function<bool()> alive_;
  bool told_ = false;
  std::mutex mutex_;  // guards ended_
  bool ended_ = false;
  std::condition_variable ending_;
  std::thread thread_;
};

}  // namespace ormaagent
