// The fixed header of a frame on the wire (docs/formats/channel.md).
//
// Thread-safety: thread-compatible. Failure: decodeHeader gives nothing.
//
//   const HeaderBytes bytes = encodeHeader(header);
//   if (const auto header = decodeHeader(bytes)) use(*header);
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace orma::channel {

constexpr std::size_t kHeaderBytes = 36;
constexpr std::uint32_t kMagic = 0x4F524D43;  // "ORMC"
constexpr std::uint8_t kVersion = 1;

enum class FrameKind : std::uint8_t { Command = 1, Reply = 2, Next = 3, End = 4 };

// Flags of a command.
constexpr std::uint16_t kFlowControl = 1;

struct FrameHeader {
  FrameKind kind = FrameKind::Command;
  std::uint16_t flags = 0;
  std::uint32_t process = 0;
  std::uint32_t command = 0;
  std::uint32_t id = 0;      // of this one command, chosen by who sends it
  std::uint32_t number = 0;  // replies count from 1; what it means for others is in the document
  std::uint32_t error = 0;
  std::uint16_t priority = 0;
  std::uint32_t length = 0;  // bytes of the body
};

using HeaderBytes = std::array<unsigned char, kHeaderBytes>;

HeaderBytes encodeHeader(const FrameHeader& header);

// Nothing when the magic, the version, the kind, a flag or the reserved field is not one of this
// release.
std::optional<FrameHeader> decodeHeader(const HeaderBytes& bytes);

}  // namespace orma::channel
