// The alarm queries against every way in which an exchange with the fault server goes wrong: the
// stated code, the deadline kept, the alarms of the frames before kept, nothing held afterwards,
// and the next query whole.
#include <gmock/gmock.h>

#include "channel_fixture.h"
#include "http_answers.h"
#include "loopback_ports.h"

namespace emf::faults {
namespace {

constexpr int kShortMs = 50;
// Where frames that come in time stand before one that does not.
constexpr int kLeisurelyMs = 1000;

std::string code(int number) { return "ProcessException " + std::to_string(number); }

// One way in which an exchange goes, and what comes of it.
struct Strike {
  std::string what;
  std::function<void(const ChannelServer&)> serve;
  std::string result;
  std::uint32_t repliesKept;
};
using Strikes = std::vector<Strike>;

struct ChannelFault {
  std::string name;
  Strikes (*strikes)();
};
void PrintTo(const ChannelFault& fault, std::ostream* out) { *out << fault.name; }

// Where the frames of a right exchange begin; at last, where it ends.
std::vector<std::size_t> frameStarts() {
  std::vector<std::size_t> starts = {0};
  for (const Frame& frame : rightFrames()) {
    starts.push_back(starts.back() + kFrameHeaderBytes + frame.body.size());
  }
  return starts;
}

std::uint32_t wholeRepliesBefore(std::size_t place) {
  const auto starts = frameStarts();
  std::uint32_t whole = 0;
  while (whole < kReplies && starts[whole + 1] <= place) ++whole;
  return whole;
}

Strike cutAt(std::size_t place, bool byReset) {
  return {"behind byte " + std::to_string(place) + (byReset ? ", by a reset" : ""),
          [=](const ChannelServer& server) {
            server.play(rightFrames(), place);
            if (byReset) server.wire().reset();
          },
          code(6105), wholeRepliesBefore(place)};
}

// Some places of a range. A reset takes what was not read yet, so that one behind the last reply
// would leave open whether that still counts.
Strikes cutsBetween(std::size_t begin, std::size_t end) {
  constexpr std::size_t kPlaces = 36;  // every one of a header
  Strikes strikes;
  const std::size_t lastReplyEnd = frameStarts()[kReplies];
  for (const std::size_t place : placesBetween(begin, end, kPlaces)) {
    strikes.push_back(cutAt(place, false));
    if (place < lastReplyEnd) strikes.push_back(cutAt(place, true));
  }
  return strikes;
}

Strikes cutsInEachFrame(std::size_t from, std::size_t (*to)(std::size_t frame)) {
  Strikes all;
  const auto starts = frameStarts();
  for (std::size_t frame = 0; frame < rightFrames().size(); ++frame) {
    const Strikes some = cutsBetween(starts[frame] + from, to(frame));
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

Strikes cutBetweenFrames() {
  return cutsInEachFrame(0, [](std::size_t frame) { return frameStarts()[frame] + 1; });
}
Strikes cutInAHeader() {
  return cutsInEachFrame(
      1, [](std::size_t frame) { return frameStarts()[frame] + kFrameHeaderBytes; });
}
Strikes cutInABody() {
  return cutsInEachFrame(kFrameHeaderBytes,
                         [](std::size_t frame) { return frameStarts()[frame + 1]; });
}

Strikes slowWithinTheDeadline() {
  return {{"a byte at a time",
           [](const ChannelServer& server) {
             for (std::uint32_t number = 1; number <= kReplies; ++number) {
               server.wire().dribble(server.own(rightReply(number)), 0);
               if (number < kReplies) server.readFrame();
             }
             server.wire().dribble(server.own(end(kReplies)), 0);
           },
           "0", kReplies}};
}

// --- What is no frame, or no message

// Says the first reply and then, asked for more, these bytes.
Strike behindTheFirst(const std::string& what, std::function<std::string(const ChannelServer&)> say,
                      const std::string& result) {
  return {what,
          [say = std::move(say)](const ChannelServer& server) {
            server.say(rightReply(1));
            server.readFrame();
            server.wire().send(say(server));
            server.wire().stall();
          },
          result, 1};
}

Strike oddSecond(const std::string& what, void (*spoil)(Frame&), const std::string& result) {
  return behindTheFirst(
      what,
      [spoil](const ChannelServer& server) {
        Frame frame = rightReply(2);
        spoil(frame);
        return server.own(frame);
      },
      result);
}

Strikes garbageForAFrame() {
  Strikes strikes;
  for (const std::string& bytes :
       {httpAnswer("{}"), std::string(200, '\0'), std::string(200, '\xff'),
        "SSH-2.0-OpenSSH_9.2p1 Debian-2\r\n" + std::string(40, 'x')}) {
    strikes.push_back(behindTheFirst(
        bytes, [bytes](const ChannelServer&) { return bytes; }, code(6106)));
    strikes.push_back({"at once: " + bytes,
                       [bytes](const ChannelServer& server) {
                         server.wire().send(bytes);
                         server.wire().stall();
                       },
                       code(6106), 0});
  }
  return strikes;
}

Strikes garbageInAHeader() {
  return {
      oddSecond(
          "magic", [](Frame& frame) { frame.magic = "ORMD"; }, code(6106)),
      oddSecond(
          "version", [](Frame& frame) { frame.version = 2; }, code(6106)),
      oddSecond(
          "kind 0", [](Frame& frame) { frame.kind = 0; }, code(6106)),
      oddSecond(
          "kind 5", [](Frame& frame) { frame.kind = 5; }, code(6106)),
      oddSecond(
          "an agent's kind", [](Frame& frame) { frame.kind = kNextKind; }, code(6106)),
      oddSecond(
          "flags", [](Frame& frame) { frame.flags = 1; }, code(6106)),
      oddSecond(
          "reserved", [](Frame& frame) { frame.reserved = 1; }, code(6106)),
      oddSecond(
          "an end with a body", [](Frame& frame) { frame.kind = kEndKind; }, code(6106)),
  };
}

Strikes garbageInABody() {
  return {
      oddSecond(
          "nothing", [](Frame& frame) { frame.body.clear(); }, "CSM_Exception"),
      oddSecond(
          "zeros", [](Frame& frame) { frame.body.assign(100, '\0'); }, "CSM_Exception"),
      oddSecond(
          "ones", [](Frame& frame) { frame.body.assign(100, '\xff'); }, "CSM_Exception"),
      oddSecond(
          "a text", [](Frame& frame) { frame.body = "{\"objList\":[]}"; }, "CSM_Exception"),
      oddSecond(
          "a byte too many", [](Frame& frame) { frame.body += '\0'; }, code(6110)),
  };
}

Strikes wrongTypeOfTheMessage() {
  return {
      oddSecond(
          "an integer", [](Frame& frame) { frame.body = "\x02\x01\x05"; }, "CSM_Exception"),
      oddSecond(
          "a text", [](Frame& frame) { frame.body = "\x04\x01x"; }, "CSM_Exception"),
      oddSecond(
          "a set", [](Frame& frame) { frame.body[0] = '\x31'; }, "CSM_Exception"),
      oddSecond(
          "an empty sequence", [](Frame& frame) { frame.body.assign("\x30\x00", 2); },
          "CSM_Exception"),
      oddSecond(
          "a text for the error code", [](Frame& frame) { frame.body[2] = '\x04'; },
          "CSM_Exception"),
  };
}

Strikes wrongOrder() {
  return {
      oddSecond(
          "the first again", [](Frame& frame) { frame = rightReply(1); }, code(6108)),
      oddSecond(
          "the third", [](Frame& frame) { frame = rightReply(3); }, code(6108)),
      oddSecond(
          "the end, which counts others", [](Frame& frame) { frame = end(2); }, code(6108)),
      oddSecond(
          "the end too early", [](Frame& frame) { frame = end(0); }, code(6108)),
      {"the second unasked",
       [](const ChannelServer& server) {
         server.wire().send(server.own(rightReply(2)));
         server.wire().stall();
       },
       code(6108), 0},
      {"the end at once", [](const ChannelServer& server) { server.say(end(0)); }, "0", 0},
      {"the end behind the first",
       [](const ChannelServer& server) {
         server.say(rightReply(1));
         server.readFrame();
         server.say(end(1));
       },
       "0", 1},
  };
}

Strike ofOther(const std::string& what, void (*spoil)(Frame&)) {
  return behindTheFirst(
      what,
      [spoil](const ChannelServer& server) {
        Frame frame = frameOf(server.own(rightReply(2)));
        spoil(frame);
        return bytesOf(frame);
      },
      code(6109));
}

Strikes answersToOtherCommands() {
  return {ofOther("id", [](Frame& frame) { ++frame.id; }),
          ofOther("command", [](Frame& frame) { ++frame.command; }),
          ofOther("process", [](Frame& frame) { ++frame.process; })};
}

Strikes tooLarge() {
  const auto announced = [](std::uint32_t length) {
    return [length](const ChannelServer& server) {
      const Frame frame = frameOf(server.own(rightReply(2)));
      return bytesOf(frame, length);
    };
  };
  return {behindTheFirst("a byte above the limit", announced(4097), code(6107)),
          behindTheFirst("the largest length", announced(0xFFFFFFFFu), code(6107)),
          oddSecond(
              "and it comes", [](Frame& frame) { frame.body.resize(4097); }, code(6107))};
}

Strikes serversErrors() {
  return {
      oddSecond(
          "with a reply", [](Frame& frame) { frame.error = 1203; }, code(1203)),
      oddSecond(
          "without a body",
          [](Frame& frame) {
            frame.error = 1203;
            frame.body.clear();
          },
          code(1203)),
      oddSecond(
          "in the end", [](Frame& frame) { frame = end(1, 1203); }, code(1203)),
      {"at once", [](const ChannelServer& server) { server.say(end(0, 1203)); }, code(1203), 0},
  };
}

class Channel : public ChannelMatrix, public testing::WithParamInterface<ChannelFault> {};

TEST_P(Channel, Cell) {
  const Holdings before = settled();
  for (const Strike& bad : GetParam().strikes()) {
    SCOPED_TRACE(bad.what);
    strike(bad.serve, bad.result, bad.repliesKept);
  }
  EXPECT_EQ(settled(), before);
}

INSTANTIATE_TEST_SUITE_P(FaultMatrix, Channel,
                         testing::ValuesIn(std::vector<ChannelFault>{
                             {"cutBetweenFrames", cutBetweenFrames},
                             {"cutInAHeader", cutInAHeader},
                             {"cutInABody", cutInABody},
                             {"slowWithinTheDeadline", slowWithinTheDeadline},
                             {"garbageForAFrame", garbageForAFrame},
                             {"garbageInAHeader", garbageInAHeader},
                             {"garbageInABody", garbageInABody},
                             {"wrongTypeOfTheMessage", wrongTypeOfTheMessage},
                             {"wrongOrder", wrongOrder},
                             {"answersToOtherCommands", answersToOtherCommands},
                             {"tooLarge", tooLarge},
                             {"serversErrors", serversErrors}}),
                         [](const auto& row) { return row.param.name; });

// --- Cells of the connection and of time

class FaultMatrixChannel : public ChannelMatrix {
 protected:
  FaultMatrixChannel() : before_(settled()) {}
  ~FaultMatrixChannel() override {
    reach(peer_.port());
    EXPECT_EQ(settled(), before_);
  }

  // Each query, with that time for a frame, ends when it is over.
  void strikeInTime(int deadlineMs, const Serve& serve, std::uint32_t repliesKept) {
    reach(peer_.port(), kLongMs, deadlineMs);
    const auto took = timeOf([&] { strike(serve, code(6104), repliesKept); });
    EXPECT_GE(took.count(), deadlineMs * static_cast<int>(queries().size()) * 9 / 10);
  }
  void stallBehind(std::size_t place, int deadlineMs) {
    SCOPED_TRACE(place);
    strikeInTime(
        deadlineMs,
        [place](const ChannelServer& server) {
          server.play(rightFrames(), place);
          server.wire().stall();
        },
        wholeRepliesBefore(place));
  }
  void expectEach(const std::string& result) {
    for (const Query& query : queries()) EXPECT_EQ(query.call(), ended(result, 0)) << query.name;
  }

 private:
  const Holdings before_;
};

TEST_F(FaultMatrixChannel, Refused) { expectEach(code(6102)); }

TEST_F(FaultMatrixChannel, StalledInTheConnecting) {
  const DeafPort deaf;
  reach(deaf.port(), kShortMs);
  const auto took = timeOf([&] { expectEach(code(6103)); });
  EXPECT_GE(took.count(), kShortMs * 2 * 9 / 10);
}

TEST_F(FaultMatrixChannel, StalledBeforeTheFirstFrame) { stallBehind(0, kShortMs); }

TEST_F(FaultMatrixChannel, StalledInAHeader) {
  stallBehind(10, kShortMs);
  stallBehind(frameStarts()[1] + 10, kLeisurelyMs);
}

TEST_F(FaultMatrixChannel, StalledInABody) {
  stallBehind(frameStarts()[1] - 1, kShortMs);
  stallBehind(frameStarts()[2] + kFrameHeaderBytes, kLeisurelyMs);
}

TEST_F(FaultMatrixChannel, StalledBetweenFrames) { stallBehind(frameStarts()[1], kLeisurelyMs); }

TEST_F(FaultMatrixChannel, StalledBeforeTheEnd) { stallBehind(frameStarts()[3], kLeisurelyMs); }

// Each byte comes well in time, the frame does not.
TEST_F(FaultMatrixChannel, SlowBeyondTheDeadline) {
  strikeInTime(
      kShortMs,
      [](const ChannelServer& server) {
        server.wire().dribble(server.own(rightReply(1)), 10);
        server.wire().stall();
      },
      0);
}

TEST_F(FaultMatrixChannel, TooManyFrames) {
  reach(peer_.port(), kLongMs, kLongMs, 2);
  strike(
      [](const ChannelServer& server) {
        server.play(rightFrames());
        server.wire().stall();
      },
      code(6111), 2);
}

TEST_F(FaultMatrixChannel, GoneAndBack) {
  for (int round = 0; round < 3; ++round) {
    expectWhole();
    peer_.go();
    expectEach(code(6102));
  }
  expectWhole();
}

}  // namespace
}  // namespace emf::faults
