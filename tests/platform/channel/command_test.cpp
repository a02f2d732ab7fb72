// Commands against peers on real sockets: what Receive gives, whatever the peer does.
#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <thread>

#include "command_fixture.h"
#include "orma/asn1/asn_buf.h"
#include "orma/asn1/csm_exception.h"
#include "orma/channel/channel_error.h"

namespace orma::channel {
namespace {

using testing::ElementsAre;

// A message that is written as the tagging of its buffer, and that reads any body.
class TaggingMessage : public AsnOcts {
 public:
  unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum) const override {
    buffer.putByte(buffer.tagging() == AsnTagging::Explicit ? 'e' : 'i');
    return 1;
  }
  void BDec(AsnBuf& buffer, unsigned long&, NIClass_EncodingFormatEnum) override {
    found = buffer.tagging();
    buffer.skip(buffer.remaining());
    if (missesBytes) buffer.setReadError();
  }

  AsnTagging found = AsnTagging::Implicit;
  bool missesBytes = false;
};

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

TEST_F(CommandTest, SettingsAreInTheFrames) {
  Frame frame;
  const ScriptedPeer peer(serving([&frame](Server& server) {
    frame = server.command();
    server.say(end(0));
  }));
  settings_["process"] = 57;
  configure(peer.port());
  CAsnPhyCmd command(0xFFFFFFFE, AsnOcts("ask"), process(57), 300, 0, 0xABCD);
  command.Send(nullptr);
  expectOutcome(follow(command), {}, 0);
  EXPECT_EQ(frame.process, 57u);
  EXPECT_EQ(frame.command, 0xFFFFFFFEu);
  EXPECT_EQ(frame.flags, 0);
  EXPECT_EQ(frame.priority, 0xABCD);
}

TEST_F(CommandTest, EachHasAnIdOfItsOwn) {
  std::vector<std::uint32_t> ids;
  for (int i = 0; i < 2; ++i) {
    converse([&ids](Server& server) {
      ids.push_back(server.command().id);
      server.say(end(0));
    });
  }
  EXPECT_NE(ids.at(0), ids.at(1));
}

TEST_F(CommandTest, MessagesAreInTheTaggingOfTheConfiguration) {
  for (const AsnTagging tagging : {AsnTagging::Explicit, AsnTagging::Implicit}) {
    const bool isExplicit = tagging == AsnTagging::Explicit;
    std::string asked;
    const ScriptedPeer peer(serving([&asked](Server& server) {
      asked = server.command().body;
      server.say(reply(1, "any"));
      server.connection().waitForClose();
    }));
    settings_["tagging"] = isExplicit ? "explicit" : "implicit";
    configure(peer.port());
    TaggingMessage message;
    message.found = isExplicit ? AsnTagging::Implicit : AsnTagging::Explicit;
    CAsnPhyCmd command(2158, message, process(56), 300, 1, 0);
    command.Send(nullptr);
    unsigned long error = 0;
    EXPECT_TRUE(command.Receive(error, message));
    EXPECT_EQ(asked, isExplicit ? "e" : "i");
    EXPECT_EQ(message.found, tagging);
  }
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

// A list whose length is missing takes it as 0 and throws nothing.
TEST_F(CommandTest, MessageThatMissesBytesIsUndecodable) {
  const ScriptedPeer peer(serving([](Server& server) {
    server.say(reply(1, "30"));
    server.connection().waitForClose();
  }));
  configure(peer.port());
  const auto command = makeCommand();
  command->Send(nullptr);
  TaggingMessage message;
  message.missesBytes = true;
  unsigned long error = 0;
  EXPECT_FALSE(command->Receive(error, message));
  EXPECT_EQ(error, kUndecodable);
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

TEST_F(CommandTest, OtherInstanceOfTheProcessHasNoAddress) {
  const ScriptedPeer peer(serving([](Server& server) { server.say(end(0)); }));
  configure(peer.port());
  CProcID other = process(56);
  other.instance = 1;
  CAsnPhyCmd command(2158, AsnOcts("ask"), other, 300, 1, 0);
  EXPECT_FALSE(command.Send(nullptr));
  expectOutcome(follow(command), {}, kNoAddress);
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

TEST_F(CommandTest, SecondsAreAtLeastOne) {
  for (const int seconds : {0, -1}) {
    const ScriptedPeer peer(serving([](Server& server) { server.say(end(0)); }));
    configure(peer.port(), kLongMs, 0);
    const auto command = makeCommand(seconds);
    EXPECT_TRUE(command->Send(nullptr));
    expectOutcome(follow(*command), {}, 0);
  }
}

TEST_F(CommandTest, ReceiveWithoutSendIsTold) {
  const auto command = makeCommand();
  expectOutcome(follow(*command), {}, kNotSent);
  command->NeedNextRsp();
}

// The request is larger than what the sockets hold, so that the peer's close meets the sending.
TEST_F(CommandTest, PeerThatClosesWhileItIsSentToRaisesNoSignal) {
  const ScriptedPeer peer([](PeerConnection& connection) { connection.read(1); });
  configure(peer.port());
  AsnOcts large;
  const std::string bytes(32 << 20, 'x');
  large.ReSet(bytes.data(), bytes.size());
  CAsnPhyCmd command(2158, large, process(56), 300, 1, 0);
  EXPECT_FALSE(command.Send(nullptr));
  expectOutcome(follow(command), {}, kClosed);
}

TEST_F(CommandTest, PeerThatReadsNothingIsATimeoutOfTheSend) {
  const ScriptedPeer peer([](PeerConnection& connection) { connection.stayDeaf(); });
  configure(peer.port(), kLongMs, kShortMs);
  AsnOcts large;
  const std::string bytes(32 << 20, 'x');
  large.ReSet(bytes.data(), bytes.size());
  CAsnPhyCmd command(2158, large, process(56), 300, 1, 0);
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

}  // namespace
}  // namespace orma::channel
