// A SEQUENCE OF for the tests, written against the public calls alone.
#pragma once

#include <memory>
#include <ostream>
#include <utility>
#include <vector>

#include "orma/asn1/asn_buf.h"
#include "orma/asn1/asn_list_base.h"
#include "orma/asn1/asn_sequence.h"
#include "orma/asn1/ber.h"
#include "orma/asn1/csm_exception.h"

template <typename T>
class ElementList : public AsnListBase {
 public:
  ElementList() = default;

  T& add() {
    elements_.push_back(std::make_unique<T>());
    return *elements_.back();
  }
  template <typename Value>
  T& add(const Value& value) {
    T& element = add();
    element = T(value);
    return element;
  }
  std::size_t size() const { return elements_.size(); }
  const T& operator[](std::size_t index) const { return *elements_[index]; }
  void clear() { elements_.clear(); }

  ElementList* clone() const override {
    auto copy = std::make_unique<ElementList>();
    copy->assign(*this);
    return copy.release();
  }

  void assign(const AsnListBase& other) override {
    if (this == &other) return;
    elements_.clear();
    for (const auto& element : static_cast<const ElementList&>(other).elements_) {
      std::unique_ptr<AsnType> copy(element->clone());
      elements_.emplace_back(static_cast<T*>(copy.get()));
      static_cast<void>(copy.release());
    }
  }

  unsigned long BEncContent(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const override {
    unsigned long length = 0;
    for (auto element = elements_.rbegin(); element != elements_.rend(); ++element) {
      length += (*element)->BEnc(buffer, format);
    }
    return length;
  }

  unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const override {
    const unsigned long content = BEncContent(buffer, format);
    unsigned long header = 2;
    if (content > 127) {
      header = 1 + BEncDefLenImpl(buffer, content);
    } else {
      buffer.putByte(static_cast<unsigned char>(content));
    }
    buffer.putByte(0x30);
    return header + content;
  }

  void BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum format) override {
    const unsigned int tag = readTag(buffer, bytes);
    if (tag != kAsnSequenceTag) throw new CSM_Exception(-54, 250, "", "list", "list", nullptr);
    const unsigned long length = readLength(buffer, bytes);
    BDecContent(buffer, tag, length, bytes, format);
  }

  void BDecContent(AsnBuf& buffer, unsigned int /*tag*/, unsigned long length, unsigned long& bytes,
                   NIClass_EncodingFormatEnum format) override {
    elements_.clear();
    unsigned long read = 0;
    while (length == kAsnIndefiniteLength || read < length) {
      if (length == kAsnIndefiniteLength && buffer.peekByte() == 0) {
        BDecEoc(buffer, read);
        break;
      }
      add().BDec(buffer, read, format);
    }
    bytes += read;
  }

  void Print(std::ostream& out, unsigned int level, bool newLine) const override {
    for (const auto& element : elements_) {
      if (newLine) out << '\n' << std::string(2 * std::size_t{level}, ' ');
      out << "- ";
      element->Print(out, level + 1, false);
    }
  }

  const char* typeName() const override { return "ElementList"; }

 private:
  static unsigned int readTag(AsnBuf& buffer, unsigned long& bytes) {
    unsigned int tag = static_cast<unsigned int>(buffer.getByte()) << 24;
    ++bytes;
    if ((tag >> 24 & 0x1F) == 0x1F) BDecTag_Impl(buffer, bytes, tag);
    return tag;
  }

  static unsigned long readLength(AsnBuf& buffer, unsigned long& bytes) {
    const unsigned char first = buffer.getByte();
    ++bytes;
    return (first & 0x80) != 0 ? BDecLen_Impl(buffer, bytes, first) : first;
  }

  std::vector<std::unique_ptr<T>> elements_;
};
