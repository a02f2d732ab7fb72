// The process around the operations of one cell: a configuration of its own, the log service, what
// was logged, and what the process holds of the system.
//
// Thread-safety: thread-compatible, but for `configure`, which is thread-safe.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <chrono>
#include <ostream>
#include <string>

#include "orma/log/log_service.h"
#include "temp_directory.h"

namespace emf::faults {

// The platform's log service, one for the process.
NS_LOG_SERVICE1::LogSvcInterface& logService();

// Protects against hanging, no more.
constexpr std::chrono::seconds kPatience{30};

// What could leak beside memory, which is the address sanitizer's.
struct Holdings {
  std::size_t descriptors = 0;
  std::size_t threads = 0;

  static Holdings now();
  friend bool operator==(const Holdings& a, const Holdings& b) {
    return a.descriptors == b.descriptors && a.threads == b.threads;
  }
};
void PrintTo(const Holdings& holdings, std::ostream* out);

class FaultWorld : public testing::Test {
 protected:
  enum class LogService { Running, Absent };
  explicit FaultWorld(LogService service = LogService::Running);
  ~FaultWorld() override;

  std::string file(const std::string& name) const { return (directory_.path() / name).string(); }
  const emf::doubles::TempDirectory& directory() const { return directory_; }

  // Makes this the configuration from now on; the log stays as it is.
  void configure(const Json::Value& root) const;
  // The log file's new lines since the last call.
  std::string logged();
  // Waits for threads that are ending.
  static void expectHoldings(const Holdings& holdings);

 private:
  const emf::doubles::TempDirectory directory_;
  std::size_t logRead_ = 0;
};

// How long `call` took, which must not be much.
template <typename Call>
std::chrono::milliseconds timeOf(Call call) {
  const auto start = std::chrono::steady_clock::now();
  call();
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - start);
  EXPECT_LT(took, kPatience);
  return took;
}

}  // namespace emf::faults
