// The fields of a record, as the compiler laid them out, against the order they were agreed in.
//
//   expectRecord("Device", kAfterTable, sizeof(Device), {FIELD(Device, id), …});
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

// The records are no standard-layout types; both compilers lay them out by the same rules.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

#define FIELD(Record, field)                                                                 \
  ::emf::test::Field {                                                                       \
#field, offsetof(Record, field), sizeof(Record::field), alignof(decltype(Record::field)) \
  }

namespace emf::test {

struct Field {
  const char* name;
  std::size_t offset;
  std::size_t size;
  std::size_t alignment;
};

// Where the fields of a record with virtual operations begin.
constexpr std::size_t kAfterTable = sizeof(void*);

template <typename... Fields>
constexpr bool kAre32Bits = (std::is_same_v<Fields, std::int32_t> && ...);

inline std::size_t roundedUp(std::size_t offset, std::size_t alignment) {
  return (offset + alignment - 1) / alignment * alignment;
}

// The fields follow one another from `start` on, in this order and with nothing between them, and
// nothing follows them.
inline void expectRecord(const char* record, std::size_t start, std::size_t size,
                         const std::vector<Field>& fields) {
  std::size_t end = start;
  std::size_t alignment = start != 0 ? sizeof(void*) : 1;
  for (const Field& field : fields) {
    EXPECT_EQ(field.offset, roundedUp(end, field.alignment)) << record << "::" << field.name;
    end = field.offset + field.size;
    alignment = std::max(alignment, field.alignment);
  }
  EXPECT_EQ(size, roundedUp(end, alignment)) << record;
}

}  // namespace emf::test
