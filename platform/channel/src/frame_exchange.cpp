#include "frame_exchange.h"

#include <utility>

#include "orma/channel/channel_error.h"

namespace orma::channel {

FrameExchange::FrameExchange(Request request, const Limits& limits, Connect connect, Report report)
    : request_(std::move(request)),
      limits_(limits),
      connect_(std::move(connect)),
      report_(std::move(report)),
      reader_(limits.maxFrameBytes) {}

bool FrameExchange::send() {
  if (state_ != State::Built) return false;
  if (request_.body.size() > limits_.maxFrameBytes) {
    fail(kTooLarge);
    return false;
  }
  unsigned long error = 0;
  stream_ = connect_(error);
  if (!stream_) {
    fail(error);
    return false;
  }
  state_ = State::Open;
  error = sendFrame(FrameKind::Command, 0, request_.body);
  request_.body = {};
  return error == 0;
}

void FrameExchange::askNext() {
  if (state_ != State::Open || !request_.flowControl || asked_ > received_) return;
  asked_ = received_ + 1;
  sendFrame(FrameKind::Next, asked_, {});
}

// A peer that has closed may have said why before: then the failure is left to the next receive,
// which reads what there is.
unsigned long FrameExchange::sendFrame(FrameKind kind, std::uint32_t number,
                                       const std::vector<unsigned char>& body) {
  FrameHeader header;
  header.kind = kind;
  header.flags = kind == FrameKind::Command && request_.flowControl ? kFlowControl : 0;
  header.process = request_.process;
  header.command = request_.command;
  header.id = request_.id;
  header.number = number;
  header.priority = request_.priority;
  header.length = static_cast<std::uint32_t>(body.size());
  const Deadline deadline(limits_.frameTimeout);
  const HeaderBytes bytes = encodeHeader(header);
  unsigned long error = stream_->send(bytes.data(), bytes.size(), deadline);
  if (error == 0 && !body.empty()) error = stream_->send(body.data(), body.size(), deadline);
  if (error != 0 && error != kClosed) fail(error);
  return error;
}

FrameExchange::Step FrameExchange::receive() {
  if (state_ == State::Over) return Step::Over;
  if (state_ == State::Built) return failed(kNotSent);
  if (state_ == State::Failed) return Step::Failed;
  const Deadline deadline(limits_.frameTimeout);
  FrameHeader header;
  unsigned long error = reader_.readHeader(*stream_, deadline, header);
  if (error == 0) error = judge(header);
  if (error != 0) return failed(error);
  if (header.kind == FrameKind::End) return end(header);
  error = reader_.readBody(*stream_, deadline, header.length);
  return error == 0 ? deliver(header) : failed(error);
}

unsigned long FrameExchange::judge(const FrameHeader& header) const {
  const bool known = header.kind == FrameKind::Reply || header.kind == FrameKind::End;
  if (!known || header.flags != 0) return kMalformed;
  if (header.kind == FrameKind::End && header.length != 0) return kMalformed;
  const bool ours = header.process == request_.process && header.command == request_.command &&
                    header.id == request_.id;
  return ours ? judgeNumber(header) : kOtherCommand;
}

// The end carries the number of the frames before it, so that a lost one does not go unnoticed.
unsigned long FrameExchange::judgeNumber(const FrameHeader& header) const {
  const bool isEnd = header.kind == FrameKind::End;
  if (header.number != (isEnd ? received_ : received_ + 1)) return kWrongOrder;
  if (isEnd) return 0;
  if (request_.flowControl && header.number > asked_) return kWrongOrder;
  return header.number > limits_.maxFrames ? kTooManyFrames : kNone;
}

FrameExchange::Step FrameExchange::end(const FrameHeader& header) {
  if (header.error != 0) return failed(header.error);
  state_ = State::Over;
  stream_.reset();
  return Step::Over;
}

FrameExchange::Step FrameExchange::deliver(const FrameHeader& header) {
  // An error without a body leaves nothing to decode.
  if (header.error != 0 && header.length == 0) return failed(header.error);
  ++received_;
  frame_ = {header.error, reader_.body(), header.length};
  return Step::Frame;
}

void FrameExchange::fail(unsigned long error) {
  if (state_ == State::Over || state_ == State::Failed) return;
  state_ = State::Failed;
  error_ = error;
  stream_.reset();
  if (report_) report_(error);
}

FrameExchange::Step FrameExchange::failed(unsigned long error) {
  fail(error);
  return Step::Failed;
}

}  // namespace orma::channel
