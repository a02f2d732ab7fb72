// One command and its reply frames, as the protocol sees them: what is sent, what is accepted, and
// in which state the exchange is. Bodies are bytes here.
//
// Thread-safety: thread-compatible. Failure: by Step and error code (channel_error.h).
//
//   FrameExchange exchange(request, limits, connect);
//   exchange.send();
//   while (exchange.receive() == FrameExchange::Step::Frame) { use(exchange.frame());
//   exchange.askNext(); }
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "byte_stream.h"
#include "frame_header.h"
#include "frame_reader.h"

namespace orma::channel {

// What is asked of whom.
struct Request {
  std::uint32_t process = 0;
  std::uint32_t command = 0;
  std::uint32_t id = 0;
  bool flowControl = false;
  std::uint16_t priority = 0;
  std::vector<unsigned char> body;
};

struct Limits {
  std::chrono::milliseconds frameTimeout;
  std::size_t maxFrameBytes = 0;
  std::uint64_t maxFrames = 0;
};

struct ReceivedFrame {
  unsigned long error = 0;  // the server's
  const unsigned char* body = nullptr;
  std::size_t size = 0;
};

class FrameExchange {
 public:
  // Makes the connection; null with an error code when there is none to be had.
  using Connect = std::function<std::unique_ptr<ByteStream>(unsigned long& error)>;
  // Told of the code with which the exchange has failed, once.
  using Report = std::function<void(unsigned long error)>;

  enum class Step { Frame, Over, Failed };

  FrameExchange(Request request, const Limits& limits, Connect connect, Report report = nullptr);

  bool send();
  Step receive();
  void askNext();

  // After Step::Frame; valid until the next receive.
  const ReceivedFrame& frame() const { return frame_; }
  // After Step::Failed.
  unsigned long error() const { return error_; }
  // Ends the exchange with that code, unless it has ended before.
  void fail(unsigned long error);

 private:
  enum class State { Built, Open, Over, Failed };

  unsigned long sendFrame(FrameKind kind, std::uint32_t number,
                          const std::vector<unsigned char>& body);
  unsigned long judge(const FrameHeader& header) const;
  unsigned long judgeNumber(const FrameHeader& header) const;
  Step end(const FrameHeader& header);
  Step deliver(const FrameHeader& header);
  Step failed(unsigned long error);

  Request request_;
  const Limits limits_;
  const Connect connect_;
  const Report report_;
  std::unique_ptr<ByteStream> stream_;
  FrameReader reader_;
  ReceivedFrame frame_;
  State state_ = State::Built;
  unsigned long error_ = 0;
  std::uint32_t received_ = 0;  // reply frames so far
  std::uint32_t asked_ = 1;     // the highest number asked for; the command asks for the first
};

}  // namespace orma::channel
