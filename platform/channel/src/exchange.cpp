#include "exchange.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <memory>
#include <utility>

#include "failure.h"
#include "orma/channel/channel_error.h"
#include "tcp_stream.h"

namespace orma::channel {
namespace {

// The failures that are no answer of the server.
constexpr unsigned long kUnreached[] = {kRefused, kConnectTimeout, kReceiveTimeout, kClosed,
                                        kSystem};

std::uint32_t nextCommandId() {
  static std::atomic<std::uint32_t> last{0};
  return ++last;
}

Request makeRequest(const Command& command, const AsnType& body, AsnTagging tagging) {
  AsnBuf buffer(tagging);
  body.BEnc(buffer, NIClass_EncodingFormat_BER);
  Request request;
  request.process = command.destination.process;
  request.command = command.code;
  request.id = nextCommandId();
  request.flowControl = command.flowControl;
  request.priority = command.priority;
  request.body.assign(buffer.data(), buffer.data() + buffer.size());
  return request;
}

Limits makeLimits(const Command& command, const Settings& settings) {
  const std::chrono::milliseconds own = std::chrono::seconds(std::max(1, command.timeoutSeconds));
  const bool configured = settings.receiveTimeout.count() > 0;
  return {configured ? settings.receiveTimeout : own, settings.maxFrameBytes, settings.maxFrames};
}

FrameExchange::Connect connector(const CProcID& destination, const Settings& settings) {
  return [destination, settings](unsigned long& error) -> std::unique_ptr<ByteStream> {
    const bool known = destination.process == settings.process && destination.instance == 0;
    if (!known || settings.host.empty() || settings.port == 0) {
      error = kNoAddress;
      return nullptr;
    }
    const Deadline deadline(settings.connectTimeout);
    return TcpStream::connect(settings.host, settings.port, deadline, error);
  };
}

FrameExchange::Report reporter(const Command& command, const Settings& settings) {
  const bool toFaultServer = command.destination.process == settings.process;
  std::string peer = "process " + std::to_string(command.destination.process);
  if (toFaultServer) peer = "fault server " + settings.host + ":" + std::to_string(settings.port);
  return [peer = std::move(peer), code = command.code](unsigned long error) {
    traceFailure(peer, code, error);
  };
}

}  // namespace

Exchange::Exchange(const Command& command, const AsnType& body, const Settings& settings)
    : tagging_(settings.tagging),
      frames_(makeRequest(command, body, settings.tagging), makeLimits(command, settings),
              connector(command.destination, settings), reporter(command, settings)) {}

// A caller may leave before the end, also by an exception that a message raised.
Exchange::~Exchange() {
  if (!counted_) return;
  if (frames_.error() != kNone) {
    countFailure();
  } else if (answered_) {
    counted_->arrived(metrics::Outcome::kAnswered);
  }
}

bool Exchange::send() {
  if (!counted_) counted_.emplace(metrics::OutsideService::kFaultServer);
  const bool sent = frames_.send();
  if (!sent) countFailure();
  return sent;
}

bool Exchange::receive(unsigned long& errorCode, AsnType& reply) {
  switch (receiveFrame(reply)) {
    case FrameExchange::Step::Frame:
      answered_ = true;
      errorCode = frames_.frame().error;
      return true;
    case FrameExchange::Step::Over:
      if (counted_) counted_->arrived(metrics::Outcome::kAnswered);
      errorCode = kNone;
      return false;
    case FrameExchange::Step::Failed:
      countFailure();
      break;
  }
  errorCode = frames_.error();
  return false;
}

FrameExchange::Step Exchange::receiveFrame(AsnType& reply) {
  const auto step = frames_.receive();
  return step == FrameExchange::Step::Frame && !decode(reply) ? FrameExchange::Step::Failed : step;
}

void Exchange::countFailure() {
  if (!counted_ || frames_.error() == kNone) return;
  if (frames_.error() == kNoAddress) return counted_->cancel();
  const bool unreached = std::find(std::begin(kUnreached), std::end(kUnreached), frames_.error()) !=
                         std::end(kUnreached);
  counted_->arrived(unreached ? metrics::Outcome::kUnreached : metrics::Outcome::kRefused);
}

bool Exchange::decode(AsnType& reply) {
  const ReceivedFrame& frame = frames_.frame();
  AsnBuf buffer(frame.body, frame.size, tagging_);
  unsigned long count = 0;
  try {
    reply.BDec(buffer, count, NIClass_EncodingFormat_BER);
  } catch (...) {
    frames_.fail(kUndecodable);
    throw;
  }
  // A list that ends within a length only sets the flag, and bytes behind the message are no frame
  // of this release either.
  const bool whole = !buffer.readError() && buffer.atEnd();
  if (!whole) frames_.fail(kUndecodable);
  return whole;
}

}  // namespace orma::channel
