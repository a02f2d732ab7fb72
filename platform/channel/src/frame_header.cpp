#include "frame_header.h"

namespace orma::channel {
namespace {

// Writes fields one after the other, in network byte order.
class FieldWriter {
 public:
  explicit FieldWriter(HeaderBytes& bytes) : at_(bytes.data()) {}

  template <typename Field>
  FieldWriter& put(Field field) {
    for (std::size_t left = sizeof field; left-- > 0;) {
      *at_++ = static_cast<unsigned char>(field >> (8 * left));
    }
    return *this;
  }

 private:
  unsigned char* at_;
};

class FieldReader {
 public:
  explicit FieldReader(const HeaderBytes& bytes) : at_(bytes.data()) {}

  template <typename Field>
  Field take() {
    std::uint32_t field = 0;
    for (std::size_t i = 0; i < sizeof(Field); ++i) field = field << 8 | *at_++;
    return static_cast<Field>(field);
  }

 private:
  const unsigned char* at_;
};

bool isKind(std::uint8_t kind) {
  return kind >= static_cast<std::uint8_t>(FrameKind::Command) &&
         kind <= static_cast<std::uint8_t>(FrameKind::End);
}

}  // namespace

HeaderBytes encodeHeader(const FrameHeader& header) {
  HeaderBytes bytes{};
  FieldWriter(bytes)
      .put(kMagic)
      .put(kVersion)
      .put(static_cast<std::uint8_t>(header.kind))
      .put(header.flags)
      .put(header.process)
      .put(header.command)
      .put(header.id)
      .put(header.number)
      .put(header.error)
      .put(header.priority)
      .put(std::uint16_t{0})
      .put(header.length);
  return bytes;
}

std::optional<FrameHeader> decodeHeader(const HeaderBytes& bytes) {
  FieldReader reader(bytes);
  const bool ours =
      reader.take<std::uint32_t>() == kMagic && reader.take<std::uint8_t>() == kVersion;
  if (!ours) return std::nullopt;
  const auto kind = reader.take<std::uint8_t>();
  FrameHeader header;
  header.flags = reader.take<std::uint16_t>();
  header.process = reader.take<std::uint32_t>();
  header.command = reader.take<std::uint32_t>();
  header.id = reader.take<std::uint32_t>();
  header.number = reader.take<std::uint32_t>();
  header.error = reader.take<std::uint32_t>();
  header.priority = reader.take<std::uint16_t>();
  const auto reserved = reader.take<std::uint16_t>();
  header.length = reader.take<std::uint32_t>();
  if (!isKind(kind) || (header.flags & ~kFlowControl) != 0 || reserved != 0) return std::nullopt;
  header.kind = static_cast<FrameKind>(kind);
  return header;
}

}  // namespace orma::channel
