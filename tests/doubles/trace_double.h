// Trace calls, recorded with the thread's source record as it stood at the call.
//
//   EXPECT_THAT(platform().trace.lines(),
//               ElementsAre(TraceLine{"TaDebugWithPara", 3, "emfresinterface", "unknown", line,
//               …}));
//
// Thread-safety: thread-safe.
#pragma once

#include <mutex>
#include <ostream>
#include <string>
#include <vector>

namespace emf::doubles {

struct TraceLine {
  std::string call;  // "TaDebug", "TaDebugWithPara" or "TaTrace"
  int level = 0;     // 0 for TaTrace, which has none
  std::string file;
  std::string function;
  int line = 0;
  std::string text;
};
std::ostream& operator<<(std::ostream& out, const TraceLine& line);

class TraceDouble {
 public:
  std::vector<TraceLine> lines() const;
  // The texts alone.
  std::vector<std::string> texts() const;
  void reset();

  void record(TraceLine line);

 private:
  mutable std::mutex mutex_;
  std::vector<TraceLine> lines_;
};

}  // namespace emf::doubles
