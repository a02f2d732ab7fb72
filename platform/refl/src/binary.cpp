#include "orma/refl/binary.h"

#include <utility>

namespace refl {

CBinary::CBinary(unsigned long size) : CBinary() {
  if (size > kInlineSize) data_ = new char[size + 1];
  std::memset(data_, 0, size + 1);
  size_ = size;
}

CBinary::CBinary(CBinary&& other) noexcept : CBinary() { *this = std::move(other); }

CBinary& CBinary::operator=(const CBinary& other) {
  if (this != &other) assign(other.data_, other.size_);
  return *this;
}

CBinary& CBinary::operator=(CBinary&& other) noexcept {
  if (this == &other) return *this;
  clear();
  if (other.data_ == other.inline_) {
    std::memcpy(inline_, other.inline_, other.size_ + 1);
    size_ = other.size_;
  } else {
    data_ = std::exchange(other.data_, other.inline_);
    size_ = other.size_;
  }
  other.clear();
  return *this;
}

void CBinary::clear() noexcept {
  if (data_ != inline_) delete[] std::exchange(data_, inline_);
  inline_[0] = '\0';
  size_ = 0;
}

// The old store is freed last: the new bytes may lie in it.
void CBinary::assignLarge(const void* bytes, unsigned long size) {
  CBinary replaced;
  if (size > kInlineSize) replaced.data_ = new char[size + 1];
  if (size > 0) std::memcpy(replaced.data_, bytes, size);
  replaced.data_[size] = '\0';
  replaced.size_ = size;
  *this = std::move(replaced);
}

}  // namespace refl
