// Reads frames from a stream: the header, then the body into one buffer that grows with the bytes
// that have arrived, never with a length that was only announced.
//
// Thread-safety: thread-compatible. Failure: an error code (channel_error.h), 0 when all is well;
// the stream is then somewhere within a frame and of no further use.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "byte_stream.h"
#include "frame_header.h"

namespace orma::channel {

class FrameReader {
 public:
  // A frame whose body is larger is refused on sight of its header.
  explicit FrameReader(std::size_t maxBodyBytes) : maxBodyBytes_(maxBodyBytes) {}

  unsigned long readHeader(ByteStream& stream, const Deadline& deadline, FrameHeader& header);
  // The body of that header's length.
  unsigned long readBody(ByteStream& stream, const Deadline& deadline, std::size_t length);

  // The last body; valid until the next one is read.
  const unsigned char* body() const { return buffer_.data(); }

 private:
  const std::size_t maxBodyBytes_;
  std::vector<unsigned char> buffer_;
};

}  // namespace orma::channel
