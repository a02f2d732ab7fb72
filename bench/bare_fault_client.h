// The least that an exchange with the fault server can do: one socket, no flow control, the bodies
// of the replies as they come. docs/formats/channel.md holds the frames.
//
//   BareFaultClient client(port);
//   for (std::string body; client.next(body);) decode(body);
//
// Thread-safety: thread-compatible. Failures are std::runtime_error.
#pragma once

#include <string>

#include "channel_frames.h"

class BareFaultClient {
 public:
  // Connects to 127.0.0.1 and sends a command without a body.
  explicit BareFaultClient(unsigned short port) : socket_(connectedTo(port)) {
    sendFrame(socket_.get(), FrameKind::kCommand, 0, "");
  }

  // The next reply's body; false at the end.
  bool next(std::string& body) {
    return receiveFrame(socket_.get(), body).kind == FrameKind::kReply;
  }

 private:
  Socket socket_;
};
