// A database file and its prepared statements, as owning values.
//
//   Database database("net.db", Database::Mode::ReadOnly);
//   Statement names(database, "SELECT name FROM device WHERE dev_id > ?");
//   names.bindAll(7);
//   while (names.step()) use(names.text(0));
//
// Thread-safety: thread-compatible; a connection serves one thread at a time.
// Failure: SimError with the file, SQLite's reason and what to do where that is known.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace ormasim {

class Database {
 public:
  enum class Mode { ReadOnly, ReadWrite, Create };

  // Waits up to five seconds for locks held by others, here and in every statement.
  Database(const std::string& file, Mode mode);

  // One or more statements without results.
  void execute(const std::string& sql);
  // Makes sure that the file is an inventory of the layout that this program knows.
  void requireInventory();

  const std::string& file() const { return file_; }
  sqlite3* handle() const { return handle_.get(); }
  [[noreturn]] void fail(const std::string& action) const;

 private:
  struct Closer {
    // Waits for statements that outlive their database, where sqlite3_close would leak it.
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  std::string file_;
  std::unique_ptr<sqlite3, Closer> handle_;
};

class Statement {
 public:
  Statement(Database& database, std::string_view sql);

  void bind(int index, std::int64_t value);
  // Borrows the bytes until the next bind or reset.
  void bind(int index, std::string_view value);

  template <typename... Values>
  void bindAll(const Values&... values) {
    int index = 0;
    (bind(++index, values), ...);
  }

  // Binds, runs to the end and resets: for statements without results.
  template <typename... Values>
  void run(const Values&... values) {
    bindAll(values...);
    step();
    reset();
  }

  // True when a row is there.
  bool step();
  void reset();

  int columns() const { return sqlite3_column_count(handle_.get()); }
  std::int64_t integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }
  // Valid until the next step or reset.
  std::string_view text(int column) const;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
  };
  Database& database_;
  std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

// A transaction that is rolled back unless it was committed.
class Transaction {
 public:
  explicit Transaction(Database& database, const char* begin = "BEGIN");
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void commit();

 private:
  Database& database_;
  bool open_ = true;
};

}  // namespace ormasim
