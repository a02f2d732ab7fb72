// Commands against peers on real sockets: what Receive gives, whatever the peer does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <json/value.h>
#include <json/writer.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <future>
#include <memory>
#include <thread>

#include "../metrics/exchange_counts.h"
#include "frames.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_octs.h"
#include "orma/asn1/csm_exception.h"
#include "orma/bundle/configuration.h"
#include "orma/channel/asn_phy_cmd.h"
#include "orma/channel/channel_error.h"
#include "orma/log/log_sink.h"
#include "scripted_peer.h"
#include "temp_directory.h"

namespace orma::channel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr int kLongMs = 60000;
constexpr int kShortMs = 80;

// An OCTET STRING of less than 128 bytes.
std::string octets(const std::string& text) {
  return std::string("\x04") + static_cast<char>(text.size()) + text;
}

std::string textOf(const AsnOcts& value) {
  return std::string(value.bytes().data(), value.bytes().size());
}

// The server's end of one command: frames out of its scripts, addressed to the command that came.
class Server {
 public:
  explicit Server(PeerConnection& connection) : connection_(connection) { command_ = readFrame(); }

  const Frame& command() const { return command_; }
  PeerConnection& connection() { return connection_; }

  Frame readFrame() {
    const std::string header = connection_.read(kFrameHeaderBytes);
    if (header.size() < kFrameHeaderBytes) return Frame();
    std::size_t length = 0;
    for (int i = 32; i < 36; ++i) length = length << 8 | static_cast<unsigned char>(header[i]);
    return frameOf(header + connection_.read(length));
  }

  // The bytes of a frame of this exchange.
  std::string own(Frame frame) const {
    frame.process = command_.process;
    frame.command = command_.command;
    frame.id = command_.id;
    return bytesOf(frame);
  }
  void say(const Frame& frame) { connection_.send(own(frame)); }

 private:
  PeerConnection& connection_;
  Frame command_;
};

ScriptedPeer::Script serving(std::function<void(Server&)> script) {
  return [script = std::move(script)](PeerConnection& connection) {
    Server server(connection);
    script(server);
  };
}

// What a caller sees of an exchange that it follows to its end.
struct Outcome {
  std::vector<std::string> texts;
  unsigned long error = 0;
};

class CommandTest : public testing::Test {
 protected:
  CommandTest() { configure(0); }
  ~CommandTest() override {
    Configuration::install(nullptr);
    configureLog(*Configuration::current());
  }

  void configure(int port, int connectMs = kLongMs, int receiveMs = kLongMs,
                 const std::string& host = "127.0.0.1") {
    settings_["host"] = host;
    settings_["port"] = port;
    settings_["connectTimeoutMs"] = connectMs;
    settings_["receiveTimeoutMs"] = receiveMs;
    install();
  }

  void install() {
    Json::Value root;
    root["log"]["stderr"] = false;
    root["log"]["file"] = directory_ / "trace.log";
    root["faultServer"] = settings_;
    std::vector<ConfigProblem> problems;
    const auto configuration = Configuration::parse(
        Json::writeString(Json::StreamWriterBuilder(), root), "test.json", "/", problems);
    for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
    configureLog(*configuration);
    Configuration::install(configuration);
  }

  std::string traces() const {
    flushLog();
    std::ifstream log(directory_ / "trace.log");
    return std::string(std::istreambuf_iterator<char>(log), {});
  }

  static std::unique_ptr<CAsnPhyCmd> makeCommand(int seconds = 300, unsigned char flow = 1) {
    CProcID faultServer;
    faultServer.process = 56;
    return std::make_unique<CAsnPhyCmd>(2158, AsnOcts("ask"), faultServer, seconds, flow, 0);
  }

  static Outcome follow(CAsnPhyCmd& command) {
    Outcome outcome;
    AsnOcts reply;
    while (command.Receive(outcome.error, reply)) {
      outcome.texts.push_back(textOf(reply));
      command.NeedNextRsp();
    }
    return outcome;
  }

  Outcome converse(std::function<void(Server&)> script, int receiveMs = kLongMs) {
    const ScriptedPeer peer(serving(std::move(script)));
    configure(peer.port(), kLongMs, receiveMs);
    const auto command = makeCommand();
    command->Send(nullptr);
    return follow(*command);
  }

  TempDirectory directory_;
  Json::Value settings_;
};

void expectOutcome(const Outcome& outcome, const std::vector<std::string>& texts,
                   unsigned long error) {
  EXPECT_EQ(outcome.texts, texts);
  EXPECT_EQ(outcome.error, error);
}

TEST_F(CommandTest, FramesArriveOneByOneAsTheyAreAskedFor) {
  Frame command;
  std::vector<std::uint32_t> asked;
  const Outcome outcome = converse([&](Server& server) {
    command = server.command();
    server.say(reply(1, octets("one")));
    asked.push_back(server.readFrame().number);
    server.say(reply(2, octets("two")));
    asked.push_back(server.readFrame().number);
    server.say(end(2));
    server.connection().waitForClose();
  });
  expectOutcome(outcome, {"one", "two"}, 0);
  EXPECT_THAT(asked, ElementsAre(2u, 3u));
  EXPECT_EQ(command.kind, kCommandKind);
  EXPECT_EQ(command.flags, 1);
  EXPECT_EQ(command.process, 56u);
  EXPECT_EQ(command.command, 2158u);
  EXPECT_EQ(command.body, octets("ask"));
}

TEST_F(CommandTest, EndAtOnceIsAnEmptyAnswer) {
  expectOutcome(converse([](Server& server) { server.say(end(0)); }), {}, 0);
}

TEST_F(CommandTest, SingleBytesAreSurvived) {
  const auto dribble = [](Server& server, const std::string& bytes) {
    for (const char byte : bytes) server.connection().send(std::string(1, byte));
  };
  const Outcome outcome = converse([&dribble](Server& server) {
    dribble(server, server.own(reply(1, octets("one"))));
    server.readFrame();
    dribble(server, server.own(reply(2, octets("two"))) + server.own(end(2)));
    server.connection().waitForClose();
  });
  expectOutcome(outcome, {"one", "two"}, 0);
}

// Each byte comes well in time, the frame does not.
TEST_F(CommandTest, DribblingDoesNotStretchTheDeadline) {
  const auto begin = std::chrono::steady_clock::now();
  const Outcome outcome = converse(
      [](Server& server) {
        const std::string bytes = server.own(reply(1, std::string(100000, 'x')));
        for (const char byte : bytes) {
          if (server.connection().closedWithin(5)) return;
          server.connection().send(std::string(1, byte));
        }
      },
      kShortMs);
  expectOutcome(outcome, {}, kReceiveTimeout);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST_F(CommandTest, StallIsATimeoutInEveryPhase) {
  std::vector<std::size_t> sizes = {0, 1, kFrameHeaderBytes - 1, kFrameHeaderBytes,
                                    kFrameHeaderBytes + 1};
  for (const std::size_t size : sizes) {
    const Outcome outcome = converse(
        [size](Server& server) {
          server.connection().send(server.own(reply(1, octets("one"))).substr(0, size));
          server.connection().waitForClose();
        },
        kShortMs);
    expectOutcome(outcome, {}, kReceiveTimeout);
  }
}

TEST_F(CommandTest, StallBehindAFrameKeepsTheFrame) {
  const Outcome outcome = converse(
      [](Server& server) {
        server.say(reply(1, octets("one")));
        server.connection().waitForClose();
      },
      kShortMs);
  expectOutcome(outcome, {"one"}, kReceiveTimeout);
}

// Two frames and the end, cut behind every byte.
TEST_F(CommandTest, CloseAnywhereIsClosed) {
  const std::size_t frameSize = bytesOf(reply(1, octets("one"))).size();
  for (std::size_t size = 0; size < 2 * frameSize + kFrameHeaderBytes; ++size) {
    const Outcome outcome = converse([size, frameSize](Server& server) {
      const std::string first = server.own(reply(1, octets("one")));
      const std::string others = server.own(reply(2, octets("two"))) + server.own(end(2));
      server.connection().send(first.substr(0, size));
      if (size <= frameSize) return;
      server.readFrame();
      server.connection().send(others.substr(0, size - frameSize));
    });
    EXPECT_EQ(outcome.error, kClosed) << size;
    EXPECT_EQ(outcome.texts.size(), size / frameSize) << size;
  }
}

TEST_F(CommandTest, OtherProtocolIsMalformed) {
  const Outcome outcome = converse([](Server& server) {
    server.connection().send("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n");
    server.connection().waitForClose();
  });
  expectOutcome(outcome, {}, kMalformed);
}

TEST_F(CommandTest, LateAnswerToAnotherCommandIsNotTaken) {
  const Outcome outcome = converse([](Server& server) {
    Frame frame = reply(1, octets("late"));
    frame.id = server.command().id - 1;
    server.connection().send(bytesOf(frame));
    server.connection().waitForClose();
  });
  expectOutcome(outcome, {}, kOtherCommand);
}

TEST_F(CommandTest, RepeatedAndReorderedFramesAreNotTaken) {
  for (const std::uint32_t number : {1u, 3u}) {
    const Outcome outcome = converse([number](Server& server) {
      server.say(reply(1, octets("one")));
      server.say(reply(number, octets("again")));
      server.connection().waitForClose();
    });
    expectOutcome(outcome, {"one"}, kWrongOrder);
  }
}

TEST_F(CommandTest, FrameAboveTheLimitIsTooLarge) {
  settings_["maxFrameBytes"] = 1024;
  const Outcome outcome = converse([](Server& server) {
    Frame frame = reply(1, "");
    frame.id = server.command().id;
    server.connection().send(bytesOf(frame, 1025));
    server.connection().waitForClose();
  });
  expectOutcome(outcome, {}, kTooLarge);
}

TEST_F(CommandTest, FramesAboveTheLimitAreTooMany) {
  settings_["maxFrames"] = 1;
  const Outcome outcome = converse([](Server& server) {
    server.say(reply(1, octets("one")));
    server.readFrame();
    server.say(reply(2, octets("two")));
    server.connection().waitForClose();
  });
  expectOutcome(outcome, {"one"}, kTooManyFrames);
}

TEST_F(CommandTest, ServersErrorIsPassedOn) {
  expectOutcome(converse([](Server& server) { server.say(end(0, 1203)); }), {}, 1203);
}

TEST_F(CommandTest, FrameWithAnErrorIsDecodedAndCarriesIt) {
  const ScriptedPeer peer(serving([](Server& server) {
    Frame frame = reply(1, octets("one"));
    frame.error = 5;
    server.say(frame);
    server.connection().waitForClose();
  }));
  configure(peer.port());
  const auto command = makeCommand();
  command->Send(nullptr);
  unsigned long error = 0;
  AsnOcts text;
  EXPECT_TRUE(command->Receive(error, text));
  EXPECT_EQ(error, 5u);
  EXPECT_EQ(textOf(text), "one");
}

TEST_F(CommandTest, DecodersExceptionPassesAndEndsTheExchange) {
  const ScriptedPeer peer(serving([](Server& server) {
    server.say(reply(1, std::string("\x02\x01\x05", 3)));
    server.connection().waitForClose();
  }));
  configure(peer.port());
  const auto command = makeCommand();
  command->Send(nullptr);
  unsigned long error = 0;
  AsnOcts text;
  std::unique_ptr<CSM_Exception> caught;
  try {
    command->Receive(error, text);
  } catch (CSM_Exception* thrown) {
    caught.reset(thrown);
  }
  ASSERT_TRUE(caught);
  EXPECT_EQ(caught->code(), kAsnWrongTag);
  EXPECT_FALSE(command->Receive(error, text));
  EXPECT_EQ(error, kUndecodable);
}

TEST_F(CommandTest, BytesBehindTheMessageAreUndecodable) {
  const Outcome outcome = converse([](Server& server) {
    server.say(reply(1, octets("one") + "x"));
    server.connection().waitForClose();
  });
  expectOutcome(outcome, {}, kUndecodable);
}

TEST_F(CommandTest, WithoutFlowControlNothingIsAskedFor) {
  std::string askedFor = "?";
  {
    const ScriptedPeer peer(serving([&askedFor](Server& server) {
      server.say(reply(1, octets("one")));
      server.say(reply(2, octets("two")));
      server.say(end(2));
      askedFor = server.connection().read(1);
    }));
    configure(peer.port());
    const auto command = makeCommand(300, 0);
    command->Send(nullptr);
    expectOutcome(follow(*command), {"one", "two"}, 0);
  }
  EXPECT_EQ(askedFor, "");
}

TEST_F(CommandTest, ConnectionClosesWithTheCommand) {
  std::promise<void> closed;
  const ScriptedPeer peer(serving([&closed](Server& server) {
    server.connection().waitForClose();
    closed.set_value();
  }));
  configure(peer.port());
  auto command = makeCommand();
  EXPECT_TRUE(command->Send(nullptr));
  command.reset();
  EXPECT_EQ(closed.get_future().wait_for(std::chrono::seconds(60)), std::future_status::ready);
}

TEST_F(CommandTest, RefusedConnectionIsTold) {
  const ClosedPort port;
  configure(port.port());
  const auto command = makeCommand();
  EXPECT_FALSE(command->Send(nullptr));
  expectOutcome(follow(*command), {}, kRefused);
}

TEST_F(CommandTest, ConnectionThatIsNotMadeInTimeIsTold) {
  const DeafPort port;
  configure(port.port(), kShortMs);
  const auto command = makeCommand();
  EXPECT_FALSE(command->Send(nullptr));
  expectOutcome(follow(*command), {}, kConnectTimeout);
}

TEST_F(CommandTest, HostMayBeAName) {
  const ScriptedPeer peer(serving([](Server& server) { server.say(end(0)); }));
  configure(peer.port(), kLongMs, kLongMs, "localhost");
  const auto command = makeCommand();
  EXPECT_TRUE(command->Send(nullptr));
  expectOutcome(follow(*command), {}, 0);
}

TEST_F(CommandTest, WithoutAnAddressNothingIsTried) {
  struct Row {
    const char* host;
    int port;
    int process;
  };
  for (const Row& row : {Row{"", 1, 56}, Row{"127.0.0.1", 0, 56}, Row{"127.0.0.1", 1, 57},
                         Row{"no host's name", 1, 56}}) {
    settings_["process"] = row.process;
    configure(row.port, kLongMs, kLongMs, row.host);
    const auto command = makeCommand();
    EXPECT_FALSE(command->Send(nullptr));
    expectOutcome(follow(*command), {}, kNoAddress);
  }
}

// The configuration's time counts; without it, the command's own.
TEST_F(CommandTest, CommandsSecondsCountWhereTheConfigurationIsSilent) {
  const ScriptedPeer peer(serving([](Server& server) { server.connection().waitForClose(); }));
  configure(peer.port(), kLongMs, 0);
  const auto begin = std::chrono::steady_clock::now();
  const auto command = makeCommand(1);
  command->Send(nullptr);
  expectOutcome(follow(*command), {}, kReceiveTimeout);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

TEST_F(CommandTest, ReceiveWithoutSendIsTold) {
  const auto command = makeCommand();
  expectOutcome(follow(*command), {}, kNotSent);
  command->NeedNextRsp();
}

TEST_F(CommandTest, FailureIsTracedOnceWithWhatToCheck) {
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
  EXPECT_THAT(text, HasSubstr(expected));
  EXPECT_EQ(text.find("Command", text.find(expected) + 1), std::string::npos) << text;
}

TEST_F(CommandTest, ServersErrorIsTracedAsSuch) {
  converse([](Server& server) { server.say(end(0, 1203)); });
  EXPECT_THAT(traces(), HasSubstr("failed with code 1203: the server gave the error code 1203; "
                                  "check the server's log\n"));
}

TEST_F(CommandTest, ExchangeThatGoesWellLeavesNoTrace) {
  converse([](Server& server) { server.say(end(0)); });
  EXPECT_EQ(traces(), "");
}

// The request is larger than what the sockets hold, so that the peer's close meets the sending.
TEST_F(CommandTest, PeerThatClosesWhileItIsSentToRaisesNoSignal) {
  const ScriptedPeer peer([](PeerConnection& connection) { connection.read(1); });
  configure(peer.port());
  AsnOcts large;
  const std::string bytes(32 << 20, 'x');
  large.ReSet(bytes.data(), bytes.size());
  CProcID faultServer;
  faultServer.process = 56;
  CAsnPhyCmd command(2158, large, faultServer, 300, 1, 0);
  EXPECT_FALSE(command.Send(nullptr));
  expectOutcome(follow(command), {}, kClosed);
}

TEST_F(CommandTest, PeerThatReadsNothingIsATimeoutOfTheSend) {
  const ScriptedPeer peer([](PeerConnection& connection) { connection.stayDeaf(); });
  configure(peer.port(), kLongMs, kShortMs);
  AsnOcts large;
  const std::string bytes(32 << 20, 'x');
  large.ReSet(bytes.data(), bytes.size());
  CProcID faultServer;
  faultServer.process = 56;
  CAsnPhyCmd command(2158, large, faultServer, 300, 1, 0);
  EXPECT_FALSE(command.Send(nullptr));
  expectOutcome(follow(command), {}, kReceiveTimeout);
}

TEST_F(CommandTest, DestroyMayComeBeforeTheDestructor) {
  const auto command = makeCommand();
  command->Destroy();
}

TEST_F(CommandTest, CommandsOfTwoThreadsDoNotMeet) {
  const auto repeating = [](const std::string& text) {
    return serving([text](Server& server) {
      for (std::uint32_t number = 1; number <= 50; ++number) {
        server.say(reply(number, octets(text)));
        server.readFrame();
      }
      server.say(end(50));
      server.connection().waitForClose();
    });
  };
  const ScriptedPeer first(repeating("first"));
  const ScriptedPeer second(repeating("second"));
  configure(first.port());
  const auto one = makeCommand();
  configure(second.port());
  const auto two = makeCommand();
  Outcome oneOutcome;
  std::thread other([&] {
    one->Send(nullptr);
    oneOutcome = follow(*one);
  });
  two->Send(nullptr);
  const Outcome twoOutcome = follow(*two);
  other.join();
  expectOutcome(oneOutcome, std::vector<std::string>(50, "first"), 0);
  expectOutcome(twoOutcome, std::vector<std::string>(50, "second"), 0);
}

// What is counted of one command.
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
  EXPECT_EQ(since(), "0 answered, 1 refused, 0 unreached");
}

TEST_F(CommandCounts, WithoutAnAnswerItWasNotReached) {
  converse([](Server&) {});
  EXPECT_EQ(since(), "0 answered, 0 refused, 1 unreached");
}

TEST_F(CommandCounts, WithoutAnAddressNothingCounts) {
  const auto command = makeCommand();
  EXPECT_FALSE(command->Send(nullptr));
  EXPECT_EQ(since(), "0 answered, 0 refused, 0 unreached");
}

}  // namespace
}  // namespace orma::channel
