#include "channel_fixture.h"

#include <cstring>

#include "emfalminterface.h"
#include "message_walk.h"

namespace emf::faults {
namespace {

constexpr char kChannelCode[] = "ProcessException 61";

}  // namespace

Frame ChannelServer::readFrame() const {
  const std::string header = wire_.read(kFrameHeaderBytes);
  if (header.size() < kFrameHeaderBytes) return Frame();
  std::size_t length = 0;
  for (std::size_t i = 32; i < 36; ++i)
    length = length << 8 | static_cast<unsigned char>(header[i]);
  return frameOf(header + wire_.read(length));
}

std::string ChannelServer::own(Frame frame) const {
  frame.process = command_.process;
  frame.command = command_.command;
  frame.id = command_.id;
  return bytesOf(frame);
}

std::size_t ChannelServer::play(const std::vector<Frame>& frames, std::size_t limit) const {
  std::size_t said = 0;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const std::string bytes = own(frames[i]).substr(0, limit - said);
    if (!wire_.send(bytes)) break;
    said += bytes.size();
    const bool isAskedForMore = i + 1 < frames.size() && frames[i + 1].kind == kReplyKind;
    if (said == limit && bytes.size() < kFrameHeaderBytes + frames[i].body.size()) break;
    if (isAskedForMore) readFrame();
  }
  return said;
}

Frame rightReply(std::uint32_t number) {
  AsnSvrToOtherQryResp message;
  message.ulFrameTotal = static_cast<int>(kReplies);
  message.ulFrameNo = static_cast<int>(number);
  auto& item = message.lstItem.add();
  item.ulDevSerialNo = static_cast<int>(number);
  item.ucSeverity = 2;
  item.faultTime->sYear = 2024;
  item.faultTime->cMonth = 1;
  item.faultTime->cDay = 2;
  item.strFdn.make().ReSet("NE=12");
  item.strPara.ReSet("p");
  return reply(number, emf::test::encoded(message));
}

std::string rightRecord(std::uint32_t number) {
  return std::to_string(number) + "|0|0|0|2|0|0|0|124|0|2|NE=12|p|1";
}

std::vector<Frame> rightFrames() {
  std::vector<Frame> frames;
  for (std::uint32_t number = 1; number <= kReplies; ++number) {
    frames.push_back(rightReply(number));
  }
  frames.push_back(end(kReplies));
  return frames;
}

void ChannelMatrix::reach(int port, int connectMs, int receiveMs, int maxFrames) const {
  Json::Value root;
  Json::Value& server = root["faultServer"];
  server["host"] = "127.0.0.1";
  server["port"] = port;
  server["connectTimeoutMs"] = connectMs;
  server["receiveTimeoutMs"] = receiveMs;
  server["maxFrameBytes"] = kMaxFrameBytes;
  server["maxFrames"] = maxFrames;
  configure(root);
}

void ChannelMatrix::serve(Serve serve) {
  peer_.come([serve = std::move(serve)](const Wire& wire, std::size_t) {
    const ChannelServer server(wire);
    serve(server);
  });
}

Outcome ChannelMatrix::ended(const std::string& result, std::uint32_t replies) {
  Outcome outcome{result, {text(FaultRecord())}};
  for (std::uint32_t number = 1; number <= replies; ++number) {
    outcome.records.push_back(rightRecord(number));
  }
  return outcome;
}

void ChannelMatrix::strike(const Serve& bad, const std::string& result, std::uint32_t repliesKept) {
  for (const Query& query : queries()) {
    SCOPED_TRACE(query.name);
    serve(bad);
    logged();
    Outcome outcome;
    timeOf([&] { outcome = query.call(); });
    EXPECT_EQ(outcome, ended(result, repliesKept));
    // The channel's own failures; a server's that come with a reply are the caller's to tell.
    if (result.compare(0, std::strlen(kChannelCode), kChannelCode) == 0) {
      EXPECT_NE(logged().find("failed with code 61"), std::string::npos);
    }
  }
}

void ChannelMatrix::expectWhole() {
  serve([](const ChannelServer& server) { server.play(rightFrames()); });
  for (const Query& query : queries()) {
    SCOPED_TRACE(query.name);
    EXPECT_EQ(query.call(), ended("0", kReplies));
  }
}

Holdings ChannelMatrix::settled() {
  expectWhole();
  peer_.go();
  const Holdings holdings = {Holdings::now().descriptors, threadsAtStart_};
  expectHoldings(holdings);
  return holdings;
}

const std::vector<ChannelMatrix::Query>& ChannelMatrix::queries() {
  static const std::vector<Query> all = {
      {"EMFAlarmI::getAllAlarms",
       [] { return appended(std::list<FaultRecord>(1), EMFAlarmI::getAllAlarms); }},
      {"EMFAlarmI::getAllEvents",
       [] {
         return appended(std::list<FaultRecord>(1), [](std::list<FaultRecord>& out) {
           return EMFAlarmI::getAllEvents(out, 3600);
         });
       }},
  };
  return all;
}

}  // namespace emf::faults
