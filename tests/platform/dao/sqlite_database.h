// An SQLite file of a test.
#pragma once

#include <sqlite3.h>

#include <string>

#include "test_database.h"

namespace dao::test {

// A connection of the test's own with a database file, which is made when it is not there.
class SqliteFile : public TestDatabase {
 public:
  explicit SqliteFile(const std::string& path);
  ~SqliteFile() override;
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  std::string connection() const override { return "sqlite:" + path_; }
  void run(const std::string& statements) override;

 private:
  const std::string path_;
  sqlite3* handle_ = nullptr;
};

}  // namespace dao::test
