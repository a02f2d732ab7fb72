// The root of the ASN.1 value classes: what can be encoded in BER, decoded, copied and printed.
//
// Thread-safety: thread-compatible. Failure: decoding throws a new CSM_Exception by pointer, which
// the catcher deletes, for whatever the bytes hold; encoding throws one for an object that is
// incomplete. std::bad_alloc when there is no memory.
//
//   AsnBuf buffer(bytes, size);
//   unsigned long count = 0;
//   object.BDec(buffer, count, NIClass_EncodingFormat_BER);
#pragma once

#include <ostream>

#include "orma/bundle/export.h"

class AsnBuf;

// How values are encoded; BER is the only way that there is.
enum NIClass_EncodingFormatEnum { NIClass_EncodingFormat_BER = 1 };

class ORMA_API AsnType {
 public:
  AsnType() = default;
  virtual ~AsnType();

  // A deep copy, which the caller deletes.
  virtual AsnType* clone() const = 0;
  // Reads tag, length and content from the buffer's read position and adds the number of bytes read
  // to `bytes`. After an exception the object may hold a part of the new value.
  virtual void BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum format) = 0;
  // Writes content, length and tag in front of what the buffer holds and gives the number of bytes
  // written.
  virtual unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const = 0;
  // The value as text, for a trace. `level` is the depth of the text's later lines, two blanks
  // each; `newLine` puts the first line of a constructed value on a line of its own, too.
  virtual void Print(std::ostream& out, unsigned int level = 0, bool newLine = false) const = 0;
  virtual const char* typeName() const = 0;

 protected:
  AsnType(const AsnType&) = default;
  AsnType& operator=(const AsnType&) = default;
};
