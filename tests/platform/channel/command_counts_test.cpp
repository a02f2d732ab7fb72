// What the metrics count of a command, whoever ends it and how.
#include <gmock/gmock.h>

#include "../metrics/exchange_counts.h"
#include "command_fixture.h"
#include "orma/asn1/csm_exception.h"
#include "orma/channel/channel_error.h"

namespace orma::channel {
namespace {

class CommandCounts : public CommandTest {
 protected:
  std::string since() const { return counts_.since(); }

 private:
  const ExchangeCounts counts_{orma::metrics::OutsideService::kFaultServer};
};

TEST_F(CommandCounts, AnAnswerToItsEndIsAnswered) {
  converse([](Server& server) { server.say(end(0)); });
  EXPECT_EQ(since(), "1 answered, 0 refused, 0 unreached");
}

TEST_F(CommandCounts, WhatIsNoAnswerToItIsRefused) {
  converse([](Server& server) { server.connection().send(std::string(64, 'x')); });
  converse([](Server& server) { server.say(end(0, 1203)); });
  EXPECT_EQ(since(), "0 answered, 2 refused, 0 unreached");
}

TEST_F(CommandCounts, WithoutAnAnswerItWasNotReached) {
  converse([](Server&) {});
  converse([](Server& server) { server.connection().waitForClose(); }, kShortMs);
  EXPECT_EQ(since(), "0 answered, 0 refused, 2 unreached");
  const ClosedPort closed;
  configure(closed.port());
  makeCommand()->Send(nullptr);
  EXPECT_EQ(since(), "0 answered, 0 refused, 3 unreached");
}

// What decodes badly is refused, whatever came before it.
TEST_F(CommandCounts, WhatTheDecoderThrowsAtIsRefused) {
  std::unique_ptr<CSM_Exception> caught;
  try {
    converse([](Server& server) {
      server.say(reply(1, octets("one")));
      server.readFrame();
      server.say(reply(2, "x"));
      server.connection().waitForClose();
    });
  } catch (CSM_Exception* thrown) {
    caught.reset(thrown);
  }
  EXPECT_TRUE(caught);
  EXPECT_EQ(since(), "0 answered, 1 refused, 0 unreached");
}

// A caller may go before the end: then what has come decides.
TEST_F(CommandCounts, WhatItsCallerLeavesIsAnsweredByAFrame) {
  for (const bool frameComes : {false, true}) {
    const ScriptedPeer peer(serving([](Server& server) {
      server.say(reply(1, octets("one")));
      server.connection().waitForClose();
    }));
    configure(peer.port());
    const auto command = makeCommand();
    command->Send(nullptr);
    unsigned long error = 0;
    AsnOcts text;
    if (frameComes) command->Receive(error, text);
    EXPECT_THAT(since(), testing::EndsWith(", 1 under way"));
  }
  EXPECT_EQ(since(), "1 answered, 0 refused, 1 unreached");
}

TEST_F(CommandCounts, OneThatFailedIsUnderWayNoMore) {
  const ScriptedPeer peer(serving([](Server&) {}));
  configure(peer.port());
  const auto command = makeCommand();
  command->Send(nullptr);
  expectOutcome(follow(*command), {}, kClosed);
  EXPECT_EQ(since(), "0 answered, 0 refused, 0 unreached");
}

TEST_F(CommandCounts, WhatAsksNobodyDoesNotCount) {
  EXPECT_FALSE(makeCommand()->Send(nullptr));
  expectOutcome(follow(*makeCommand()), {}, kNotSent);
  EXPECT_EQ(since(), "0 answered, 0 refused, 0 unreached");
}

}  // namespace
}  // namespace orma::channel
