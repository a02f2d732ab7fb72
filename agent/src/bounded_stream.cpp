#include "bounded_stream.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace ormaagent {

namespace {

using std::chrono::steady_clock;

int leftForPoll(steady_clock::time_point end) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now());
  return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

}  // namespace

BoundedStream::BoundedStream(int socket, int stopEvent, std::chrono::milliseconds longest)
    : socket_(socket), stopEvent_(stopEvent), end_(steady_clock::now() + longest) {}

BoundedStream::~BoundedStream() {
  ::shutdown(socket_, SHUT_RDWR);
  ::close(socket_);
}

bool BoundedStream::await(short event) const {
  for (;;) {
    const int left = leftForPoll(end_);
    if (left == 0) return false;  // also when bytes trickle in all the time
    pollfd entries[] = {{socket_, event, 0}, {stopEvent_, POLLIN, 0}};
    const int count = ::poll(entries, 2, left);
    if (count > 0) return entries[1].revents == 0 && (entries[0].revents & event) != 0;
    if (count < 0 && errno != EINTR) return false;
  }
}

bool BoundedStream::is_readable() const { return await(POLLIN); }

bool BoundedStream::is_writable() const { return await(POLLOUT); }

ssize_t BoundedStream::read(char* bytes, std::size_t size) {
  return await(POLLIN) ? ::recv(socket_, bytes, size, MSG_DONTWAIT) : -1;
}

ssize_t BoundedStream::write(const char* bytes, std::size_t size) {
  return await(POLLOUT) ? ::send(socket_, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT) : -1;
}

void BoundedStream::get_remote_ip_and_port(std::string& ip, int& port) const {
  ip.clear();
  port = 0;
}

void BoundedStream::get_local_ip_and_port(std::string& ip, int& port) const {
  get_remote_ip_and_port(ip, port);
}

}  // namespace ormaagent
