#include "failure.h"

#include "orma/channel/channel_error.h"
#include "orma/log/trace.h"

namespace orma::channel {
namespace {

struct FailureRow {
  unsigned long error;
  const char* text;
};

constexpr FailureRow kFailures[] = {
    {kNoAddress,
     "there is no address for it; check faultServer.host, faultServer.port and "
     "faultServer.process"},
    {kRefused,
     "the connection was refused; check that the server runs and that faultServer.host and "
     "faultServer.port name it"},
    {kConnectTimeout,
     "no connection in time; check that the server is reachable, or raise "
     "faultServer.connectTimeoutMs"},
    {kReceiveTimeout,
     "no whole frame in time; check the server's load, or raise faultServer.receiveTimeoutMs"},
    {kClosed, "the connection was closed before the end of the exchange; check the server's log"},
    {kMalformed,
     "what came is no frame of this release; check that faultServer.port is the fault server's"},
    {kTooLarge, "a frame is larger than faultServer.maxFrameBytes; raise it if that is meant"},
    {kWrongOrder, "a frame was repeated, left out or sent unasked; check the server's release"},
    {kOtherCommand, "a frame answers another command; check the server's release"},
    {kUndecodable,
     "a frame's body is not the message that was expected; check faultServer.tagging and the "
     "server's release"},
    {kTooManyFrames, "there are more frames than faultServer.maxFrames; raise it if that is meant"},
    {kNotSent, "nothing was sent before the first frame was waited for"},
    {kSystem, "the network failed; check the system's log"},
};

}  // namespace

std::string failureText(unsigned long error) {
  for (const FailureRow& row : kFailures) {
    if (row.error == error) return row.text;
  }
  return "the server gave the error code " + std::to_string(error) + "; check the server's log";
}

void traceFailure(const std::string& peer, unsigned long command, unsigned long error) {
  NS_CORBA::SourceRecord& source = *NS_CORBA::GetTss().operator->();
  source.file = "asnchannel";
  source.function = "unknown";
  source.line = __LINE__;
  const std::string text = "Command " + std::to_string(command) + " to " + peer +
                           " failed with code " + std::to_string(error) + ": " + failureText(error);
  NS_CORBA::TaDebug(0, text.c_str());
}

}  // namespace orma::channel
