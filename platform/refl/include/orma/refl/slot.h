// The place of a descriptor that is filled once, at first use, and lives as long as the library
// that holds the slot.
//
// Thread-safety: thread-safe. Only the descriptor's own class fills a slot.
//
//   if (slot.isEmpty()) refl::CClassInfor::InitClassInfor(slot, ...);
//   use(slot.descriptor());
#pragma once

#include <atomic>

namespace refl {

template <typename Descriptor>
class Slot {
 public:
  constexpr Slot() = default;
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;

  // False means that what descriptor() gives is complete.
  bool isEmpty() const noexcept { return !filled_.load(std::memory_order_acquire); }
  const Descriptor& descriptor() const noexcept { return descriptor_; }

 private:
  friend Descriptor;

  Descriptor descriptor_;
  std::atomic<bool> filled_{false};
  bool filling_ = false;  // guarded by the lock of all descriptors
};

}  // namespace refl
