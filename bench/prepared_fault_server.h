// A fault server in this process that answers every command with the same replies, which are ready:
// what is measured against it is the client.
//
//   const PreparedFaultServer server(replies);
//   BareFaultClient client(server.port());
//
// Thread-safety: thread-compatible; a thread of its own serves one connection after the other.
// Failures of the constructor are std::runtime_error.
#pragma once

#include <string>
#include <thread>
#include <vector>

#include "channel_frames.h"

class PreparedFaultServer {
 public:
  explicit PreparedFaultServer(std::vector<std::string> replies);
  PreparedFaultServer(const PreparedFaultServer&) = delete;
  PreparedFaultServer& operator=(const PreparedFaultServer&) = delete;
  ~PreparedFaultServer();

  unsigned short port() const { return port_; }

 private:
  void run();
  void serve(int socket) const;

  const std::vector<std::string> replies_;
  Socket listener_;
  unsigned short port_ = 0;
  std::thread thread_;
};
