// A cell of the fault server: the alarm queries against a peer that plays one exchange, well or
// badly.
//
// Thread-safety: thread-compatible.
#pragma once

#include <functional>
#include <vector>

#include "fault_world.h"
#include "frames.h"
#include "outcome.h"
#include "peer.h"

namespace emf::faults {

// The server's end of one command.
class ChannelServer {
 public:
  explicit ChannelServer(const Wire& wire) : wire_(wire), command_(readFrame()) {}

  const Wire& wire() const { return wire_; }
  Frame readFrame() const;
  // The bytes of a frame of this exchange.
  std::string own(Frame frame) const;
  void say(const Frame& frame) const { wire_.send(own(frame)); }
  // Says the frames in their order, each reply but the last once it has been asked for more, and no
  // byte beyond `limit`. The bytes said.
  std::size_t play(const std::vector<Frame>& frames,
                   std::size_t limit = static_cast<std::size_t>(-1)) const;

 private:
  const Wire& wire_;
  const Frame command_;
};

constexpr std::uint32_t kReplies = 3;

// The reply frame of that number, from 1, of a right exchange, and the record it becomes.
Frame rightReply(std::uint32_t number);
std::string rightRecord(std::uint32_t number);
// All of them and the end.
std::vector<Frame> rightFrames();

class ChannelMatrix : public FaultWorld {
 protected:
  static constexpr int kLongMs = 60000;
  static constexpr int kMaxFrameBytes = 4096;
  using Serve = std::function<void(const ChannelServer&)>;

  ChannelMatrix() { reach(peer_.port()); }

  // The fault server at that port from now on, with these times.
  void reach(int port, int connectMs = kLongMs, int receiveMs = kLongMs,
             int maxFrames = 1000) const;
  void serve(Serve serve);
  // Each query against that server, then each against a right one, which is whole.
  void strike(const Serve& serve, const std::string& result, std::uint32_t repliesKept);
  void expectWhole();
  // The outcome of a query that ended so behind that many replies.
  static Outcome ended(const std::string& result, std::uint32_t replies);
  // What the process holds when both queries have run.
  Holdings settled();
  // The queries and their names.
  struct Query {
    const char* name;
    Outcome (*call)();
  };
  static const std::vector<Query>& queries();

  Peer peer_;

 private:
  const std::size_t threadsAtStart_ = Holdings::now().threads;
};

}  // namespace emf::faults
