#include "sqlite.h"

#include "error.h"

namespace ormasim {
namespace {

constexpr int kBusyTimeoutMs = 5000;
constexpr std::int64_t kLayoutVersion = 2;

int openFlags(Database::Mode mode) {
  switch (mode) {
    case Database::Mode::ReadOnly:
      return SQLITE_OPEN_READONLY;
    case Database::Mode::ReadWrite:
      return SQLITE_OPEN_READWRITE;
    case Database::Mode::Create:
      break;
  }
  return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
}

const char* advice(int code) {
  switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "; another program holds it, try again when that has ended";
    case SQLITE_CANTOPEN:
      return "; see that it exists and may be read, or make it with 'ormasim generate'";
    case SQLITE_NOTADB:
      return "; make an inventory with 'ormasim generate' or 'ormasim import'";
    case SQLITE_FULL:
      return "; free some space on its disk";
    default:
      return "";
  }
}

}  // namespace

Database::Database(const std::string& file, Mode mode) : file_(file) {
  sqlite3* handle = nullptr;
  const int code =
      sqlite3_open_v2(file.c_str(), &handle, openFlags(mode) | SQLITE_OPEN_NOMUTEX, nullptr);
  handle_.reset(handle);
  if (code != SQLITE_OK) fail("cannot open the database");
  sqlite3_busy_timeout(handle, kBusyTimeoutMs);
}

void Database::execute(const std::string& sql) {
  if (sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    fail("cannot use the database");
  }
}

void Database::requireInventory() {
  // A preparation that fails says "no such table", or that the file is no database at all.
  Statement version(*this, "SELECT version FROM inventory_version");
  if (!version.step() || version.integer(0) != kLayoutVersion) {
    throw SimError("database " + file_ + ": its layout is not version " +
                   std::to_string(kLayoutVersion) + "; make it anew with 'ormasim generate'");
  }
  version.reset();
  for (const char* table :
       {"subnet", "device", "device_location", "frame", "port", "link", "main_type", "resource",
        "resource_attribute", "device_place", "keeper", "device_keeper"}) {
    Statement probe(*this, std::string("SELECT 1 FROM ") + table + " LIMIT 1");
    probe.step();
  }
}

void Database::fail(const std::string& action) const {
  const std::string reason = handle_ ? sqlite3_errmsg(handle()) : "out of memory";
  const int code = handle_ ? sqlite3_errcode(handle()) : SQLITE_NOMEM;
  std::string what = action + " " + file_ + ": " + reason + advice(code);
  if (reason.rfind("no such table", 0) == 0) {
    what += "; it is no inventory, make one with 'ormasim generate' or 'ormasim import'";
  }
  throw SimError(what);
}

Statement::Statement(Database& database, std::string_view sql) : database_(database) {
  sqlite3_stmt* handle = nullptr;
  const int code = sqlite3_prepare_v3(database.handle(), sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
  handle_.reset(handle);
  if (code != SQLITE_OK) database.fail("cannot query the database");
}

void Statement::bind(int index, std::int64_t value) {
  if (sqlite3_bind_int64(handle_.get(), index, value) != SQLITE_OK) {
    database_.fail("cannot bind a value for the database");
  }
}

void Statement::bind(int index, std::string_view value) {
  // A null pointer would bind NULL where the empty text is meant.
  const char* bytes = value.empty() ? "" : value.data();
  if (sqlite3_bind_text64(handle_.get(), index, bytes, value.size(), SQLITE_STATIC, SQLITE_UTF8) !=
      SQLITE_OK) {
    database_.fail("cannot bind a text for the database");
  }
}

bool Statement::step() {
  const int code = sqlite3_step(handle_.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  sqlite3_reset(handle_.get());
  database_.fail("cannot run a statement on the database");
}

void Statement::reset() { sqlite3_reset(handle_.get()); }

std::string_view Statement::text(int column) const {
  const auto* bytes = sqlite3_column_text(handle_.get(), column);
  if (bytes == nullptr) return {};
  return {reinterpret_cast<const char*>(bytes),
          static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column))};
}

Transaction::Transaction(Database& database, const char* begin) : database_(database) {
  database.execute(begin);
}

Transaction::~Transaction() {
  if (open_) sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
  database_.execute("COMMIT");
  open_ = false;
}

}  // namespace ormasim
