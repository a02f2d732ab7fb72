#include "channel_frame.h"

namespace ormasim {
namespace {

constexpr char kMagic[] = "ORMC";
constexpr std::uint8_t kVersion = 1;

void append(std::string& bytes, std::uint32_t value, int size) {
  while (size-- > 0) bytes += static_cast<char>(value >> (8 * size) & 0xFF);
}

template <typename Field>
Field fieldAt(const std::array<unsigned char, kChannelHeaderBytes>& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < sizeof(Field); ++i) value = value << 8 | bytes[at + i];
  return static_cast<Field>(value);
}

}  // namespace

std::string channelFrame(ChannelHeader header, std::string_view body) {
  std::string bytes = kMagic;
  bytes.reserve(kChannelHeaderBytes + body.size());
  append(bytes, kVersion, 1);
  append(bytes, header.kind, 1);
  append(bytes, header.flags, 2);
  append(bytes, header.process, 4);
  append(bytes, header.command, 4);
  append(bytes, header.id, 4);
  append(bytes, header.number, 4);
  append(bytes, header.error, 4);
  append(bytes, header.priority, 2);
  append(bytes, 0, 2);
  append(bytes, static_cast<std::uint32_t>(body.size()), 4);
  bytes += body;
  return bytes;
}

std::optional<ChannelHeader> channelHeader(
    const std::array<unsigned char, kChannelHeaderBytes>& bytes) {
  const std::string_view magic(reinterpret_cast<const char*>(bytes.data()), 4);
  if (magic != kMagic || bytes[4] != kVersion || fieldAt<std::uint16_t>(bytes, 30) != 0) {
    return std::nullopt;
  }
  ChannelHeader header;
  header.kind = bytes[5];
  header.flags = fieldAt<std::uint16_t>(bytes, 6);
  header.process = fieldAt<std::uint32_t>(bytes, 8);
  header.command = fieldAt<std::uint32_t>(bytes, 12);
  header.id = fieldAt<std::uint32_t>(bytes, 16);
  header.number = fieldAt<std::uint32_t>(bytes, 20);
  header.error = fieldAt<std::uint32_t>(bytes, 24);
  header.priority = fieldAt<std::uint16_t>(bytes, 28);
  header.length = fieldAt<std::uint32_t>(bytes, 32);
  return header;
}

}  // namespace ormasim
