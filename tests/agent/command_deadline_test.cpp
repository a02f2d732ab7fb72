// A command that is given up ends its process, so the cases look at processes that end.
#include "command_deadline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <future>

#include "exit_status.h"
#include "orma/metrics/outside_services.h"
#include "waiting_for.h"

namespace ormaagent {
namespace {

using namespace std::chrono_literals;
using orma::metrics::Exchange;
using orma::metrics::Outcome;
using orma::metrics::OutsideService;
using testing::ExitedWithCode;

// Never comes back.
void hang() { std::promise<void>().get_future().wait(); }

class DeadlineDeathTest : public testing::Test {
 protected:
  DeadlineDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(DeadlineDeathTest, WhatHangsIsGivenUpWithItsName) {
  const auto body = [] {
    CommandDeadline deadline;
    const WaitingFor waiting("the services to start");
    deadline.set(0s);
    hang();
  };
  EXPECT_EXIT(body(), ExitedWithCode(kExitDeadline),
              "ormaagent: given up after 0 s \\(--timeout\\): it waited for the services to start");
}

TEST_F(DeadlineDeathTest, AClearedOneLetsTheCommandGoOn) {
  const auto body = [] {
    CommandDeadline deadline;
    deadline.set(3600s);
    deadline.clear();
    deadline.set(1s);
    deadline.clear();
  };
  body();
  EXPECT_EXIT(::_exit(7), ExitedWithCode(7), "");
}

TEST_F(DeadlineDeathTest, ASecondSettingCounts) {
  const auto body = [] {
    CommandDeadline deadline;
    deadline.set(3600s);
    deadline.set(0s);
    hang();
  };
  EXPECT_EXIT(body(), ExitedWithCode(kExitDeadline), "given up after 0 s");
}

// A standard error that nobody reads and that is full keeps nobody from ending.
TEST_F(DeadlineDeathTest, AFullStandardErrorDoesNotKeepIt) {
  const auto body = [] {
    int ends[2];
    if (::pipe(ends) != 0 || ::dup2(ends[1], STDERR_FILENO) < 0) ::_exit(1);
    const std::string block(4096, 'x');
    for (int i = 0; i < 16; ++i) {
      if (::write(STDERR_FILENO, block.data(), block.size()) < 0) ::_exit(1);
    }
    CommandDeadline deadline;
    deadline.set(0s);
    hang();
  };
  EXPECT_EXIT(body(), ExitedWithCode(kExitDeadline), "");
}

TEST(Waiting, TheYoungestCounts) {
  EXPECT_EQ(currentWait(), "its own end");
  const WaitingFor outer("outer");
  {
    const WaitingFor inner("inner");
    EXPECT_EQ(currentWait(), "inner");
  }
  EXPECT_EQ(currentWait(), "outer");
}

TEST(Waiting, AnOutsideServiceThatHasNotAnsweredComesFirst) {
  const WaitingFor waiting("the operation of \"topo links\"");
  const Exchange southbound(OutsideService::kSouthbound);
  {
    Exchange database(OutsideService::kDatabase);
    EXPECT_EQ(currentWait(),
              "the database (database.connection), asked 0 s before, and with it the operation of "
              "\"topo links\"");
    database.arrived(Outcome::kAnswered);
  }
  EXPECT_EQ(currentWait(),
            "the southbound set, which reads the database, asked 0 s before, and with it the "
            "operation of \"topo links\"");
}

TEST(Waiting, EachServiceIsNamedByItsKey) {
  for (const auto& [service, text] :
       {std::pair{OutsideService::kRest, "the REST service (rest.baseUrl), asked"},
        std::pair{OutsideService::kFaultServer, "the fault server (faultServer.host), asked"}}) {
    const Exchange exchange(service);
    EXPECT_THAT(currentWait(), testing::StartsWith(text));
  }
}

}  // namespace
}  // namespace ormaagent
