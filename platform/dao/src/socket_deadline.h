// A bound on a wait that somebody else's code makes on a socket: when the time is over, the socket
// is shut down, and the wait ends as if the peer had gone.
//
//   const SocketDeadline deadline(PQsocket(connection), std::chrono::seconds(60));
//   PQexec(connection, statement);
//
// Thread-safety: thread-safe; one thread of the process keeps all of them. The first one makes that
// thread, and throws std::system_error where it cannot be had; the others throw nothing.
#pragma once

#include <chrono>

namespace dao {

class SocketDeadline {
 public:
  using Clock = std::chrono::steady_clock;

  SocketDeadline(int socket, std::chrono::milliseconds limit);
  SocketDeadline(const SocketDeadline&) = delete;
  SocketDeadline& operator=(const SocketDeadline&) = delete;
  // From here on the socket is left alone.
  ~SocketDeadline();

 private:
  friend class SocketDeadlines;

  const int socket_;
  Clock::time_point end_;  // the keeper's, as are the next two
  SocketDeadline* previous_ = nullptr;
  SocketDeadline* next_ = nullptr;
};

}  // namespace dao
