#include "waiting_line.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <cstdlib>

namespace ormaagent {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

constexpr char kCleared[] = "\r\033[K";

// A terminal and the end that sees what is drawn on it.
class Terminal {
 public:
  Terminal() : seen_(::posix_openpt(O_RDWR | O_NOCTTY)) {
    if (seen_ < 0 || ::grantpt(seen_) != 0 || ::unlockpt(seen_) != 0) return;
    drawn_ = ::open(::ptsname(seen_), O_RDWR | O_NOCTTY);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    if (drawn_ >= 0) ::close(drawn_);
    if (seen_ >= 0) ::close(seen_);
  }

  int descriptor() const { return drawn_; }
  // What comes until `end` does, or nothing more for ten seconds.
  std::string readUntil(const std::string& end) {
    std::string text;
    pollfd ready{seen_, POLLIN, 0};
    while (text.size() < end.size() ||
           text.compare(text.size() - end.size(), end.size(), end) != 0) {
      char byte = 0;
      if (::poll(&ready, 1, 10000) != 1 || ::read(seen_, &byte, 1) != 1) break;
      text += byte;
    }
    return text;
  }
  bool hasMore() {
    pollfd ready{seen_, POLLIN, 0};
    return ::poll(&ready, 1, 0) == 1;
  }

 private:
  int seen_;
  int drawn_ = -1;
};

TEST(WaitingLine, IsDrawnAgainAndAgainAndGoesInTheEnd) {
  Terminal terminal;
  ASSERT_GE(terminal.descriptor(), 0);
  {
    const WaitingLine line("Reading", terminal.descriptor(), std::chrono::milliseconds(1));
    for (int i = 0; i < 3; ++i) {
      EXPECT_THAT(terminal.readUntil(" s"), HasSubstr(std::string(kCleared) + "Reading: "));
    }
  }
  std::string rest;
  while (terminal.hasMore()) rest += terminal.readUntil(kCleared);
  EXPECT_THAT(rest, testing::EndsWith(kCleared));
}

TEST(WaitingLine, IsNotDrawnBeforeItsTime) {
  Terminal terminal;
  ASSERT_GE(terminal.descriptor(), 0);
  { const WaitingLine line("Reading", terminal.descriptor(), std::chrono::hours(1)); }
  EXPECT_FALSE(terminal.hasMore());
}

TEST(WaitingLine, IsNotDrawnWhereThereIsNoTerminal) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  { const WaitingLine line("Reading", ends[1], std::chrono::milliseconds(0)); }
  ::close(ends[1]);
  char byte = 0;
  EXPECT_EQ(::read(ends[0], &byte, 1), 0);
  ::close(ends[0]);
  { const WaitingLine line("Reading", -1, std::chrono::milliseconds(0)); }
}

}  // namespace
}  // namespace ormaagent
