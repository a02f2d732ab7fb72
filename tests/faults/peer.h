// A TCP peer on loopback whose address stays the same while it comes and goes. Each connection is
// served on a thread of its own.
//
//   Peer peer;
//   peer.come([](Wire& wire, std::size_t number) { wire.send("hello"); });
//   ... peer.port() ...
//   peer.go();  // refused from here on
//
// Thread-safety: `refuse` is thread-safe, everything else thread-compatible.
#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace emf::faults {

// The peer's end of one connection. Whatever waits also ends when the peer goes.
class Wire {
 public:
  explicit Wire(int socket) : socket_(socket) {}
  // Exactly that many bytes, or fewer when the client closes first.
  std::string read(std::size_t size) const;
  // Up to and with `end`, or up to the client's close.
  std::string readTo(std::string_view end) const;
  // False when the client is gone.
  bool send(std::string_view bytes) const;
  // A byte at a time, `pauseMs` behind each; ends when the client closes.
  void dribble(std::string_view bytes, int pauseMs) const;
  // Says nothing more and keeps the connection until the client has closed it.
  void stall() const { closedWithin(-1); }
  // The connection ends with a reset in place of a close.
  void reset() const;

 private:
  bool closedWithin(int milliseconds) const;

  const int socket_;
};

class Peer {
 public:
  // Serves one connection; `number` counts them from 0 since the peer came.
  using Script = std::function<void(Wire& wire, std::size_t number)>;

  Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer();

  int port() const { return port_; }
  void come(Script script);
  // Ends every connection; from here on new ones are refused.
  void go();
  // From here on new connections are refused; those that are open go on.
  void refuse();

 private:
  void accept();
  void serve(int socket, std::size_t number);

  int port_ = 0;
  int reservation_ = -1;  // holds the address, never listens
  int listener_ = -1;
  Script script_;
  std::mutex mutex_;
  std::list<std::thread> servers_;  // the accepting thread's, until that is joined
  std::list<int> sockets_;          // under mutex_, of connections that are served
  std::thread accepting_;
};

}  // namespace emf::faults
