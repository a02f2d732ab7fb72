// What every SEQUENCE OF has, beside what every ASN.1 type has. A sequence reaches its list fields
// through these calls, so that the list template can be anybody's.
//
// Thread-safety and failure: asn_type.h. A list class has this base as its first one and none
// beside it.
//
//   list.BDecContent(buffer, 0x30000000U, length, bytes, NIClass_EncodingFormat_BER);
#pragma once

#include "orma/asn1/asn_type.h"

class ORMA_API AsnListBase : public AsnType {
 public:
  AsnListBase() = default;
  ~AsnListBase() override;

  // Becomes a deep copy of another list of the same class.
  virtual void assign(const AsnListBase& other) = 0;
  // The elements alone, without tag and length.
  virtual unsigned long BEncContent(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const = 0;
  // Replaces the elements. `tag` is the tag that stood in front of the list, its first byte
  // topmost, with the sequence's own 0x30000000 in place of a context tag; `length` is the
  // content's, or kAsnIndefiniteLength.
  virtual void BDecContent(AsnBuf& buffer, unsigned int tag, unsigned long length,
                           unsigned long& bytes, NIClass_EncodingFormatEnum format) = 0;

 protected:
  AsnListBase(const AsnListBase&) = default;
  AsnListBase& operator=(const AsnListBase&) = default;
};
