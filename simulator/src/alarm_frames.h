// The reply messages of one command: the alarms that stood when it came, some to a frame.
//
//   AlarmFrames frames(database, {1000, Tagging::Implicit}, std::nullopt);
//   while (const auto body = frames.next()) send(*body);
//
// Alarms that are raised later are not part of it; each frame is read when its turn comes, in a
// transaction of its own, so that a slow agent keeps nobody from raising more. Alarms that are
// removed before their turn are missing; the frames stay as many as they were.
//
// Thread-safety: thread-compatible. Failure: SimError.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ber_writer.h"
#include "fault_messages.h"
#include "sqlite.h"

namespace ormasim {

struct FrameOptions {
  std::int64_t items = 1000;  // of a frame
  Tagging tagging = Tagging::Implicit;
};

// What a fault script makes of one frame.
struct FrameSpoiling {
  std::int64_t errorCode = 0;
  bool empty = false;  // leave the items out
  bool bare = false;   // leave their optional fields out
};

class AlarmFrames {
 public:
  AlarmFrames(Database& database, const FrameOptions& options,
              std::optional<std::int64_t> raisedSince);

  std::int64_t total() const { return total_; }
  bool atEnd() const { return sent_ == total_; }
  // The next message. Valid until the next call.
  std::string_view next(const FrameSpoiling& spoiling);

 private:
  void writeItems(std::int64_t through, bool bare);
  AlarmItem item() const;

  const FrameOptions options_;
  Statement pageEnd_;
  Statement rows_;
  BerWriter out_;
  std::int64_t since_;
  std::int64_t through_ = 0;  // the last alarm of all
  std::int64_t last_ = 0;     // the last one sent
  std::int64_t total_ = 0;
  std::int64_t sent_ = 0;
};

}  // namespace ormasim
