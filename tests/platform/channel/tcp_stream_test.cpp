// The connection alone: its addresses, its deadlines and its end.
#include "tcp_stream.h"

#include <gtest/gtest.h>
#include <netdb.h>

#include <array>
#include <csignal>
#include <functional>
#include <future>
#include <limits>

#include "orma/channel/channel_error.h"
#include "scripted_peer.h"

// What a look-up of "two.test" gives: 127.0.0.2 and then 127.0.0.1; of "slow.test", nothing until
// the test lets it go. All others are the system's. The program is linked with --wrap=getaddrinfo.
namespace {

std::promise<void> letGo;
const std::shared_future<void> released = letGo.get_future().share();

}  // namespace

extern "C" int __real_getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                                  addrinfo** list);

extern "C" int __wrap_getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                                  addrinfo** list) {
  const std::string name = host;
  const bool isLookUp = (hints->ai_flags & AI_NUMERICHOST) == 0;
  if (isLookUp && name == "slow.test") {
    released.wait();
    return EAI_NONAME;
  }
  if (!isLookUp || name != "two.test") return __real_getaddrinfo(host, service, hints, list);
  addrinfo* second = nullptr;
  if (__real_getaddrinfo("127.0.0.1", service, hints, &second) != 0) return EAI_FAIL;
  if (__real_getaddrinfo("127.0.0.2", service, hints, list) != 0) return EAI_FAIL;
  (*list)->ai_next = second;
  return 0;
}

namespace orma::channel {
namespace {

constexpr std::chrono::milliseconds kLong(60000);

std::unique_ptr<TcpStream> connectTo(const std::string& host, int port, unsigned long& error,
                                     std::chrono::milliseconds time = kLong) {
  return TcpStream::connect(host, static_cast<std::uint16_t>(port), Deadline(time), error);
}

// Nobody listens at 127.0.0.2.
TEST(TcpStream, TriesTheAddressesOfANameInTurn) {
  const ScriptedPeer peer([](PeerConnection& connection) { connection.waitForClose(); });
  unsigned long error = kSystem;
  EXPECT_NE(connectTo("two.test", peer.port(), error), nullptr);
  EXPECT_EQ(error, 0u);
}

TEST(TcpStream, FailsLikeTheLastAddress) {
  const ClosedPort port;
  unsigned long error = 0;
  EXPECT_EQ(connectTo("two.test", port.port(), error), nullptr);
  EXPECT_EQ(error, kRefused);
}

TEST(TcpStream, LooksANameUpWithinTheTimeToConnect) {
  unsigned long error = 0;
  EXPECT_EQ(connectTo("slow.test", 1, error, std::chrono::milliseconds(20)), nullptr);
  EXPECT_EQ(error, kConnectTimeout);
  letGo.set_value();
}

// Bytes that are there do not count when the time is over.
TEST(TcpStream, ReadsNothingBehindTheDeadline) {
  const ScriptedPeer peer([](PeerConnection& connection) {
    connection.send("xy");
    connection.waitForClose();
  });
  unsigned long error = 0;
  const auto stream = connectTo("127.0.0.1", peer.port(), error);
  ASSERT_NE(stream, nullptr);
  unsigned char byte = 0;
  std::size_t received = 0;
  ASSERT_EQ(stream->receive(&byte, 1, received, Deadline(kLong)), 0u);
  EXPECT_EQ(stream->receive(&byte, 1, received, Deadline(std::chrono::milliseconds(0))),
            kReceiveTimeout);
  ASSERT_EQ(stream->receive(&byte, 1, received, Deadline(kLong)), 0u);
  EXPECT_EQ(byte, 'y');
}

// The first send that fails is told of the reset, the next of the broken pipe.
TEST(TcpStream, SendingToAPeerThatIsGoneIsClosedAndRaisesNoSignal) {
  const auto before = std::signal(SIGPIPE, SIG_DFL);
  const ScriptedPeer peer([](PeerConnection& connection) { connection.read(1); });
  unsigned long error = 0;
  const auto stream = connectTo("127.0.0.1", peer.port(), error);
  ASSERT_NE(stream, nullptr);
  const std::array<unsigned char, 4096> bytes{};
  while (error == 0) error = stream->send(bytes.data(), bytes.size(), Deadline(kLong));
  EXPECT_EQ(error, kClosed);
  EXPECT_EQ(stream->send(bytes.data(), bytes.size(), Deadline(kLong)), kClosed);
  std::signal(SIGPIPE, before);
}

TEST(Deadline, BeyondWhatPollTakesIsCut) {
  EXPECT_EQ(Deadline(std::chrono::hours(24 * 365)).leftForPoll(), std::numeric_limits<int>::max());
  EXPECT_EQ(Deadline(std::chrono::milliseconds(-5)).leftForPoll(), 0);
}

}  // namespace
}  // namespace orma::channel
