#include "ber_writer.h"

#include <algorithm>
#include <cstring>

namespace ormasim {
namespace {

constexpr unsigned char kInteger = 0x02;
constexpr unsigned char kOctetString = 0x04;
constexpr unsigned char kSequence = 0x30;
constexpr unsigned char kConstructed = 0x20;
constexpr unsigned char kContext = 0x80;
constexpr std::size_t kFirstCapacity = 4096;

}  // namespace

void BerWriter::integer(std::int64_t value, int context) {
  const std::size_t mark = size();
  // As few bytes as keep the sign.
  for (;;) {
    put(static_cast<unsigned char>(value));
    const bool negative = (value & 0x80) != 0;
    value >>= 8;
    if (value == (negative ? -1 : 0)) break;
  }
  header(kInteger, mark, context);
}

void BerWriter::octets(std::string_view bytes, int context) {
  const std::size_t mark = size();
  put(bytes.data(), bytes.size());
  header(kOctetString, mark, context);
}

void BerWriter::sequence(std::size_t mark, int context) { header(kSequence, mark, context); }

void BerWriter::header(unsigned char tag, std::size_t mark, int context) {
  length(size() - mark);
  if (context == kNoContext) return put(tag);
  const auto number = static_cast<unsigned char>(kContext | context);
  if (tagging_ == Tagging::Implicit) {
    return put(static_cast<unsigned char>(number | (tag & kConstructed)));
  }
  put(tag);
  length(size() - mark);
  put(static_cast<unsigned char>(number | kConstructed));
}

void BerWriter::length(std::size_t length) {
  if (length < 0x80) return put(static_cast<unsigned char>(length));
  unsigned char bytes = 0;
  for (; length > 0; length >>= 8) {
    put(static_cast<unsigned char>(length));
    ++bytes;
  }
  put(static_cast<unsigned char>(0x80 | bytes));
}

void BerWriter::put(unsigned char byte) {
  if (begin_ == 0) makeRoom(1);
  buffer_[--begin_] = byte;
}

void BerWriter::put(const void* bytes, std::size_t size) {
  if (begin_ < size) makeRoom(size);
  begin_ -= size;
  if (size > 0) std::memcpy(&buffer_[begin_], bytes, size);
}

void BerWriter::makeRoom(std::size_t room) {
  const std::size_t written = size();
  const std::size_t capacity = std::max({kFirstCapacity, 2 * capacity_, written + room});
  auto buffer = std::make_unique<unsigned char[]>(capacity);
  if (written > 0) std::memcpy(&buffer[capacity - written], &buffer_[begin_], written);
  buffer_ = std::move(buffer);
  begin_ = capacity - written;
  capacity_ = capacity;
}

std::string_view BerWriter::bytes() const {
  if (size() == 0) return {};
  return {reinterpret_cast<const char*>(&buffer_[begin_]), size()};
}

}  // namespace ormasim
