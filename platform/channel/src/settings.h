// The "faultServer" section of one configuration, as the channel reads it.
//
// Thread-safety: immutable.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "orma/asn1/asn_buf.h"

namespace orma {
class Configuration;
}

namespace orma::channel {

struct Settings {
  explicit Settings(const Configuration& configuration);

  std::string host;
  std::uint16_t port;
  std::uint32_t process;
  std::chrono::milliseconds connectTimeout;
  std::chrono::milliseconds receiveTimeout;  // 0: what the command asks for
  std::size_t maxFrameBytes;
  std::uint64_t maxFrames;
  AsnTagging tagging;
};

}  // namespace orma::channel
