// The elements of BER: tags, lengths and end-of-contents marks.
//
// Thread-safety: thread-safe on different buffers. Failure: a new CSM_Exception by pointer, and the
// buffer's flag when its end was met.
//
//   unsigned int tag = static_cast<unsigned int>(buffer.getByte()) << 24;
//   ++bytes;
//   if ((tag >> 24 & 0x1F) == 0x1F) BDecTag_Impl(buffer, bytes, tag);
#pragma once

#include "orma/asn1/asn_buf.h"

// What a length reads as when the value goes on until an end-of-contents mark.
constexpr unsigned long kAsnIndefiniteLength = ~0UL;
// The tag of SEQUENCE and SEQUENCE OF, as tags are held: the first byte topmost.
constexpr unsigned int kAsnSequenceTag = 0x30000000U;

// Reads the rest of a tag of two to four bytes, whose first byte stands topmost in `tag`, into
// `tag`, and adds its number of bytes to `bytes`.
ORMA_API void BDecTag_Impl(AsnBuf& buffer, unsigned long& bytes, unsigned int& tag);

// Reads the rest of a long-form length, whose first byte is given, adds its number of bytes to
// `bytes` and gives the length, or kAsnIndefiniteLength for 0x80. The length may be more than what
// the buffer holds.
ORMA_API unsigned long BDecLen_Impl(AsnBuf& buffer, unsigned long& bytes, unsigned char first);

// Reads an end-of-contents mark: two zero bytes.
ORMA_API void BDecEoc(AsnBuf& buffer, unsigned long& bytes);

// Writes a definite length in the long form, with as few bytes as it takes, and gives their number.
ORMA_API unsigned long BEncDefLenImpl(AsnBuf& buffer, unsigned long length);
