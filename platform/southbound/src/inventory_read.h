// Reads of the inventory database that fail as the southbound operations do: with a
// ProcessException, its reason in `detail` and, as one line of level 0, in the log.
//
// Thread-safety: thread-safe.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "orma/dao/cursor_table.h"

namespace orma::southbound {

using RowUse = std::function<void(const dao::CCursorTable&)>;

// Runs one statement. Throws when the database cannot be asked, and when `use` finds a value that
// is none of the layout's (std::range_error).
void readRows(const char* operation, const std::string& statement,
              const std::vector<refl::CValue>& parameters, const RowUse& use);

// A column of the current row as a number of 32 bits. Throws std::range_error when it is none.
std::int32_t number(const dao::CCursorTable& row, unsigned long column);

// A statement over a list of keys, each of one or more numbers. It has three texts, for one key,
// for a few and for a whole batch, so that each is prepared once; what is missing in a list is
// filled by repeating its last key, which changes no answer. SQLite has texts of its own: it looks
// up each named parameter among all that stand before it.
class KeyedStatement {
 public:
  // The text is `start`, the first key, the further ones behind a "," each, and ")". In a key each
  // "?" is a number.
  KeyedStatement(const char* operation, const std::string& start, const std::string& firstKey,
                 const std::string& furtherKey);

  // Any number of keys, one after the other; a batch is one statement. No keys, no statement.
  void readRows(const std::vector<std::int64_t>& keys, const RowUse& use) const;

 private:
  static constexpr std::array<std::size_t, 3> kKeysOfText = {1, 32, 2000};
  using Texts = std::array<std::string, kKeysOfText.size()>;

  const char* operation_;
  std::size_t numbersOfKey_;
  Texts named_;
  Texts unnamed_;
};

}  // namespace orma::southbound
