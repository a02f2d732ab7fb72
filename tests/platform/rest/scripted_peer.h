// A TCP peer that does what a test's script says, well or badly, once a client has sent a request.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include "loopback_ports.h"

// One accepted connection, as the script sees it.
class PeerConnection {
 public:
  // The test's end, told by `wakeUp`, counts as the client's close.
  PeerConnection(int socket, int wakeUp) : socket_(socket), wakeUp_(wakeUp) {}
  // Reads up to the blank line that ends a request's headers.
  std::string readHeaders();
  // Reads that many bytes, or fewer when the client closes first.
  std::string read(std::size_t size);
  // False when the client is gone.
  bool send(std::string_view bytes);
  // Waits until the client closes or `milliseconds` pass; true when it closed.
  bool closedWithin(int milliseconds);
  // Waits until the client closes.
  void waitForClose() { closedWithin(-1); }
  // Reads nothing until the test ends.
  void stayDeaf();

 private:
  int socket_;
  int wakeUp_;
};

class ScriptedPeer {
 public:
  using Script = std::function<void(PeerConnection&)>;

  // Runs `script` for each connection, one after the other, and then closes the connection.
  explicit ScriptedPeer(Script script);
  ScriptedPeer(const ScriptedPeer&) = delete;
  ScriptedPeer& operator=(const ScriptedPeer&) = delete;
  ~ScriptedPeer();

  int port() const { return port_; }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  void serve(const Script& script);

  int port_ = 0;
  int listener_ = -1;
  int wakeUp_[2] = {-1, -1};
  std::thread thread_;
};

// Reads the request, sends `bytes` and closes.
ScriptedPeer::Script answers(std::string bytes);
