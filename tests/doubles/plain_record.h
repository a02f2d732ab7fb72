// Records whose fields fieldsOf names, as values.
//
//   expectPlainRecord(someNode());
//
// Thread-safety: immutable.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <tuple>
#include <type_traits>
#include <utility>

// A record made where every byte was `filling`.
template <typename Record>
class MadeOver {
 public:
  explicit MadeOver(unsigned char filling) {
    std::memset(place_, filling, sizeof place_);
    record_ = new (place_) Record;
  }
  MadeOver(const MadeOver&) = delete;
  MadeOver& operator=(const MadeOver&) = delete;
  ~MadeOver() { record_->~Record(); }

  const Record& operator*() const { return *record_; }
  const Record* operator->() const { return record_; }

 private:
  alignas(Record) unsigned char place_[sizeof(Record)];
  Record* record_;
};

template <typename Record>
bool startsEmptyOver(unsigned char filling) {
  const MadeOver<Record> record(filling);
  return std::apply(
      [](const auto&... field) { return ((field == std::decay_t<decltype(field)>()) && ...); },
      fieldsOf(*record));
}

// That the record starts with numbers 0 and empty texts, and is copied, assigned and moved as a
// value.
template <typename Record>
void expectPlainRecord(const Record& some) {
  EXPECT_TRUE(startsEmptyOver<Record>(0x00));
  EXPECT_TRUE(startsEmptyOver<Record>(0xFF));
  Record copy = some;
  EXPECT_EQ(copy, some);
  Record assigned;
  assigned = copy;
  EXPECT_EQ(assigned, some);
  const Record moved = std::move(copy);
  EXPECT_EQ(moved, some);
  assigned = Record();
  EXPECT_EQ(assigned, Record());
}
