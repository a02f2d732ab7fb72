#include "fault_exchange.h"

#include <algorithm>
#include <cstdio>
#include <exception>

namespace ormasim {
namespace {

constexpr std::size_t kMostRequestBytes = 1u << 20;
constexpr std::uint16_t kFlowControl = 1;
// How long an agent may take over a frame.
constexpr auto kIdleTimeout = std::chrono::seconds(300);
constexpr char kGarbage[] = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n\xFF\xFE\x80{";

}  // namespace

bool FaultExchange::readCommand() {
  return readFrame(command_, request_) && command_.kind == kCommandFrame && command_.number == 0;
}

void FaultExchange::answer(Database& database, const Fault* fault) {
  fault_ = fault;
  if (fault != nullptr && fault->action == FaultAction::Refuse) return;
  const bool known = command_.command == kAllAlarms || command_.command == kAlarmsSince;
  if (!known || command_.process != kFaultServerProcess) return end(kUnknownCommand);
  std::optional<std::int64_t> since;
  try {
    since = readRequest(command_.command, request_, options_.tagging);
  } catch (const BadMessage& problem) {
    std::fprintf(stderr, "ormasim: command %u: %s\n", command_.command, problem.what());
    return end(kBadRequest);
  }
  AlarmFrames frames(database, options_, since);
  sendAll(frames);
}

// A frame is made while the agent still works on the one before.
void FaultExchange::sendAll(AlarmFrames& frames) {
  while (!frames.atEnd()) {
    const std::int64_t number = replies_ + 1;
    const std::string frame = frameOf(number, frames.next(spoilingOf(number)));
    if (number > 1 && !waitForNext(number)) return;
    if (!sendReply(frame)) return;
  }
  end(0);
}

bool FaultExchange::waitForNext(std::int64_t number) {
  if ((command_.flags & kFlowControl) == 0) return true;
  ChannelHeader next;
  std::string body;
  return readFrame(next, body) && next.kind == kNextFrame && next.id == command_.id &&
         next.number == number && body.empty();
}

bool FaultExchange::concerns(std::int64_t number, FaultAction action) const {
  return fault_ != nullptr && fault_->action == action &&
         (fault_->frame == 0 || fault_->frame == static_cast<std::uint64_t>(number));
}

FrameSpoiling FaultExchange::spoilingOf(std::int64_t number) const {
  FrameSpoiling spoiling;
  if (concerns(number, FaultAction::Error)) spoiling.errorCode = fault_->code;
  spoiling.empty = concerns(number, FaultAction::Empty);
  spoiling.bare = concerns(number, FaultAction::Bare);
  return spoiling;
}

std::string FaultExchange::frameOf(std::int64_t number, std::string_view body) const {
  ChannelHeader header;
  header.kind = kReplyFrame;
  header.command = command_.command;
  header.id = command_.id + (concerns(number, FaultAction::OtherCommand) ? 1 : 0);
  const std::int64_t shown = number + (concerns(number, FaultAction::WrongOrder) ? 1 : 0);
  header.number = static_cast<std::uint32_t>(shown);
  return channelFrame(header, body);
}

bool FaultExchange::sendReply(const std::string& frame) {
  const std::int64_t number = replies_ + 1;
  if (const std::optional<bool> goOn = actInPlace(number, frame)) return *goOn;
  replies_ = number;
  if (concerns(number + 1, FaultAction::Repeat)) before_ = frame;
  return send(frame);
}

// What a script puts in the place of the frame: whether the exchange goes on behind it. Nothing
// when the frame is to be sent.
std::optional<bool> FaultExchange::actInPlace(std::int64_t number, const std::string& frame) {
  if (concerns(number, FaultAction::Repeat) && !before_.empty()) {
    replies_ = number;
    return send(before_);
  }
  if (concerns(number, FaultAction::Cut)) {
    send(std::string_view(frame).substr(0, frame.size() / 2));
    return false;
  }
  if (concerns(number, FaultAction::Garbage)) {
    send({kGarbage, sizeof kGarbage - 1});
    connection_.stayIdleUntilClosed();
    return false;
  }
  if (concerns(number, FaultAction::Reject)) {
    end(fault_->code);
    return false;
  }
  if (concerns(number, FaultAction::Stall)) {
    if (fault_->time && connection_.stayIdle(*fault_->time)) return std::nullopt;
    if (!fault_->time) connection_.stayIdleUntilClosed();
    return false;
  }
  return std::nullopt;
}

// Closing with bytes unread would take the end frame back from an agent that has not read it yet.
void FaultExchange::end(std::uint32_t error) {
  ChannelHeader header;
  header.kind = kEndFrame;
  header.process = command_.process;
  header.command = command_.command;
  header.id = command_.id;
  header.number = static_cast<std::uint32_t>(replies_);
  header.error = error;
  if (!send(channelFrame(header, {}))) return;
  connection_.finishSending();
  char scrap[512];
  while (connection_.read(scrap, sizeof scrap) > 0) {
  }
}

bool FaultExchange::readFrame(ChannelHeader& header, std::string& body) {
  const auto never = [] { return false; };
  std::array<unsigned char, kChannelHeaderBytes> bytes{};
  if (!connection_.waitForRequest(kIdleTimeout, never) ||
      !read(reinterpret_cast<char*>(bytes.data()), bytes.size())) {
    return false;
  }
  const auto read = channelHeader(bytes);
  if (!read || read->length > kMostRequestBytes) return false;
  header = *read;
  body.resize(header.length);
  return this->read(body.data(), body.size());
}

bool FaultExchange::read(char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t received = connection_.read(bytes, size);
    if (received <= 0) return false;
    bytes += received;
    size -= static_cast<std::size_t>(received);
  }
  return true;
}

bool FaultExchange::send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = connection_.write(bytes.data(), bytes.size());
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

}  // namespace ormasim
