#include "inventory.h"

#include <stdexcept>

namespace systemtest {

Inventory::Inventory(const std::filesystem::path& file) {
  if (::sqlite3_open_v2(file.c_str(), &handle_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
    const std::string reason = ::sqlite3_errmsg(handle_);
    ::sqlite3_close(handle_);
    throw std::runtime_error(file.string() + ": " + reason);
  }
}

Inventory::~Inventory() { ::sqlite3_close(handle_); }

Rows Inventory::rows(const std::string& statement) {
  Rows rows;
  const auto append = [](void* list, int count, char** values, char**) {
    std::vector<std::string> row;
    for (int i = 0; i < count; ++i) row.emplace_back(values[i] == nullptr ? "" : values[i]);
    static_cast<Rows*>(list)->push_back(std::move(row));
    return 0;
  };
  if (::sqlite3_exec(handle_, statement.c_str(), append, &rows, nullptr) != SQLITE_OK) {
    throw std::runtime_error(statement + ": " + ::sqlite3_errmsg(handle_));
  }
  return rows;
}

}  // namespace systemtest
