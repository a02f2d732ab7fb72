#include "socket_deadline.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>
#include <thread>
#include <vector>

namespace dao {
namespace {

using namespace std::chrono_literals;

class SocketPair {
 public:
  SocketPair() { EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends_), 0); }
  SocketPair(const SocketPair&) = delete;
  SocketPair& operator=(const SocketPair&) = delete;
  ~SocketPair() {
    for (const int end : ends_) ::close(end);
  }

  int socket() const { return ends_[0]; }
  // What a wait for the peer, which says nothing, ends with: 0, the end of the connection.
  ssize_t receive() const {
    char byte = 0;
    return ::recv(ends_[0], &byte, 1, 0);
  }
  bool isOpen() const {
    char byte = 0;
    return ::send(ends_[1], &byte, 1, MSG_NOSIGNAL) == 1 && ::recv(ends_[0], &byte, 1, 0) == 1;
  }

 private:
  int ends_[2];
};

TEST(SocketDeadline, EndsAWaitWhenTheTimeIsOver) {
  const SocketPair pair;
  const SocketDeadline deadline(pair.socket(), 20ms);
  EXPECT_EQ(pair.receive(), 0);
}

TEST(SocketDeadline, LeavesTheSocketAloneAfterIt) {
  const SocketPair pair;
  { const SocketDeadline deadline(pair.socket(), 500ms); }
  const SocketPair other;
  const SocketDeadline later(other.socket(), 600ms);
  EXPECT_EQ(other.receive(), 0);
  EXPECT_TRUE(pair.isOpen());
}

TEST(SocketDeadline, ALaterOneDoesNotHoldUpAnEarlierOne) {
  const SocketPair late;
  const SocketPair early;
  const SocketDeadline lateDeadline(late.socket(), 1h);
  const SocketDeadline earlyDeadline(early.socket(), 20ms);
  EXPECT_EQ(early.receive(), 0);
  EXPECT_TRUE(late.isOpen());
}

TEST(SocketDeadline, ManyThreadsAreKeptApart) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([] {
      for (int n = 0; n < 200; ++n) {
        const SocketPair pair;
        const SocketDeadline deadline(pair.socket(), 1h);
        EXPECT_TRUE(pair.isOpen());
      }
      const SocketPair pair;
      const SocketDeadline deadline(pair.socket(), 5ms);
      EXPECT_EQ(pair.receive(), 0);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace dao
