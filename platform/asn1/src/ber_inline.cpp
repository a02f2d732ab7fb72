#include "ber_inline.h"

#include <cstdint>

namespace {

constexpr unsigned long kLongestInteger = 8;
constexpr std::int64_t kSmallest = INT32_MIN;
constexpr std::int64_t kLargest = UINT32_MAX;

}  // namespace

int readLongInteger(AsnBuf& buffer, unsigned long length) {
  checkLength(buffer, length);
  if (length == 0 || length > kLongestInteger) failAsn(kAsnBadInteger, __LINE__);
  const unsigned char* byte = buffer.position();
  std::uint64_t bits = (*byte & 0x80) != 0 ? ~std::uint64_t{0} : 0;
  for (unsigned long i = 0; i < length; ++i) bits = bits << 8 | byte[i];
  const auto value = static_cast<std::int64_t>(bits);
  if (value < kSmallest || value > kLargest) failAsn(kAsnBadInteger, __LINE__);
  buffer.skip(length);
  return static_cast<int>(value);
}

// The bytes behind the first one, from the last one that has no more behind it.
void writeLongTag(AsnBuf& buffer, unsigned int tag, unsigned long& count) {
  int last = 16;
  while ((tag >> last & 0x80) != 0 && last > 0) last -= 8;
  for (int shift = last; shift <= 16; shift += 8) {
    buffer.putByte(static_cast<unsigned char>(tag >> shift));
    ++count;
  }
}
