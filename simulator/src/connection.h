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
#include <limits>
#include <mutex>
#include <optional>
#include <set>

#include "request_framing.h"

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

// How long one exchange may take, however it is cut into pieces.
struct ExchangeTimes {
  std::chrono::milliseconds request{30'000};
  std::chrono::milliseconds answer{120'000};
};

class Connection : public httplib::Stream {
 public:
  // Owns the socket.
  Connection(int socket, ConnectionSet& connections, ExchangeTimes times = {});
  ~Connection() override;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // The connection that the calling thread serves; null outside of a request. A handler of the
  // library is told of the request, not of the connection.
  static Connection* current();

  // True when a request begins; false when the client or the server has closed, the time is over,
  // or `giveUp`, asked now and then, says so.
  bool waitForRequest(std::chrono::milliseconds timeout, const std::function<bool()>& giveUp);
  // A request begins, with its head: the limits hold from here on.
  void beginRequest();
  // Its head was read, and its body is wanted.
  void expectBody();
  // Why reading ended before the request did; nothing unless a limit was passed.
  const std::optional<FramingProblem>& refusal() const { return refusal_; }
  // Reads what else the client sends, until that ends or the request's time is over: closing with
  // bytes unread would take the answer back from a client that has not read it yet.
  void discardRest();
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
  bool closing() const { return closing_; }
  // The request that began last has got bytes of an answer.
  bool answering() const { return answering_; }

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
  using Clock = std::chrono::steady_clock;

  // How long a single wait for the client may take, in milliseconds; 0 when the time is over.
  int patience() const;
  // Those of the events that came; 0 when the time is over.
  short await(short events) const;
  ssize_t refuseMore(FramingProblem problem);

  const int socket_;
  ConnectionSet& connections_;
  const ExchangeTimes times_;
  const bool admitted_;
  bool aborted_ = false;
  bool closing_ = false;
  // Of the request or answer under way.
  std::optional<Clock::time_point> until_;
  std::size_t mayTake_ = std::numeric_limits<std::size_t>::max();  // bytes
  bool inBody_ = false;
  bool answering_ = false;
  std::optional<FramingProblem> refusal_;
  // Bytes received and not yet asked for.
  std::array<char, 8192> buffer_;
  std::size_t bufferBegin_ = 0;
  std::size_t bufferEnd_ = 0;
};

}  // namespace ormasim
