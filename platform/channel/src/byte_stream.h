// The bytes of a connection, in both directions.
//
// Thread-safety: thread-compatible. Failure: an error code (channel_error.h), 0 when all is well.
#pragma once

#include <cstddef>

#include "deadline.h"

namespace orma::channel {

class ByteStream {
 public:
  virtual ~ByteStream() = default;

  // All of the bytes.
  virtual unsigned long send(const unsigned char* bytes, std::size_t size,
                             const Deadline& deadline) = 0;
  // As many as are there, at least one and at most `size`; `received` tells.
  virtual unsigned long receive(unsigned char* bytes, std::size_t size, std::size_t& received,
                                const Deadline& deadline) = 0;
};

}  // namespace orma::channel
