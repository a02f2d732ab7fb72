// Values by text, in one flat table that holds the texts themselves: a look-up among many thousands
// waits for one place in memory, where a node-based container waits for one after the other.
//
//   emf::TextIndex<std::size_t> places(list.size());
//   places.insert(key, 3);
//   const std::size_t* place = places.find(key);  // null: not there
//
// Thread-safety: thread-compatible.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace emf {

template <class Value>
class TextIndex {
 public:
  // Room for that many texts, and no more.
  explicit TextIndex(std::size_t capacity) : slots_(slotCount(capacity)) {}

  // Files the value; of two with one text the first stays. Whether it was filed.
  bool insert(const std::string& text, const Value& value) {
    const std::size_t hash = hashOf(text);
    Slot& slot = slots_[placeOf(text, hash)];
    if (slot.hash != 0) return false;
    slot = {hash, text, value};
    return true;
  }

  const Value* find(const std::string& text) const {
    const Slot& slot = slots_[placeOf(text, hashOf(text))];
    return slot.hash != 0 ? &slot.value : nullptr;
  }

 private:
  struct Slot {
    std::size_t hash = 0;  // 0: empty
    std::string text;
    Value value{};
  };

  static std::size_t hashOf(const std::string& text) { return std::hash<std::string>()(text) | 1; }

  // A power of two, at most two thirds full.
  static std::size_t slotCount(std::size_t capacity) {
    std::size_t count = 4;
    while (count * 2 < capacity * 3) count *= 2;
    return count;
  }

  // The slot of the text, or the empty one where it belongs.
  std::size_t placeOf(const std::string& text, std::size_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = (hash >> 1) & mask;
    while (slots_[place].hash != 0 && (slots_[place].hash != hash || slots_[place].text != text)) {
      place = (place + 1) & mask;
    }
    return place;
  }

  std::vector<Slot> slots_;
};

}  // namespace emf
