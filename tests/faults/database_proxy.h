// Stands between libpq and a database server, both by sockets in directories, and spoils what the
// server says.
//
//   DatabaseProxy proxy(serverDirectory, ownDirectory);
//   proxy.come({damaged, {}});  // the first connection is damaged, the others are not
//
// Thread-safety: thread-compatible.
#pragma once

#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace emf::faults {

class DatabaseProxy {
 public:
  static constexpr std::size_t kNever = static_cast<std::size_t>(-1);

  // Places among the bytes that the server sends on one connection.
  struct Treatment {
    std::size_t cutBehind = kNever;
    std::size_t stallBehind = kNever;
    std::size_t garbageBehind = kNever;
    bool isSlow = false;  // a byte at a time
  };

  DatabaseProxy(std::string serverDirectory, std::string ownDirectory);
  DatabaseProxy(const DatabaseProxy&) = delete;
  DatabaseProxy& operator=(const DatabaseProxy&) = delete;
  ~DatabaseProxy();

  // One treatment for each connection from here on, in their order; the last one for all others.
  // Connections that are open end.
  void come(std::vector<Treatment> treatments);
  // Ends every connection; new ones are refused.
  void go();
  // What the server has sent on the connection opened last.
  std::size_t bytes() const;

 private:
  void accept();
  void serve(int client, Treatment treatment);

  const std::string server_;  // its socket
  const std::string own_;
  int listener_ = -1;
  std::vector<Treatment> treatments_;
  mutable std::mutex mutex_;
  std::size_t bytes_ = 0;           // under mutex_
  std::list<int> sockets_;          // under mutex_
  std::list<std::thread> servers_;  // the accepting thread's, until that is joined
  std::thread accepting_;
};

}  // namespace emf::faults
