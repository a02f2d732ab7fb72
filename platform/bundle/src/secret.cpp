#include "orma/bundle/secret.h"

#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <new>
#include <utility>

namespace orma {

namespace {

std::size_t mappedBytes(std::size_t capacity) {
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  return (capacity + 1 + page - 1) / page * page;
}

}  // namespace

SecretText::SecretText(std::size_t capacity) : capacity_(capacity) {
  void* const memory = ::mmap(nullptr, mappedBytes(capacity), PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  data_ = static_cast<char*>(memory);
  ::madvise(memory, mappedBytes(capacity), MADV_DONTDUMP);
  // Where the limit on locked memory forbids it, the text may reach the swap space.
  static_cast<void>(::mlock(memory, mappedBytes(capacity)));
}

SecretText::SecretText(std::string_view first, std::string_view second)
    : SecretText(first.size() + second.size()) {
  std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), data_));
  size_ = capacity_;
}

SecretText::SecretText(SecretText&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      capacity_(std::exchange(other.capacity_, 0)),
      size_(std::exchange(other.size_, 0)) {}

SecretText& SecretText::operator=(SecretText&& other) noexcept {
  std::swap(data_, other.data_);
  std::swap(capacity_, other.capacity_);
  std::swap(size_, other.size_);
  return *this;
}

SecretText::~SecretText() {
  if (data_ == nullptr) return;
  ::explicit_bzero(data_, capacity_);
  ::munmap(data_, mappedBytes(capacity_));
}

void SecretText::resize(std::size_t size) {
  size_ = std::min(size, capacity_);
  if (data_ != nullptr) ::explicit_bzero(data_ + size_, capacity_ - size_);
}

void SecretText::keep(std::string_view part) {
  if (!part.empty()) ::memmove(data_, part.data(), part.size());
  resize(part.size());
}

std::string secretModeFault(mode_t mode, SecretReaders readers) {
  const bool ownerAlone = readers == SecretReaders::kOwner;
  const mode_t forbidden = ownerAlone ? S_IRWXG | S_IRWXO : S_IRWXO;
  if ((mode & forbidden) == 0) return "";
  char shown[16];
  std::snprintf(shown, sizeof shown, "%04o", static_cast<unsigned>(mode & 07777));
  return std::string("is open to ") + ((mode & S_IRWXO) != 0 ? "every user" : "its group") +
         " (mode " + shown + ") and holds a secret; take the access away: chmod " +
         (ownerAlone ? "go-rwx" : "o-rwx");
}

std::string secretFileFault(const std::string& file, SecretReaders readers) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return "";
  return secretModeFault(status.st_mode, readers);
}

}  // namespace orma
