// SEQUENCE, of fields that a descriptor lists: one walk of the descriptor serves encoding,
// decoding, copying and printing, and no sequence has code of its own for them.
//
// Thread-safety and failure: asn_type.h. A sequence class has this base as its first one and none
// beside it; its accessor fills the descriptor's slot at first use (refl/class_infor.h), from any
// thread. Its fields are AsnInt, AsnOcts, sequences and lists (AsnListBase, custom type with the
// mark refl::Enum::kListMark), held as their records' flags say. A descriptor that says otherwise
// is a programming error: std::logic_error.
//
//   void AsnAlmKeyStrc::reflect(refl::CRefrence& reference) const { ... }
#pragma once

#include "orma/asn1/asn_type.h"
#include "orma/refl/class_infor.h"

class ORMA_API AsnSequence : public AsnType {
 public:
  AsnSequence() = default;
  AsnSequence(const AsnSequence&) = delete;
  AsnSequence& operator=(const AsnSequence&) = delete;
  ~AsnSequence() override;

  // Fields in the order of the descriptor. An absent optional field ends as null, a present one
  // keeps its object or gets a new one. Behind the last field, fields under context tags that the
  // descriptor does not name are passed over.
  void BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum format) override;
  unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const override;
  // Lines of "name: value", one for each field that is there.
  void Print(std::ostream& out, unsigned int level = 0, bool newLine = false) const override;
  // The descriptor's name.
  const char* typeName() const override;

  // Binds the reference to this object and the descriptor of its class.
  virtual void reflect(refl::CRefrence& reference) const = 0;
  // The fields alone, without tag and length; asn_list_base.h describes the arguments.
  virtual unsigned long BEncContent(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const;
  virtual void BDecContent(AsnBuf& buffer, unsigned int tag, unsigned long length,
                           unsigned long& bytes, NIClass_EncodingFormatEnum format);

  // What a class's constructor calls last and its destructor calls first. A sequence keeps nothing
  // beside its fields, so that there is nothing to do.
  void Constructor() {}
  void Destructor() {}
  // Makes the fields of this new object deep copies of those of another one of the same class.
  void CopyConstructor(const AsnSequence& other) { Assign(other); }
  // The same for any object. What is there is reused; assigning an object to itself does nothing.
  void Assign(const AsnSequence& other);
};
