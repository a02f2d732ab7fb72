// The inventory database read for itself, through SQLite alone: what the programs are measured
// against.
//
//   Inventory inventory(file);
//   inventory.rows("SELECT dev_id, name FROM device ORDER BY dev_id");
//
// Thread-safety: thread-compatible. Failure: std::runtime_error with SQLite's words.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <string>
#include <vector>

namespace systemtest {

using Rows = std::vector<std::vector<std::string>>;

class Inventory {
 public:
  explicit Inventory(const std::filesystem::path& file);
  Inventory(const Inventory&) = delete;
  Inventory& operator=(const Inventory&) = delete;
  ~Inventory();

  // Every value as text; statements may also write.
  Rows rows(const std::string& statement);

 private:
  sqlite3* handle_ = nullptr;
};

}  // namespace systemtest
