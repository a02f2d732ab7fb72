#include "resource_ids.h"

#include <charconv>

namespace ormasim {
namespace {

constexpr std::uint64_t kFnvStart = 0xCBF29CE484222325;
constexpr std::uint64_t kFnvPrime = 0x100000001B3;
constexpr int kHashBits = 60;
constexpr std::uint64_t kBelowElement = std::uint64_t{1} << 62;

}  // namespace

std::int64_t resourceIdOf(std::string_view nativeId) {
  if (nativeId.find(',') == std::string_view::npos) {
    std::int64_t number = 0;
    const std::size_t digits = nativeId.find('=') + 1;
    std::from_chars(nativeId.data() + digits, nativeId.data() + nativeId.size(), number);
    return number;
  }
  std::uint64_t hash = kFnvStart;
  for (const char character : nativeId) {
    hash = (hash ^ static_cast<unsigned char>(character)) * kFnvPrime;
  }
  const std::uint64_t folded = hash ^ hash >> kHashBits;
  return static_cast<std::int64_t>((folded & ((std::uint64_t{1} << kHashBits) - 1)) |
                                   kBelowElement);
}

std::int64_t shortIdOf(std::int64_t resourceId) { return static_cast<std::int32_t>(resourceId); }

}  // namespace ormasim
