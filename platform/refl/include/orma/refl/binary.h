// A byte string of any length. Its bytes are always followed by a zero byte, which does not count,
// so that data() can be read as text.
//
// Thread-safety: thread-compatible. std::bad_alloc when there is no memory; the value is then as it
// was.
//
//   refl::CBinary bytes(4);
//   std::memcpy(bytes.data(), received, bytes.size());
#pragma once

#include <cstring>

#include "orma/bundle/export.h"

namespace refl {

class ORMA_API CBinary {
 public:
  CBinary() noexcept { inline_[0] = '\0'; }
  // `size` zero bytes.
  explicit CBinary(unsigned long size);
  CBinary(const void* bytes, unsigned long size) : CBinary() { assign(bytes, size); }
  CBinary(const CBinary& other) : CBinary() { assign(other.data_, other.size_); }
  CBinary(CBinary&& other) noexcept;
  CBinary& operator=(const CBinary& other);
  CBinary& operator=(CBinary&& other) noexcept;
  ~CBinary() {
    if (data_ != inline_) delete[] data_;
  }

  const char* data() const noexcept { return data_; }
  char* data() noexcept { return data_; }
  unsigned long size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }

  // Replaces the bytes by a copy of others, which may be a part of these.
  void assign(const void* bytes, unsigned long size) {
    if (size > kInlineSize || data_ != inline_) return assignLarge(bytes, size);
    if (size > 0) std::memmove(inline_, bytes, size);
    inline_[size] = '\0';
    size_ = size;
  }
  void clear() noexcept;

  friend bool operator==(const CBinary& a, const CBinary& b) noexcept {
    return a.size_ == b.size_ && std::memcmp(a.data_, b.data_, a.size_) == 0;
  }
  friend bool operator!=(const CBinary& a, const CBinary& b) noexcept { return !(a == b); }

 private:
  static constexpr unsigned long kInlineSize = 23;

  void assignLarge(const void* bytes, unsigned long size);

  char* data_ = inline_;
  unsigned long size_ = 0;
  char inline_[kInlineSize + 1];
};

}  // namespace refl
