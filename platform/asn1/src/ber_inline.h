// The elements of BER where speed counts: headers of one-byte tags and lengths, and the contents of
// the primitive types.
//
// Thread-safety and failure: orma/asn1/ber.h.
//
//   if (readTag(buffer) != kIntegerTag) failAsn(kAsnWrongTag, __LINE__);
//   const int value = readInteger(buffer, readLength(buffer));
#pragma once

#include "failure.h"
#include "orma/asn1/asn_buf.h"
#include "orma/asn1/ber.h"

constexpr unsigned int kIntegerTag = 0x02000000U;
constexpr unsigned int kOctetStringTag = 0x04000000U;
constexpr unsigned char kConstructedBit = 0x20;
constexpr unsigned char kLongTagBits = 0x1F;
constexpr unsigned long kLargestShortLength = 0x7F;

// A tag, its first byte topmost.
inline unsigned int readTag(AsnBuf& buffer) {
  if (buffer.atEnd()) {
    buffer.setReadError();
    failAsn(kAsnEndOfInput, __LINE__);
  }
  const unsigned int first = buffer.getByte();
  unsigned int tag = first << 24;
  unsigned long bytes = 0;
  if ((first & kLongTagBits) == kLongTagBits) BDecTag_Impl(buffer, bytes, tag);
  return tag;
}

// A length in any form, perhaps kAsnIndefiniteLength.
inline unsigned long readLength(AsnBuf& buffer) {
  if (buffer.atEnd()) {
    buffer.setReadError();
    failAsn(kAsnEndOfInput, __LINE__);
  }
  const unsigned char first = buffer.getByte();
  if (first <= kLargestShortLength) return first;
  unsigned long bytes = 0;
  return BDecLen_Impl(buffer, bytes, first);
}

// Makes sure that a definite length is followed by as many bytes.
inline void checkLength(AsnBuf& buffer, unsigned long length) {
  if (length <= buffer.remaining()) return;
  if (length == kAsnIndefiniteLength) failAsn(kAsnBadLength, __LINE__);
  buffer.setReadError();
  failAsn(kAsnEndOfInput, __LINE__);
}

// An INTEGER's content.
int readLongInteger(AsnBuf& buffer, unsigned long length);
inline int readInteger(AsnBuf& buffer, unsigned long length) {
  if (length - 1 > 3 || length > buffer.remaining()) return readLongInteger(buffer, length);
  const unsigned char* byte = buffer.position();
  unsigned int value = 0U - (*byte >> 7);  // all bits are the sign
  for (unsigned long i = 0; i < length; ++i) value = value << 8 | byte[i];
  buffer.skip(length);
  return static_cast<int>(value);
}

// Writes an INTEGER's content of minimal length and gives its number of bytes.
inline unsigned long writeInteger(AsnBuf& buffer, int value) {
  unsigned long count = 0;
  int byte = 0;
  do {
    byte = value & 0xFF;
    buffer.putByte(static_cast<unsigned char>(byte));
    value >>= 8;
    ++count;
    // What is left is nothing but the sign when it is the sign of the byte written last.
  } while (value != -(byte >> 7));
  return count;
}

void writeLongTag(AsnBuf& buffer, unsigned int tag, unsigned long& count);

// Writes length and tag in front of `length` bytes of content and gives the sum of all of them.
inline unsigned long writeHeader(AsnBuf& buffer, unsigned int tag, unsigned long length) {
  unsigned long count = length + 2;
  if (length <= kLargestShortLength) {
    buffer.putByte(static_cast<unsigned char>(length));
  } else {
    count += BEncDefLenImpl(buffer, length) - 1;
  }
  const auto first = static_cast<unsigned char>(tag >> 24);
  if ((first & kLongTagBits) == kLongTagBits) writeLongTag(buffer, tag, count);
  buffer.putByte(first);
  return count;
}
