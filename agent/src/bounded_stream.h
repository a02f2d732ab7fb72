// A connection as the HTTP library sees it, whose whole life has a deadline and which a stop ends
// at once. The library's own stream bounds each read alone: a peer that sends a byte now and then
// would keep it for ever.
//
// Thread-safety: thread-compatible. Failure: as the library expects it, by results.
#pragma once

#include <httplib.h>

#include <chrono>

namespace ormaagent {

class BoundedStream : public httplib::Stream {
 public:
  // Owns the socket. The stop shows as `stopEvent` being readable.
  BoundedStream(int socket, int stopEvent, std::chrono::milliseconds longest);
  ~BoundedStream() override;
  BoundedStream(const BoundedStream&) = delete;
  BoundedStream& operator=(const BoundedStream&) = delete;

  bool is_readable() const override;
  bool is_writable() const override;
  ssize_t read(char* bytes, std::size_t size) override;
  ssize_t write(const char* bytes, std::size_t size) override;
  // The endpoint has no use for addresses.
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return socket_; }

 private:
  // Whether the event came before the deadline and the stop.
  bool await(short event) const;

  const int socket_;
  const int stopEvent_;
  const std::chrono::steady_clock::time_point end_;
};

}  // namespace ormaagent
