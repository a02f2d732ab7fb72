// Frames of the command channel, stated from docs/formats/channel.md.
//
// Thread-safety: thread-compatible.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ormasim {

constexpr std::size_t kChannelHeaderBytes = 36;
constexpr std::uint32_t kFaultServerProcess = 56;

constexpr std::uint8_t kCommandFrame = 1;
constexpr std::uint8_t kReplyFrame = 2;
constexpr std::uint8_t kNextFrame = 3;
constexpr std::uint8_t kEndFrame = 4;

struct ChannelHeader {
  std::uint8_t kind = 0;
  std::uint16_t flags = 0;
  std::uint32_t process = kFaultServerProcess;
  std::uint32_t command = 0;
  std::uint32_t id = 0;
  std::uint32_t number = 0;
  std::uint32_t error = 0;
  std::uint16_t priority = 0;
  std::uint32_t length = 0;
};

// The whole frame.
std::string channelFrame(ChannelHeader header, std::string_view body);
// Nothing when the bytes are no header.
std::optional<ChannelHeader> channelHeader(
    const std::array<unsigned char, kChannelHeaderBytes>& bytes);

}  // namespace ormasim
