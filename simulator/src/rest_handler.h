// What a request gets: the fault script first, then the token, the service and its answer.
// docs/simulator.md tells each step.
//
// Thread-safety: thread-safe. Failure: every failure becomes an answer {"error": reason}.
#pragma once

#include <httplib.h>

#include <chrono>
#include <map>
#include <mutex>
#include <string>

#include "fault_script.h"
#include "inventory_pool.h"

namespace ormasim {

// How long a walk through a query's result may rest between two pages.
constexpr std::chrono::seconds kDefaultCursorLife{60};

struct RestSettings {
  std::string databaseFile;
  std::string token;  // empty: none is asked for
  FaultScript faults;
  std::chrono::milliseconds cursorLife{kDefaultCursorLife};
};

class RestHandler {
 public:
  explicit RestHandler(RestSettings settings);

  // Runs on the thread that serves the connection.
  void handle(const httplib::Request& request, httplib::Response& response);
  // Answers a request that is not understood as one; the connection closes behind the answer.
  static void refuse(int status, const std::string& reason, httplib::Response& response);
  // For requests that the HTTP library has refused by itself.
  static void explainRefusal(httplib::Response& response);

 private:
  void answer(const httplib::Request& request, httplib::Response& response);
  void remember(const std::string& path, const httplib::Response& response);
  void repeat(const std::string& path, httplib::Response& response);

  const std::string token_;
  FaultScript faults_;
  InventoryPool inventories_;
  std::mutex mutex_;
  std::map<std::string, httplib::Response> last_;  // by path; guarded by mutex_
};

}  // namespace ormasim
