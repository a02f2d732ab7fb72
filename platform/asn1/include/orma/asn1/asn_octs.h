// OCTET STRING.
//
// Thread-safety and failure: asn_type.h. Decoding takes the primitive form only, which is the one
// that encoding writes.
//
//   AsnOcts name("core-1");
//   std::string_view text(name.bytes().data(), name.bytes().size());
#pragma once

#include "orma/asn1/asn_type.h"
#include "orma/refl/binary.h"

class ORMA_API AsnOcts : public AsnType {
 public:
  AsnOcts() = default;
  explicit AsnOcts(const char* text) { ReSet(text); }
  AsnOcts(const AsnOcts&) = default;
  AsnOcts& operator=(const AsnOcts&) = default;
  ~AsnOcts() override;

  // Replaces the bytes: by those of a text up to its end (null: none), of another string, or of any
  // place.
  void ReSet(const char* text);
  void ReSet(const AsnOcts& other) { bytes_ = other.bytes_; }
  void ReSet(const void* bytes, unsigned long size) { bytes_.assign(bytes, size); }

  // data() of it is always followed by a zero byte.
  const refl::CBinary& bytes() const { return bytes_; }

  AsnOcts* clone() const override;
  void BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const override;
  void Print(std::ostream& out, unsigned int level = 0, bool newLine = false) const override;
  const char* typeName() const override;

 private:
  refl::CBinary bytes_;
};
