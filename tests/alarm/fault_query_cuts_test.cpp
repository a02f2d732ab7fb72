// A hundred thousand alarms, with the stream cut at a hundred places: whatever ends the exchange,
// the records of the frames before it stay, the command is destroyed once and nothing is leaked
// (the address sanitizer's build of this test says so).
#include <cmath>

#include "emfalminterface.h"
#include "message_walk.h"
#include "platform_test.h"
#include "processexception.h"

namespace emf::test {
namespace {

using emf::doubles::platform;

constexpr int kFrames = 100;
constexpr int kItemsPerFrame = 1000;

// Each frame's bytes: the items' device numbers count up through all frames.
std::vector<std::string> encodedFrames() {
  std::vector<std::string> frames;
  int serial = 0;
  for (int number = 1; number <= kFrames; ++number) {
    AsnSvrToOtherQryResp reply;
    reply.ulFrameTotal = kFrames;
    reply.ulFrameNo = number;
    for (int i = 0; i < kItemsPerFrame; ++i) {
      auto& item = reply.lstItem.add();
      item.ulDevSerialNo = serial++;
      item.strFdn.make().ReSet("NE=1000,FR=1,S=2,CP=3,PP=4");
    }
    frames.push_back(encoded(reply));
  }
  return frames;
}

enum class Cut { Closed, ServerError, Undecodable, NoMemory };
constexpr int kCutKinds = 4;

class FaultQueryCuts : public emf::doubles::PlatformTest {
 protected:
  static void SetUpTestSuite() { frames_ = encodedFrames(); }
  static void TearDownTestSuite() { frames_.clear(); }
  FaultQueryCuts() { platform().log.absent(); }

  // The exchange comes to its end inside the frame of that alarm.
  static void cutAt(std::size_t place, Cut cut) {
    const std::size_t frame = place / kItemsPerFrame;
    for (std::size_t i = 0; i < frame; ++i) platform().channel.bytes(frames_[i]);
    switch (cut) {
      case Cut::Closed:
        platform().channel.fails(6105);
        break;
      case Cut::ServerError:
        platform().channel.bytes(frames_[frame], 17);
        break;
      case Cut::Undecodable:
        platform().channel.bytes(frames_[frame].substr(
            0, frames_[frame].size() * (place % kItemsPerFrame) / kItemsPerFrame));
        break;
      case Cut::NoMemory:
        platform().channel.receiveThrows([] { throw std::bad_alloc(); });
        break;
    }
  }

  // What left the query: the error code, or a word.
  static std::string outcome(std::list<FaultRecord>& records) {
    try {
      return std::to_string(EMFAlarmI::getAllAlarms(records));
    } catch (ProcessException& failure) {
      return std::to_string(failure.errCode);
    } catch (CSM_Exception* thrown) {
      const std::unique_ptr<CSM_Exception> failure(thrown);
      return "undecodable";
    } catch (const std::bad_alloc&) {
      return "no memory";
    }
  }
  static std::string outcomeOf(Cut cut) {
    constexpr const char* kOutcomes[] = {"6105", "17", "undecodable", "no memory"};
    return kOutcomes[static_cast<std::size_t>(cut)];
  }

  static void expectRecordsOf(const std::list<FaultRecord>& records, std::size_t frames) {
    ASSERT_EQ(records.size(), frames * kItemsPerFrame);
    std::int64_t serial = 0;
    for (const FaultRecord& record : records) {
      if (record.devSerialNo != serial++) ADD_FAILURE() << record.devSerialNo;
    }
  }

  static inline std::vector<std::string> frames_;
};

TEST_F(FaultQueryCuts, UncutStreamComesWhole) {
  for (const std::string& frame : frames_) platform().channel.bytes(frame);
  std::list<FaultRecord> records;
  EXPECT_EQ(outcome(records), "0");
  expectRecordsOf(records, kFrames);
  EXPECT_EQ(platform().channel.callsOf("NeedNextRsp"), kFrames - 1);
  EXPECT_EQ(platform().channel.callsOf("Destroy"), 1);
}

// A place for each of a hundred steps from the first alarm to the last, the steps growing by the
// same factor: near the start lie as many as near the end, and the test stays short.
TEST_F(FaultQueryCuts, WhatCameBeforeACutStays) {
  constexpr int kPlaces = 100;
  for (int i = 0; i < kPlaces; ++i) {
    const auto place =
        static_cast<std::size_t>(std::pow(kFrames * kItemsPerFrame - 1, i / (kPlaces - 1.0)));
    const std::size_t frame = place / kItemsPerFrame;
    const Cut cut = static_cast<Cut>(i % kCutKinds);
    platform().channel.reset();
    cutAt(place, cut);
    std::list<FaultRecord> records;
    EXPECT_EQ(outcome(records), outcomeOf(cut)) << place;
    expectRecordsOf(records, frame);
    EXPECT_EQ(platform().channel.callsOf("Destroy"), 1) << place;
    EXPECT_EQ(platform().channel.callsOf("Send"), 1) << place;
    EXPECT_EQ(platform().channel.callsOf("Receive"), static_cast<int>(frame) + 1) << place;
  }
}

}  // namespace
}  // namespace emf::test
