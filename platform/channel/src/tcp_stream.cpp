#include "tcp_stream.h"

#include <ace/OS_NS_fcntl.h>
#include <ace/OS_NS_poll.h>
#include <ace/SOCK_Connector.h>
#include <netinet/tcp.h>

#include <cerrno>

#include "address.h"
#include "orma/channel/channel_error.h"

namespace orma::channel {
namespace {

// 0 when one of the events, or a failure that the next call on the handle will tell, has come.
unsigned long waitFor(ACE_HANDLE handle, short events, const Deadline& deadline,
                      unsigned long timeoutError) {
  for (;;) {
    pollfd entry{handle, events, 0};
    const int count = ::poll(&entry, 1, deadline.leftForPoll());
    if (count > 0) return 0;
    if (count == 0 && deadline.left().count() == 0) return timeoutError;
    if (count < 0 && errno != EINTR) return kSystem;
  }
}

unsigned long connectError(int reason) {
  switch (reason) {
    case ECONNREFUSED:
    case ENETUNREACH:
    case EHOSTUNREACH:
    case ENETDOWN:
    case EHOSTDOWN:
    case ECONNRESET:
    case EACCES:
    case EPERM:
      return kRefused;
    case ETIMEDOUT:
      return kConnectTimeout;
    default:
      return kSystem;
  }
}

bool isWouldBlock(int reason) { return reason == EAGAIN || reason == EWOULDBLOCK; }

unsigned long transferError(int reason) {
  const bool gone = reason == EPIPE || reason == ECONNRESET || reason == ENOTCONN;
  return gone ? kClosed : reason == ETIMEDOUT ? kReceiveTimeout : kSystem;
}

}  // namespace

std::unique_ptr<TcpStream> TcpStream::connect(const std::string& host, std::uint16_t port,
                                              const Deadline& deadline, unsigned long& error) {
  error = kNoAddress;
  for (const ACE_INET_Addr& address : addressesOf(host, port, deadline)) {
    std::unique_ptr<TcpStream> stream(new TcpStream);
    error = stream->open(address, deadline);
    if (error == 0) return stream;
  }
  if (error == kNoAddress && deadline.left().count() == 0) error = kConnectTimeout;
  return nullptr;
}

TcpStream::~TcpStream() { stream_.close(); }

unsigned long TcpStream::open(const ACE_INET_Addr& address, const Deadline& deadline) {
  // With no time to wait, ACE leaves the socket connecting and not blocking.
  ACE_SOCK_Connector connector;
  ACE_Time_Value noTime = ACE_Time_Value::zero;
  if (connector.connect(stream_, address, &noTime) != 0) {
    if (!isWouldBlock(errno) && errno != EINPROGRESS && errno != ETIME) return connectError(errno);
    const unsigned long error = waitFor(stream_.get_handle(), POLLOUT, deadline, kConnectTimeout);
    if (error != 0) return error;
  }
  int reason = 0;
  int size = sizeof reason;
  if (stream_.get_option(SOL_SOCKET, SO_ERROR, &reason, &size) != 0) return kSystem;
  return reason == 0 ? prepare() : connectError(reason);
}

unsigned long TcpStream::prepare() {
  int on = 1;
  stream_.set_option(IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  const bool ready = stream_.enable(ACE_NONBLOCK) == 0 && stream_.enable(ACE_CLOEXEC) == 0;
  return ready ? kNone : kSystem;
}

unsigned long TcpStream::send(const unsigned char* bytes, std::size_t size,
                              const Deadline& deadline) {
  while (size > 0) {
    const ssize_t sent = stream_.send(bytes, size, MSG_NOSIGNAL);
    if (sent > 0) {
      bytes += sent;
      size -= static_cast<std::size_t>(sent);
    } else if (isWouldBlock(errno)) {
      const unsigned long error = waitFor(stream_.get_handle(), POLLOUT, deadline, kReceiveTimeout);
      if (error != 0) return error;
    } else if (errno != EINTR) {
      return transferError(errno);
    }
  }
  return 0;
}

unsigned long TcpStream::receive(unsigned char* bytes, std::size_t size, std::size_t& received,
                                 const Deadline& deadline) {
  for (;;) {
    // Before each read, so that bytes that trickle in do not carry the exchange past its end.
    if (deadline.left().count() == 0) return kReceiveTimeout;
    const ssize_t count = stream_.recv(bytes, size, 0);
    if (count > 0) {
      received = static_cast<std::size_t>(count);
      return 0;
    }
    if (count == 0) return kClosed;
    if (isWouldBlock(errno)) {
      const unsigned long error = waitFor(stream_.get_handle(), POLLIN, deadline, kReceiveTimeout);
      if (error != 0) return error;
    } else if (errno != EINTR) {
      return transferError(errno);
    }
  }
}

}  // namespace orma::channel
