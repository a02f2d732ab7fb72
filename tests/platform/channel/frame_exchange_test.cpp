// The protocol on bytes in memory: what is sent, what is accepted, and how it ends.
#include "frame_exchange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "frames.h"
#include "memory_stream.h"
#include "orma/channel/channel_error.h"

namespace orma::channel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::size_t kMaxFrameBytes = 4096;
constexpr std::uint64_t kMaxFrames = 3;

// What a caller sees of an exchange that it follows to its end.
struct Outcome {
  std::vector<std::string> bodies;
  unsigned long error = 0;  // 0: the exchange is over
};

bool operator==(const Outcome& a, const Outcome& b) {
  return a.bodies == b.bodies && a.error == b.error;
}

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  return out << testing::PrintToString(outcome.bodies) << " and " << outcome.error;
}

class FrameExchangeTest : public testing::Test {
 protected:
  static Request request(bool flowControl = true) {
    Request request;
    request.process = 56;
    request.command = 2158;
    request.id = 7;
    request.flowControl = flowControl;
    request.body = {0x04, 0x01, 'x'};
    return request;
  }

  FrameExchange makeExchange(Request request) {
    return FrameExchange(
        std::move(request), {std::chrono::seconds(60), kMaxFrameBytes, kMaxFrames},
        [this](unsigned long& error) -> std::unique_ptr<ByteStream> {
          error = connectError_;
          if (connectError_ != 0) return nullptr;
          return std::make_unique<MemoryStream>(talk_);
        },
        [this](unsigned long error) { reports_.push_back(error); });
  }

  // Sends, and asks for frames until there are no more.
  Outcome follow(FrameExchange exchange) {
    exchange.send();
    Outcome outcome;
    for (;;) {
      switch (exchange.receive()) {
        case FrameExchange::Step::Frame:
          outcome.bodies.emplace_back(reinterpret_cast<const char*>(exchange.frame().body),
                                      exchange.frame().size);
          exchange.askNext();
          break;
        case FrameExchange::Step::Over:
          return outcome;
        case FrameExchange::Step::Failed:
          outcome.error = exchange.error();
          return outcome;
      }
    }
  }

  Outcome followReplies(const std::string& incoming, bool flowControl = true) {
    talk_ = Conversation();
    talk_.incoming = incoming;
    return follow(makeExchange(request(flowControl)));
  }

  Conversation talk_;
  unsigned long connectError_ = 0;
  std::vector<unsigned long> reports_;
};

TEST_F(FrameExchangeTest, SaysAndUnderstandsTheDocumentedFrames) {
  const std::vector<std::string> examples = documentedFrames();
  ASSERT_EQ(examples.size(), 5u);
  talk_.incoming = examples[1] + examples[3];
  Request asked = request();
  const std::string body = examples[0].substr(kFrameHeaderBytes);
  asked.body.assign(body.begin(), body.end());
  const Outcome outcome = follow(makeExchange(std::move(asked)));
  const std::string second = examples[3].substr(kFrameHeaderBytes, 13);
  EXPECT_EQ(outcome, (Outcome{{examples[1].substr(kFrameHeaderBytes), second}, 0}));
  EXPECT_EQ(talk_.sent.substr(0, examples[0].size()), examples[0]);
  EXPECT_EQ(talk_.sent.substr(examples[0].size(), kFrameHeaderBytes), examples[2]);
  EXPECT_EQ(followReplies(examples[4]), (Outcome{{}, 1203}));
}

TEST_F(FrameExchangeTest, CommandCarriesItsSettings) {
  Request asked = request(false);
  asked.process = 0xFFFFFFFE;
  asked.command = 0x01020304;
  asked.id = 0xA0B0C0D0;
  asked.priority = 0xABCD;
  makeExchange(std::move(asked)).send();
  const Frame sent = frameOf(talk_.sent);
  EXPECT_EQ(sent.magic, "ORMC");
  EXPECT_EQ(sent.version, 1);
  EXPECT_EQ(sent.kind, kCommandKind);
  EXPECT_EQ(sent.flags, 0);
  EXPECT_EQ(sent.process, 0xFFFFFFFEu);
  EXPECT_EQ(sent.command, 0x01020304u);
  EXPECT_EQ(sent.id, 0xA0B0C0D0u);
  EXPECT_EQ(sent.number, 0u);
  EXPECT_EQ(sent.error, 0u);
  EXPECT_EQ(sent.priority, 0xABCD);
  EXPECT_EQ(sent.reserved, 0);
  EXPECT_EQ(sent.body, "\x04\x01x");
}

TEST_F(FrameExchangeTest, EndWithoutRepliesIsOver) {
  EXPECT_EQ(followReplies(bytesOf(end(0))), Outcome());
  EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(FrameExchangeTest, FramesComeOneByteAtATime) {
  talk_.incoming = bytesOf(reply(1, "one")) + bytesOf(reply(2, "two")) + bytesOf(end(2));
  talk_.chunk = 1;
  EXPECT_EQ(follow(makeExchange(request())), (Outcome{{"one", "two"}, 0}));
}

// Whatever is missing at the end, the frames before are delivered and the exchange has failed.
TEST_F(FrameExchangeTest, CutAnywhereIsClosed) {
  const std::string first = bytesOf(reply(1, "one"));
  const std::string second = bytesOf(reply(2, ""));
  const std::string whole = first + second + bytesOf(end(2));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    Outcome expected{{}, kClosed};
    if (size >= first.size()) expected.bodies.emplace_back("one");
    if (size >= first.size() + second.size()) expected.bodies.emplace_back("");
    EXPECT_EQ(followReplies(whole.substr(0, size)), expected) << "cut at " << size;
  }
}

TEST_F(FrameExchangeTest, BytesBehindTheEndAreNotRead) {
  EXPECT_EQ(followReplies(bytesOf(end(0)) + "rubbish"), Outcome());
  EXPECT_EQ(talk_.taken, kFrameHeaderBytes);
}

struct BadFrame {
  const char* name;
  void (*spoil)(Frame& second);
  unsigned long error;
};

void PrintTo(const BadFrame& row, std::ostream* out) { *out << row.name; }

class BadFrameTest : public FrameExchangeTest, public testing::WithParamInterface<BadFrame> {};

// The second frame of an exchange that goes well otherwise.
TEST_P(BadFrameTest, EndsTheExchangeBehindTheFramesBefore) {
  Frame second = reply(2, "two");
  GetParam().spoil(second);
  EXPECT_EQ(followReplies(bytesOf(reply(1, "one")) + bytesOf(second) + bytesOf(end(2))),
            (Outcome{{"one"}, GetParam().error}));
  EXPECT_THAT(reports_, ElementsAre(GetParam().error));
}

constexpr BadFrame kBadFrames[] = {
    {"Magic", [](Frame& frame) { frame.magic = "ORMD"; }, kMalformed},
    {"OlderVersion", [](Frame& frame) { frame.version = 0; }, kMalformed},
    {"NewerVersion", [](Frame& frame) { frame.version = 2; }, kMalformed},
    {"NoKind", [](Frame& frame) { frame.kind = 0; }, kMalformed},
    {"UnknownKind", [](Frame& frame) { frame.kind = 5; }, kMalformed},
    {"CommandKind", [](Frame& frame) { frame.kind = kCommandKind; }, kMalformed},
    {"NextKind", [](Frame& frame) { frame.kind = kNextKind; }, kMalformed},
    {"FlagOfACommand", [](Frame& frame) { frame.flags = 1; }, kMalformed},
    {"UnknownFlag", [](Frame& frame) { frame.flags = 0x8000; }, kMalformed},
    {"Reserved", [](Frame& frame) { frame.reserved = 1; }, kMalformed},
    {"EndWithBody",
     [](Frame& frame) {
       frame.kind = kEndKind;
       frame.number = 1;
     },
     kMalformed},
    {"OtherProcess", [](Frame& frame) { frame.process = 57; }, kOtherCommand},
    {"OtherCode", [](Frame& frame) { frame.command = 2157; }, kOtherCommand},
    {"OtherId", [](Frame& frame) { frame.id = 8; }, kOtherCommand},
    {"Repeated", [](Frame& frame) { frame.number = 1; }, kWrongOrder},
    {"LeftOut", [](Frame& frame) { frame.number = 3; }, kWrongOrder},
    {"NumberZero", [](Frame& frame) { frame.number = 0; }, kWrongOrder},
    {"EndTooEarly", [](Frame& frame) { frame = end(2); }, kWrongOrder},
    {"EndOfFewer", [](Frame& frame) { frame = end(0); }, kWrongOrder},
    {"EndWithError", [](Frame& frame) { frame = end(1, 17); }, 17},
    {"ErrorWithoutBody",
     [](Frame& frame) {
       frame.body.clear();
       frame.error = 18;
     },
     18},
    {"HighestError",
     [](Frame& frame) {
       frame.body.clear();
       frame.error = 0xFFFFFFFF;
     },
     0xFFFFFFFF},
    {"TooLarge", [](Frame& frame) { frame.body.assign(kMaxFrameBytes + 1, 'x'); }, kTooLarge},
};

INSTANTIATE_TEST_SUITE_P(Frames, BadFrameTest, testing::ValuesIn(kBadFrames),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(FrameExchangeTest, BodyMayBeAsLargeAsTheLimit) {
  const std::string body(kMaxFrameBytes, 'x');
  EXPECT_EQ(followReplies(bytesOf(reply(1, body)) + bytesOf(end(1))), (Outcome{{body}, 0}));
}

TEST_F(FrameExchangeTest, PriorityOfAReplyIsNotLookedAt) {
  Frame first = reply(1, "one");
  first.priority = 9;
  EXPECT_EQ(followReplies(bytesOf(first) + bytesOf(end(1))), (Outcome{{"one"}, 0}));
}

TEST_F(FrameExchangeTest, ErrorWithABodyIsDeliveredAndTheExchangeGoesOn) {
  Frame first = reply(1, "one");
  first.error = 5;
  talk_.incoming = bytesOf(first) + bytesOf(end(1));
  FrameExchange exchange = makeExchange(request());
  exchange.send();
  ASSERT_EQ(exchange.receive(), FrameExchange::Step::Frame);
  EXPECT_EQ(exchange.frame().error, 5u);
  EXPECT_EQ(exchange.frame().size, 3u);
  EXPECT_EQ(exchange.receive(), FrameExchange::Step::Over);
}

TEST_F(FrameExchangeTest, FramesAreCounted) {
  std::string incoming;
  for (std::uint32_t number = 1; number <= 4; ++number) incoming += bytesOf(reply(number, "x"));
  EXPECT_EQ(followReplies(incoming), (Outcome{{"x", "x", "x"}, kTooManyFrames}));
}

TEST_F(FrameExchangeTest, EachFrameIsAskedForOnce) {
  talk_.incoming = bytesOf(reply(1, "one")) + bytesOf(reply(2, "two")) + bytesOf(end(2));
  Request asked = request();
  asked.priority = 0xABCD;
  FrameExchange exchange = makeExchange(std::move(asked));
  exchange.askNext();
  EXPECT_EQ(talk_.sent, "") << "before the command";
  exchange.send();
  talk_.sent.clear();
  exchange.askNext();
  EXPECT_EQ(talk_.sent, "") << "the command asks for the first frame";
  ASSERT_EQ(exchange.receive(), FrameExchange::Step::Frame);
  exchange.askNext();
  const Frame next = frameOf(talk_.sent);
  EXPECT_EQ(next.kind, kNextKind);
  EXPECT_EQ(next.number, 2u);
  EXPECT_EQ(next.id, 7u);
  EXPECT_EQ(next.flags, 0);
  EXPECT_EQ(next.priority, 0xABCD);
  exchange.askNext();
  EXPECT_EQ(talk_.sent.size(), kFrameHeaderBytes) << "asked for already";
}

TEST_F(FrameExchangeTest, UnaskedFrameIsWrongOrder) {
  talk_.incoming = bytesOf(reply(1, "one")) + bytesOf(reply(2, "two"));
  FrameExchange exchange = makeExchange(request());
  exchange.send();
  ASSERT_EQ(exchange.receive(), FrameExchange::Step::Frame);
  ASSERT_EQ(exchange.receive(), FrameExchange::Step::Failed);
  EXPECT_EQ(exchange.error(), kWrongOrder);
}

TEST_F(FrameExchangeTest, WithoutFlowControlFramesComeUnasked) {
  EXPECT_EQ(
      followReplies(bytesOf(reply(1, "one")) + bytesOf(reply(2, "two")) + bytesOf(end(2)), false),
      (Outcome{{"one", "two"}, 0}));
  EXPECT_EQ(talk_.sent.size(), kFrameHeaderBytes + 3) << "the command alone";
}

TEST_F(FrameExchangeTest, EndMayComeInPlaceOfTheFrameThatWasAskedFor) {
  EXPECT_EQ(followReplies(bytesOf(reply(1, "one")) + bytesOf(end(1))), (Outcome{{"one"}, 0}));
}

TEST_F(FrameExchangeTest, NoConnectionFailsTheSend) {
  connectError_ = kRefused;
  FrameExchange exchange = makeExchange(request());
  EXPECT_FALSE(exchange.send());
  EXPECT_EQ(exchange.receive(), FrameExchange::Step::Failed);
  EXPECT_EQ(exchange.error(), kRefused);
  EXPECT_THAT(reports_, ElementsAre(kRefused));
}

TEST_F(FrameExchangeTest, ReceiveBeforeSendFails) {
  FrameExchange exchange = makeExchange(request());
  EXPECT_EQ(exchange.receive(), FrameExchange::Step::Failed);
  EXPECT_EQ(exchange.error(), kNotSent);
  EXPECT_FALSE(exchange.send());
  EXPECT_EQ(talk_.sent, "");
}

TEST_F(FrameExchangeTest, CommandGoesOutOnce) {
  FrameExchange exchange = makeExchange(request());
  EXPECT_TRUE(exchange.send());
  EXPECT_FALSE(exchange.send());
  EXPECT_EQ(talk_.sent.size(), kFrameHeaderBytes + 3);
}

TEST_F(FrameExchangeTest, RequestLargerThanTheLimitIsNotSent) {
  Request large = request();
  large.body.assign(kMaxFrameBytes, 'x');
  EXPECT_TRUE(makeExchange(large).send());
  talk_ = Conversation();
  large.body.push_back('x');
  FrameExchange exchange = makeExchange(std::move(large));
  EXPECT_FALSE(exchange.send());
  EXPECT_EQ(exchange.receive(), FrameExchange::Step::Failed);
  EXPECT_EQ(exchange.error(), kTooLarge);
  EXPECT_EQ(talk_.sent, "");
}

// A server that refuses at once may close before it has read the whole command.
TEST_F(FrameExchangeTest, WhatAClosedPeerHasSaidIsStillRead) {
  talk_.incoming = bytesOf(end(0, 1203));
  talk_.sendError = kClosed;
  FrameExchange exchange = makeExchange(request());
  EXPECT_FALSE(exchange.send());
  EXPECT_EQ(exchange.receive(), FrameExchange::Step::Failed);
  EXPECT_EQ(exchange.error(), 1203u);
}

TEST_F(FrameExchangeTest, OtherFailureToSendIsTheExchanges) {
  talk_.incoming = bytesOf(end(0));
  talk_.sendError = kReceiveTimeout;
  EXPECT_EQ(follow(makeExchange(request())), (Outcome{{}, kReceiveTimeout}));
}

TEST_F(FrameExchangeTest, EndsAreFinalAndCloseTheConnection) {
  talk_.incoming = bytesOf(end(0));
  FrameExchange exchange = makeExchange(request());
  exchange.send();
  EXPECT_FALSE(talk_.closed);
  EXPECT_EQ(exchange.receive(), FrameExchange::Step::Over);
  EXPECT_TRUE(talk_.closed);
  exchange.fail(kUndecodable);
  exchange.askNext();
  EXPECT_EQ(exchange.receive(), FrameExchange::Step::Over);
  EXPECT_THAT(reports_, IsEmpty());

  talk_ = Conversation();
  FrameExchange failing = makeExchange(request());
  failing.send();
  EXPECT_EQ(failing.receive(), FrameExchange::Step::Failed);
  EXPECT_TRUE(talk_.closed);
  failing.fail(kUndecodable);
  EXPECT_EQ(failing.receive(), FrameExchange::Step::Failed);
  EXPECT_EQ(failing.error(), kClosed);
  EXPECT_THAT(reports_, ElementsAre(kClosed));
}

}  // namespace
}  // namespace orma::channel
