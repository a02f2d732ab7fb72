// SEQUENCE OF, as the fault server's messages carry it: one template for every element type.
//
// Thread-safety: thread-compatible; copying moves the cursor of its source, too. Failure: decoding
// throws a new CSM_Exception by pointer, which the catcher deletes; the elements decoded before it
// stay. std::bad_alloc passes.
//
//   for (reply.lstItem.toFirst(); auto* item = reply.lstItem.current(); reply.lstItem.toNext()) …
#pragma once

#include <cstdint>
#include <memory>

#include "orma/asn1/asn_buf.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_list_base.h"
#include "orma/asn1/asn_octs.h"
#include "orma/asn1/asn_sequence.h"
#include "orma/asn1/ber.h"

namespace emf {

// The parts of a list's encoding that are the same for every element.

// Reads one tag, or one length; at the buffer's end a length is 0 and the buffer's flag is set.
unsigned int readTag(AsnBuf& buffer, unsigned long& bytes);
unsigned long readLength(AsnBuf& buffer, unsigned long& bytes);
// Reads a list's own tag; throws when it is another one.
void readListTag(AsnBuf& buffer, unsigned long& bytes);
// Reads the tag in front of an element of an indefinite-length list; throws unless it is `tag`.
void readElementTag(AsnBuf& buffer, unsigned long& bytes, unsigned int tag);
// Writes length and tag in front of a content of that size; the size of the whole.
unsigned long writeListHeader(AsnBuf& buffer, unsigned long contentSize);
// Two blanks a level up to level 40; no text beyond.
const char* indentation(unsigned int level);

inline void copyElement(AsnInt& to, const AsnInt& from) { to = from; }
inline void copyElement(AsnOcts& to, const AsnOcts& from) { to.ReSet(from); }
inline void copyElement(AsnSequence& to, const AsnSequence& from) { to.Assign(from); }

}  // namespace emf

// The list of elements of type T, with a cursor. Owns its elements.
template <typename T>
class AsnList : public AsnListBase {
 public:
  AsnList() = default;
  AsnList(const AsnList&) = delete;
  AsnList& operator=(const AsnList&) = delete;
  ~AsnList() override { clear(); }

  AsnList* clone() const override = 0;
  void BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum format) override = 0;
  unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const override = 0;
  // Each element behind "- ", with `newLine` on a line of its own.
  void Print(std::ostream& out, unsigned int level = 0, bool newLine = false) const override;
  const char* typeName() const override { return "AsnList<T>"; }

  // Copies up to the first node without an element; of itself it does nothing.
  void assign(const AsnListBase& other) override;
  unsigned long BEncContent(AsnBuf& buffer, NIClass_EncodingFormatEnum format) const override;
  void BDecContent(AsnBuf& buffer, unsigned int tag, unsigned long length, unsigned long& bytes,
                   NIClass_EncodingFormatEnum format) override;

  std::uint64_t count() const { return count_; }
  bool empty() const { return first_ == nullptr; }
  // Appends a new element, or one that is given, and points the cursor at it. A node may stand
  // without an element.
  T& add();
  void append(std::unique_ptr<T> element);
  void clear();

  // The element at the cursor; null without one and behind the last node.
  T* current() const { return current_ != nullptr ? current_->element : nullptr; }
  void toFirst() const { current_ = first_; }
  // From a node; not from behind the last one.
  void toNext() const { current_ = current_->next; }

 private:
  struct Node {
    T* element;  // owned
    Node* next;
    Node* prev;
  };

  std::uint64_t count_ = 0;
  Node* first_ = nullptr;
  Node* last_ = nullptr;
  mutable Node* current_ = nullptr;
};

// The list as it is encoded and decoded.
template <typename T>
class AsnSeqOf : public AsnList<T> {
 public:
  // The format is not looked at: there is one.
  void BDec(AsnBuf& buffer, unsigned long& bytes, NIClass_EncodingFormatEnum) override {
    emf::readListTag(buffer, bytes);
    const unsigned long length = emf::readLength(buffer, bytes);
    this->BDecContent(buffer, kAsnSequenceTag, length, bytes, NIClass_EncodingFormat_BER);
  }
  unsigned long BEnc(AsnBuf& buffer, NIClass_EncodingFormatEnum) const override {
    return emf::writeListHeader(buffer, this->BEncContent(buffer, NIClass_EncodingFormat_BER));
  }
};

// The list under its name on the wire's description.
template <typename T, const char* name>
class AsnNamedSeqOf final : public AsnSeqOf<T> {
 public:
  static constexpr const char* kName = name;

  AsnNamedSeqOf* clone() const override {
    auto copy = std::make_unique<AsnNamedSeqOf>();
    copy->assign(*this);
    return copy.release();
  }
  const char* typeName() const override { return name; }
};

template <typename T>
void AsnList<T>::Print(std::ostream& out, unsigned int level, bool newLine) const {
  for (const Node* node = first_; node != nullptr; node = node->next) {
    if (newLine) out << '\n' << emf::indentation(level);
    out << "- ";
    if (node->element != nullptr) node->element->Print(out, level + 1, false);
  }
}

template <typename T>
void AsnList<T>::assign(const AsnListBase& other) {
  if (this == &other) return;
  clear();
  const auto& source = static_cast<const AsnList&>(other);
  for (source.toFirst(); const T* element = source.current(); source.toNext()) {
    emf::copyElement(add(), *element);
  }
}

// From the last to the first: the buffer is written towards its start.
template <typename T>
unsigned long AsnList<T>::BEncContent(AsnBuf& buffer, NIClass_EncodingFormatEnum) const {
  unsigned long size = 0;
  for (const Node* node = last_; node != nullptr; node = node->prev) {
    if (node->element != nullptr) size += node->element->BEnc(buffer, NIClass_EncodingFormat_BER);
  }
  return size;
}

template <typename T>
void AsnList<T>::BDecContent(AsnBuf& buffer, unsigned int tag, unsigned long length,
                             unsigned long& bytes, NIClass_EncodingFormatEnum) {
  clear();
  const bool indefinite = length == kAsnIndefiniteLength;
  unsigned long read = 0;
  while (indefinite || read < length) {
    if (indefinite) {
      if (buffer.atEnd()) buffer.setReadError();
      if (buffer.peekByte() == 0) {
        BDecEoc(buffer, read);
        break;
      }
      // Meant so: here each element stands behind a header that bears the list's own tag.
      emf::readElementTag(buffer, read, tag);
      emf::readLength(buffer, read);
    }
    add().BDec(buffer, read, NIClass_EncodingFormat_BER);
  }
  bytes += read;
}

template <typename T>
T& AsnList<T>::add() {
  append(std::make_unique<T>());
  return *last_->element;
}

template <typename T>
void AsnList<T>::append(std::unique_ptr<T> element) {
  Node* node = new Node{nullptr, nullptr, last_};
  node->element = element.release();
  (last_ != nullptr ? last_->next : first_) = node;
  last_ = node;
  current_ = node;
  ++count_;
}

template <typename T>
void AsnList<T>::clear() {
  Node* node = first_;
  count_ = 0;
  first_ = last_ = current_ = nullptr;
  while (node != nullptr) {
    Node* next = node->next;
    delete node->element;
    delete node;
    node = next;
  }
}
