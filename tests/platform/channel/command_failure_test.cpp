// What a failed command tells a person: whom it went to, the reason and what to check.
#include <gmock/gmock.h>

#include "command_fixture.h"
#include "failure.h"
#include "orma/channel/channel_error.h"

namespace orma::channel {
namespace {

using testing::HasSubstr;

class CommandFailure : public CommandTest {};

TEST_F(CommandFailure, FailureIsTracedOnceWithWhatToCheck) {
  const ClosedPort port;
  configure(port.port());
  const auto command = makeCommand();
  command->Send(nullptr);
  expectOutcome(follow(*command), {}, kRefused);
  expectOutcome(follow(*command), {}, kRefused);
  const std::string text = traces();
  const std::string expected =
      "Command 2158 to fault server 127.0.0.1:" + std::to_string(port.port()) +
      " failed with code 6102: the connection was refused; check that the server runs and that "
      "faultServer.host and faultServer.port name it\n";
  EXPECT_THAT(text, HasSubstr(" error asnchannel:"));
  EXPECT_THAT(text, HasSubstr(" unknown - " + expected));
  EXPECT_EQ(text.find("Command", text.find(expected) + 1), std::string::npos) << text;
}

TEST_F(CommandFailure, FailureOfAnotherProcessNamesTheProcess) {
  settings_["process"] = 57;
  configure(1);
  makeCommand()->Send(nullptr);
  EXPECT_THAT(traces(), HasSubstr("Command 2158 to process 56 failed with code 6101: "));
}

struct Advice {
  unsigned long error;
  const char* text;
};

constexpr Advice kAdvice[] = {
    {kNoAddress,
     "there is no address for it; check faultServer.host, faultServer.port and "
     "faultServer.process"},
    {kRefused,
     "the connection was refused; check that the server runs and that faultServer.host and "
     "faultServer.port name it"},
    {kConnectTimeout,
     "no connection in time; check that the server is reachable, or raise "
     "faultServer.connectTimeoutMs"},
    {kReceiveTimeout,
     "no whole frame in time; check the server's load, or raise faultServer.receiveTimeoutMs"},
    {kClosed, "the connection was closed before the end of the exchange; check the server's log"},
    {kMalformed,
     "what came is no frame of this release; check that faultServer.port is the fault server's"},
    {kTooLarge, "a frame is larger than faultServer.maxFrameBytes; raise it if that is meant"},
    {kWrongOrder, "a frame was repeated, left out or sent unasked; check the server's release"},
    {kOtherCommand, "a frame answers another command; check the server's release"},
    {kUndecodable,
     "a frame's body is not the message that was expected; check faultServer.tagging and the "
     "server's release"},
    {kTooManyFrames, "there are more frames than faultServer.maxFrames; raise it if that is meant"},
    {kNotSent, "nothing was sent before the first frame was waited for"},
    {kSystem, "the network failed; check the system's log"},
    {6114, "the server gave the error code 6114; check the server's log"},
};

TEST(ChannelAdvice, EachCodeHasItsText) {
  for (const Advice& row : kAdvice) EXPECT_EQ(failureText(row.error), row.text) << row.error;
}

TEST_F(CommandFailure, ServersErrorIsTracedAsSuch) {
  converse([](Server& server) { server.say(end(0, 1203)); });
  EXPECT_THAT(traces(), HasSubstr("failed with code 1203: the server gave the error code 1203; "
                                  "check the server's log\n"));
}

TEST_F(CommandFailure, ExchangeThatGoesWellLeavesNoTrace) {
  converse([](Server& server) { server.say(end(0)); });
  EXPECT_EQ(traces(), "");
}

}  // namespace
}  // namespace orma::channel
