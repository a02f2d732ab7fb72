// The generator's source of chance: SplitMix64 (Steele, Lea, Flood 2014). The distributions of
// the standard library differ between implementations; these do not.
//
// Thread-safety: thread-compatible.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ormasim {

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }

  // 0 to bound - 1; bound is not 0.
  std::uint32_t below(std::uint32_t bound) {
    return static_cast<std::uint32_t>(((next() >> 32) * bound) >> 32);
  }

  bool percent(std::uint32_t chance) { return below(100) < chance; }

  // Any element of a table.
  template <typename Element, std::size_t kSize>
  const Element& pick(const Element (&table)[kSize]) {
    return table[below(static_cast<std::uint32_t>(kSize))];
  }

  // -reach to +reach.
  std::int32_t around(std::int32_t reach) {
    return static_cast<std::int32_t>(below(static_cast<std::uint32_t>(2 * reach + 1))) - reach;
  }

 private:
  std::uint64_t state_;
};

}  // namespace ormasim
