#include "orma/asn1/ber.h"

#include "failure.h"

namespace {

constexpr unsigned char kMoreFollows = 0x80;
constexpr unsigned char kLongForm = 0x80;
constexpr unsigned char kReserved = 0xFF;

unsigned char nextByte(AsnBuf& buffer, unsigned long& bytes) {
  const unsigned char byte = buffer.getByte();
  if (buffer.readError()) failAsn(kAsnEndOfInput, __LINE__);
  ++bytes;
  return byte;
}

}  // namespace

void BDecTag_Impl(AsnBuf& buffer, unsigned long& bytes, unsigned int& tag) {
  int shift = 16;
  unsigned char byte = nextByte(buffer, bytes);
  // The number's first seven bits are never all zero.
  if (byte == kMoreFollows) failAsn(kAsnBadTag, __LINE__);
  tag |= static_cast<unsigned int>(byte) << shift;
  while ((byte & kMoreFollows) != 0) {
    if (shift == 0) failAsn(kAsnBadTag, __LINE__);
    shift -= 8;
    byte = nextByte(buffer, bytes);
    tag |= static_cast<unsigned int>(byte) << shift;
  }
}

unsigned long BDecLen_Impl(AsnBuf& buffer, unsigned long& bytes, unsigned char first) {
  if (first == kLongForm) return kAsnIndefiniteLength;
  if (first == kReserved) failAsn(kAsnBadLength, __LINE__);
  unsigned long length = 0;
  for (int count = first & 0x7F; count > 0; --count) {
    const unsigned char byte = nextByte(buffer, bytes);
    // One bit is left free: no sum of two lengths wraps around.
    if (length >> 55 != 0) failAsn(kAsnBadLength, __LINE__);
    length = length << 8 | byte;
  }
  return length;
}

void BDecEoc(AsnBuf& buffer, unsigned long& bytes) {
  for (int i = 0; i < 2; ++i) {
    if (nextByte(buffer, bytes) != 0) failAsn(kAsnBadEndOfContents, __LINE__);
  }
}

unsigned long BEncDefLenImpl(AsnBuf& buffer, unsigned long length) {
  unsigned long count = 0;
  do {
    buffer.putByte(static_cast<unsigned char>(length));
    length >>= 8;
    ++count;
  } while (length > 0);
  buffer.putByte(static_cast<unsigned char>(kLongForm | count));
  return count + 1;
}
