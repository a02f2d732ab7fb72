// INTEGER of 32 bits.
//
// Thread-safety and failure: asn_type.h. Decoding takes -2^31 to 2^32 - 1 in up to eight bytes and
// keeps the upper half as its bit pattern, since unsigned values travel in these fields; anything
// else is an error. Encoding is of minimal length.
//
//   AsnInt year(2024);
//   time.tm_year = year - 1900;
#pragma once

#include "orma/asn1/asn_type.h"

class ORMA_API AsnInt : public AsnType {
 public:
  AsnInt() = default;
  // Not explicit: a field is set by a plain number.
  AsnInt(int value) : value_(value) {}  // NOLINT(google-explicit-constructor)
  AsnInt(const AsnInt&) = default;
  ~AsnInt() override;

  void Set(int value) { value_ = value; }
  AsnInt& operator=(int value) {
    value_ = value;
    return *this;
  }
  AsnInt& operator=(const AsnInt& other) = default;
  operator int() const { return value_; }  // NOLINT(google-explicit-constructor)
  // Wraps around at the ends of the range.
  int operator-(const int& other) const {
    return static_cast<int>(static_cast<unsigned int>(value_) - static_cast<unsigned int>(other));
  }
  bool operator<(const AsnInt& other) const { return value_ < other.value_; }

  AsnInt* clone() const override;
  void BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const override;
  void Print(std::ostream& out, unsigned int level = 0, bool newLine = false) const override;
  const char* typeName() const override;

 private:
  int value_ = 0;
};
