// Frames of the command channel (docs/formats/channel.md) on a bare socket, for benchmarks.
//
//   Socket socket = connectedTo(port);
//   sendFrame(socket.get(), FrameKind::kCommand, 0, request);
//
// Thread-safety: thread-compatible. Failures are std::runtime_error.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <string>

// Owns a descriptor.
class Socket {
 public:
  explicit Socket(int descriptor) : descriptor_(descriptor) {}
  Socket(Socket&& other) noexcept : descriptor_(other.descriptor_) { other.descriptor_ = -1; }
  Socket& operator=(Socket&&) = delete;
  ~Socket() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

enum class FrameKind : unsigned char { kCommand = 1, kReply = 2, kNext = 3, kEnd = 4 };

struct FrameHead {
  FrameKind kind = FrameKind::kCommand;
  bool flowControl = false;
  std::uint32_t command = 2158;
  std::uint32_t id = 1;
};

// To 127.0.0.1.
Socket connectedTo(unsigned short port);

void sendFrame(int socket, FrameKind kind, std::uint32_t number, const std::string& body,
               const FrameHead& exchange = {});
// Replaces `body`.
FrameHead receiveFrame(int socket, std::string& body);
