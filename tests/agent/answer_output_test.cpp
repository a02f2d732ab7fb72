#include "answer_output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <thread>

namespace ormaagent {
namespace {

// A pipe whose ends are closed with it, but for the one that was given away.
class Pipe {
 public:
  explicit Pipe(int flags = 0) { EXPECT_EQ(::pipe2(ends_.data(), O_CLOEXEC | flags), 0); }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    closeEnd(0);
    closeEnd(1);
  }

  int takeWriteEnd() { return std::exchange(ends_[1], -1); }
  void closeReadEnd() { closeEnd(0); }

  std::string readAll() {
    std::string text;
    char block[65536];
    for (;;) {
      const ssize_t count = ::read(ends_[0], block, sizeof block);
      if (count > 0) text.append(block, static_cast<std::size_t>(count));
      if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) return text;
    }
  }

 private:
  void closeEnd(int end) {
    if (ends_[end] >= 0) ::close(std::exchange(ends_[end], -1));
  }
  std::array<int, 2> ends_{-1, -1};
};

class AnswerOutputTest : public testing::Test {
 protected:
  AnswerOutputTest() { std::signal(SIGPIPE, SIG_IGN); }
};

TEST_F(AnswerOutputTest, MoreThanAPipeHoldsArrivesWhole) {
  const std::string sent(1000000, 'x');
  Pipe pipe;
  std::string received;
  std::thread reader([&] { received = pipe.readAll(); });
  {
    AnswerOutput output(pipe.takeWriteEnd());
    EXPECT_TRUE(output.write(sent));
  }
  reader.join();
  EXPECT_EQ(received, sent);
}

TEST_F(AnswerOutputTest, APipeThatDoesNotBlockIsWaitedFor) {
  const std::string sent(1000000, 'x');
  Pipe pipe(O_NONBLOCK);
  std::string received;
  std::thread reader([&] { received = pipe.readAll(); });
  {
    AnswerOutput output(pipe.takeWriteEnd());
    EXPECT_TRUE(output.write(sent));
  }
  reader.join();
  EXPECT_EQ(received, sent);
}

TEST_F(AnswerOutputTest, AReaderThatIsGoneIsNoFailure) {
  Pipe pipe;
  AnswerOutput output(pipe.takeWriteEnd());
  pipe.closeReadEnd();
  EXPECT_TRUE(output.write("answer"));
}

TEST_F(AnswerOutputTest, AFullDiskIsAFailureWithItsReason) {
  AnswerOutput output(::open("/dev/full", O_WRONLY | O_CLOEXEC));
  EXPECT_FALSE(output.write("answer"));
  EXPECT_EQ(output.failure(), "No space left on device");
}

TEST_F(AnswerOutputTest, AClosedOutputIsAFailure) {
  AnswerOutput output(-1);
  EXPECT_FALSE(output.write("answer"));
  EXPECT_EQ(output.failure(), "Bad file descriptor");
  EXPECT_TRUE(output.write(""));
}

}  // namespace
}  // namespace ormaagent
