// Texts that must not get out: passwords, tokens. They live in memory of their own, which is left
// out of core dumps and is wiped when it is given back.
//
//   orma::SecretText token(4096);
//   token.resize(readInto(token.data(), token.capacity()));
//   use(token.view());
//
// Thread-safety: a SecretText is thread-compatible, the functions are thread-safe. Construction
// throws std::bad_alloc.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "orma/bundle/export.h"

namespace orma {

class ORMA_API SecretText {
 public:
  SecretText() = default;
  explicit SecretText(std::size_t capacity);
  // The two texts, one behind the other.
  SecretText(std::string_view first, std::string_view second);
  SecretText(SecretText&& other) noexcept;
  SecretText& operator=(SecretText&& other) noexcept;
  ~SecretText();

  // Room for the capacity, and for a NUL behind it, which is always there.
  char* data() { return data_; }
  std::size_t capacity() const { return capacity_; }
  // Up to the capacity. What is cut off is wiped.
  void resize(std::size_t size);
  // Keeps the part of the view, which has to be one of this text.
  void keep(std::string_view part);

  bool empty() const { return size_ == 0; }
  std::string_view view() const { return {data_, size_}; }
  // With the NUL; null when there is no capacity.
  const char* c_str() const { return data_; }

 private:
  char* data_ = nullptr;
  std::size_t capacity_ = 0;
  std::size_t size_ = 0;
};

// Who may have access to a file that holds a secret.
enum class SecretReaders { kOwner, kOwnerAndGroup };

// Why a file of that mode must not hold a secret: "is open to every user (mode 0644) …". Empty
// when it may.
ORMA_API std::string secretModeFault(mode_t mode, SecretReaders readers);
// The same for a file; empty, too, when it cannot be looked at: whoever opens it will tell.
ORMA_API std::string secretFileFault(const std::string& file, SecretReaders readers);

}  // namespace orma
