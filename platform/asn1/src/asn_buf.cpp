#include "orma/asn1/asn_buf.h"

#include <algorithm>
#include <stdexcept>

#include "failure.h"

namespace {

constexpr unsigned long kFirstCapacity = 512;
constexpr unsigned long kLargestCapacity = 1UL << 62;

}  // namespace

AsnBuf::~AsnBuf() = default;

void AsnBuf::AddBuffer(long room) {
  const unsigned long used = size();
  if (room < 0 || static_cast<unsigned long>(room) > kLargestCapacity - used) {
    throw std::length_error("no buffer can be that large");
  }
  const unsigned long needed = used + static_cast<unsigned long>(room);
  const unsigned long capacity = std::max({kFirstCapacity, 2 * capacity_, needed});
  std::unique_ptr<unsigned char[]> start(new unsigned char[capacity]);
  unsigned char* write = start.get() + capacity - used;
  if (used > 0) std::memcpy(write, write_, used);
  start_ = std::move(start);
  capacity_ = capacity;
  write_ = write;
}

void AsnBuf::Level::refuse() { failAsn(kAsnTooDeep, __LINE__); }
