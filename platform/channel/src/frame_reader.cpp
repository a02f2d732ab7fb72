#include "frame_reader.h"

#include <algorithm>

#include "orma/channel/channel_error.h"

namespace orma::channel {
namespace {

constexpr std::size_t kFirstBufferBytes = 64 * 1024;

}  // namespace

unsigned long FrameReader::readHeader(ByteStream& stream, const Deadline& deadline,
                                      FrameHeader& header) {
  HeaderBytes bytes;
  for (std::size_t have = 0; have < bytes.size();) {
    std::size_t received = 0;
    const unsigned long error =
        stream.receive(bytes.data() + have, bytes.size() - have, received, deadline);
    if (error != 0) return error;
    have += received;
  }
  const std::optional<FrameHeader> decoded = decodeHeader(bytes);
  if (!decoded) return kMalformed;
  if (decoded->length > maxBodyBytes_) return kTooLarge;
  header = *decoded;
  return 0;
}

unsigned long FrameReader::readBody(ByteStream& stream, const Deadline& deadline,
                                    std::size_t length) {
  for (std::size_t have = 0; have < length;) {
    if (have == buffer_.size()) {
      buffer_.resize(std::min(length, std::max(kFirstBufferBytes, 2 * have)));
    }
    std::size_t received = 0;
    const std::size_t room = std::min(length, buffer_.size()) - have;
    const unsigned long error = stream.receive(buffer_.data() + have, room, received, deadline);
    if (error != 0) return error;
    have += received;
  }
  return 0;
}

}  // namespace orma::channel
