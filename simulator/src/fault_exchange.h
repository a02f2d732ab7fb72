// The fault server's side of one connection: a command, and the frames that answer it.
//
// Thread-safety: thread-compatible. Failure: the connection is closed; what the agent is told is
// in the end frame.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "alarm_frames.h"
#include "channel_frame.h"
#include "connection.h"
#include "fault_script.h"
#include "sqlite.h"

namespace ormasim {

// The error codes of the fault server.
constexpr std::uint32_t kUnknownCommand = 1201;
constexpr std::uint32_t kBadRequest = 1202;
constexpr std::uint32_t kInventoryFailed = 1203;

class FaultExchange {
 public:
  FaultExchange(Connection& connection, const FrameOptions& options)
      : connection_(connection), options_(options) {}

  // Reads the command; false when there is none.
  bool readCommand();
  // Answers it to the end. `fault` is what a script makes of it; null: nothing.
  void answer(Database& database, const Fault* fault);
  // Ends it behind the replies so far.
  void end(std::uint32_t error);

 private:
  bool readFrame(ChannelHeader& header, std::string& body);
  bool read(char* bytes, std::size_t size);
  bool send(std::string_view bytes);

  void sendAll(AlarmFrames& frames);
  bool waitForNext(std::int64_t number);
  bool concerns(std::int64_t number, FaultAction action) const;
  FrameSpoiling spoilingOf(std::int64_t number) const;
  std::string frameOf(std::int64_t number, std::string_view body) const;
  bool sendReply(const std::string& frame);
  std::optional<bool> actInPlace(std::int64_t number, const std::string& frame);

  Connection& connection_;
  const FrameOptions options_;
  const Fault* fault_ = nullptr;
  ChannelHeader command_;
  std::int64_t replies_ = 0;
  std::string request_;
  std::string before_;  // the frame before, when a script may repeat it
};

}  // namespace ormasim
