#include "service_manager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <future>
#include <string>
#include <vector>

#include "temp_directory.h"

namespace ormaagent {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

bool isAlive() { return true; }

// Plays systemd: the socket that it names in the environment, and what arrives there.
class ServiceManagerTest : public testing::Test {
 protected:
  ServiceManagerTest() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path_.c_str(), sizeof address.sun_path - 1);
    socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const timeval deadline{30, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &deadline, sizeof deadline);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::setenv("NOTIFY_SOCKET", path_.c_str(), 1);
  }
  ~ServiceManagerTest() override {
    for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) ::unsetenv(name);
    ::close(socket_);
  }

  // The next message; waits for it.
  std::string next() const { return receive(0); }
  // Every message that is already there.
  std::vector<std::string> rest() const {
    std::vector<std::string> messages;
    for (std::string message = receive(MSG_DONTWAIT); !message.empty();
         message = receive(MSG_DONTWAIT)) {
      messages.push_back(message);
    }
    return messages;
  }

 private:
  std::string receive(int flags) const {
    std::array<char, 256> bytes{};
    const ssize_t size = ::recv(socket_, bytes.data(), bytes.size(), flags);
    return size < 0 ? "" : std::string(bytes.data(), static_cast<std::size_t>(size));
  }

  const emf::doubles::TempDirectory directory_;
  const std::string path_ = (directory_.path() / "notify").string();
  int socket_ = -1;
};

TEST_F(ServiceManagerTest, IsToldReadyAndStopping) {
  ServiceManager manager(isAlive);
  EXPECT_THAT(rest(), IsEmpty());
  manager.ready();
  EXPECT_THAT(rest(), ElementsAre("READY=1"));
  manager.stopping();
  EXPECT_THAT(rest(), ElementsAre("STOPPING=1"));
}

TEST_F(ServiceManagerTest, IsToldStoppingOnce) {
  {
    ServiceManager manager(isAlive);
    manager.ready();
    manager.stopping();
    manager.stopping();
  }
  EXPECT_THAT(rest(), ElementsAre("READY=1", "STOPPING=1"));
}

TEST_F(ServiceManagerTest, IsToldStoppingAtTheEnd) {
  { ServiceManager(isAlive).ready(); }
  EXPECT_THAT(rest(), ElementsAre("READY=1", "STOPPING=1"));
}

TEST_F(ServiceManagerTest, AProcessThatNeverGotReadySaysNothing) {
  { const ServiceManager manager(isAlive); }
  EXPECT_THAT(rest(), IsEmpty());
}

TEST_F(ServiceManagerTest, SignsOfLifeComeUntilTheStop) {
  ::setenv("WATCHDOG_USEC", "2000", 1);
  ServiceManager manager(isAlive);
  manager.ready();
  int signs = 0;
  while (signs < 3) {
    const std::string message = next();
    ASSERT_FALSE(message.empty()) << "no sign of life before the deadline";
    if (message == "WATCHDOG=1") ++signs;
  }
  manager.stopping();
  rest();
  EXPECT_THAT(rest(), IsEmpty());
}

TEST_F(ServiceManagerTest, SignsComeAtTwiceTheRateThatIsAskedFor) {
  ::setenv("WATCHDOG_USEC", "200000", 1);
  std::promise<void> second;
  std::atomic<int> calls = 0;
  ServiceManager manager([&] {
    if (++calls == 2) second.set_value();
    return true;
  });
  const auto begin = std::chrono::steady_clock::now();
  manager.ready();
  second.get_future().wait();
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::microseconds(100000));
}

TEST_F(ServiceManagerTest, WhoIsNotAliveGivesNoSign) {
  ::setenv("WATCHDOG_USEC", "2000", 1);
  std::promise<void> asked;
  std::atomic<int> calls = 0;
  ServiceManager manager([&] {
    if (++calls == 3) asked.set_value();
    return false;
  });
  manager.ready();
  asked.get_future().wait();
  manager.stopping();
  EXPECT_THAT(rest(), ElementsAre("READY=1", "STOPPING=1"));
}

TEST_F(ServiceManagerTest, TheWatchdogOfAnotherProcessIsNotOurs) {
  ::setenv("WATCHDOG_USEC", "2000", 1);
  ::setenv("WATCHDOG_PID", "1", 1);
  std::atomic<int> calls = 0;
  {
    ServiceManager manager([&] { return ++calls > 0; });
    manager.ready();
  }
  EXPECT_EQ(calls, 0);
}

TEST_F(ServiceManagerTest, AWrongWatchdogTimeIsTold) {
  ::setenv("WATCHDOG_USEC", "soon", 1);
  ServiceManager manager(isAlive);
  testing::internal::CaptureStderr();
  manager.ready();
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("WATCHDOG_USEC"));
  EXPECT_THAT(rest(), ElementsAre("READY=1"));
}

TEST_F(ServiceManagerTest, ASocketThatIsNotThereIsTold) {
  ::setenv("NOTIFY_SOCKET", "/nowhere/notify", 1);
  ServiceManager manager(isAlive);
  testing::internal::CaptureStderr();
  manager.ready();
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              HasSubstr("the service manager cannot be told READY=1: No such file or directory"));
}

TEST_F(ServiceManagerTest, WithoutOneNothingIsSaid) {
  ::unsetenv("NOTIFY_SOCKET");
  ServiceManager manager(isAlive);
  testing::internal::CaptureStderr();
  manager.ready();
  manager.stopping();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace ormaagent
