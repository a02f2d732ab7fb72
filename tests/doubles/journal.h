// One list of everything that happened, over all doubles, for tests that are about order.
//
// Thread-safety: thread-safe.
#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace emf::doubles {

class Journal {
 public:
  void note(std::string event);
  std::vector<std::string> events() const;
  void reset();

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> events_;
};

}  // namespace emf::doubles
