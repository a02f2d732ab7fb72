// One client's connection, as the HTTP library sees it, and the set of all that are open.
//
// The library's own stream can neither be woken from its wait for the next request nor dropped in
// the middle of an answer; this one can.
//
// Thread-safety: Connection is thread-compatible, one thread serves it; ConnectionSet is
// thread-safe. Failure: as the library expects it, by results.
#pragma once

#include <httplib.h>

#include <array>
#include <chrono>
#include <functional>
#include <mutex>
#include <set>

namespace ormasim {

// Connections that a stop must wake.
class ConnectionSet {
 public:
  // False once all were shut down: the connection is not to be served.
  bool add(int socket);
  void remove(int socket);
  // Ends every read, write and wait on the connections, now and from now on.
  void shutDownAll();

 private:
  std::mutex mutex_;
  std::set<int> sockets_;  // guarded by mutex_
  bool closed_ = false;    // guarded by mutex_
};

class Connection : public httplib::Stream {
 public:
  // Owns the socket.
  Connection(int socket, ConnectionSet& connections);
  ~Connection() override;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // The connection that the calling thread serves; null outside of a request. A handler of the
  // library is told of the request, not of the connection.
  static Connection* current();

  // True when a request begins; false when the client or the server has closed, the time is over,
  // or `giveUp`, asked now and then, says so.
  bool waitForRequest(std::chrono::milliseconds timeout, const std::function<bool()>& giveUp);
  // Holds the calling thread. False when the connection ended meanwhile; no time: until it ends.
  bool stayIdle(std::chrono::milliseconds time) const;
  void stayIdleUntilClosed() const;

  // Tells the client that nothing more comes; what it sends can still be read.
  void finishSending() const;
  // From here on nothing more is sent.
  void abort() { aborted_ = true; }
  // The answer in the making is the last one.
  void closeAfterAnswer() { closing_ = true; }
  bool usable() const { return !aborted_ && !closing_; }

  bool is_readable() const override;
  bool is_writable() const override;
  ssize_t read(char* bytes, size_t size) override;
  ssize_t write(const char* bytes, size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return socket_; }

  // While one lives, Connection::current() is its connection.
  class Serving {
   public:
    explicit Serving(Connection& connection);
    ~Serving();
    Serving(const Serving&) = delete;
    Serving& operator=(const Serving&) = delete;
  };

 private:
  const int socket_;
  ConnectionSet& connections_;
  const bool admitted_;
  bool aborted_ = false;
  bool closing_ = false;
  // Bytes received and not yet asked for.
  std::array<char, 8192> buffer_;
  std::size_t bufferBegin_ = 0;
  std::size_t bufferEnd_ = 0;
};

}  // namespace ormasim
