#include <soci/sqlite3/soci-sqlite3.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "connection.h"

namespace dao {
namespace {

namespace api = sqlite_api;  // where SOCI puts the declarations of sqlite3.h

struct FileIdentity {
  dev_t device;
  ino_t inode;
};

// Throws std::runtime_error with the reason when there is no such file.
FileIdentity identityOf(const std::string& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) throw std::runtime_error(std::strerror(errno));
  if (!S_ISREG(status.st_mode)) throw std::runtime_error("it is no regular file");
  return {status.st_dev, status.st_ino};
}

bool isStillThere(const std::string& file, const FileIdentity& identity) {
  struct stat status {};
  return stat(file.c_str(), &status) == 0 && status.st_dev == identity.device &&
         status.st_ino == identity.inode;
}

class SqliteRowReader : public RowReader {
 public:
  explicit SqliteRowReader(api::sqlite3_stmt* statement) : statement_(statement) {}

  std::vector<std::string> columnNames() const override {
    std::vector<std::string> names;
    for (int i = 0; i < api::sqlite3_column_count(statement_); ++i) {
      const char* name = api::sqlite3_column_name(statement_, i);
      if (name == nullptr) throw std::bad_alloc();
      names.emplace_back(name);
    }
    return names;
  }

  // By the value's own type: SQLite's columns may hold any.
  refl::CValue value(std::size_t index) const override {
    const int column = static_cast<int>(index);
    switch (api::sqlite3_column_type(statement_, column)) {
      case SQLITE_INTEGER:
        return refl::CValue(std::int64_t{api::sqlite3_column_int64(statement_, column)});
      case SQLITE_FLOAT:
        return refl::CValue(api::sqlite3_column_double(statement_, column));
      case SQLITE_TEXT: {
        const auto* text =
            reinterpret_cast<const char*>(api::sqlite3_column_text(statement_, column));
        return refl::CValue(std::string(text, length(text, column)));
      }
      case SQLITE_BLOB: {
        const auto* bytes =
            static_cast<const unsigned char*>(api::sqlite3_column_blob(statement_, column));
        return refl::CValue(refl::Bytes(bytes, bytes + length(bytes, column)));
      }
      default:
        return {};
    }
  }

 private:
  // SQLite gives null for an empty blob too, and then the length is 0.
  std::size_t length(const void* data, int column) const {
    const int bytes = api::sqlite3_column_bytes(statement_, column);
    if (data == nullptr && bytes != 0) throw std::bad_alloc();
    return static_cast<std::size_t>(bytes);
  }

  api::sqlite3_stmt* statement_;
};

// An open database file stays readable when it has been replaced or removed, and would show the
// old contents for ever: that counts as a lost connection.
class SqliteConnection : public Connection {
 public:
  SqliteConnection(const ConnectionSettings& settings, FileIdentity identity)
      : Connection(settings, soci::sqlite3, "db=\"" + settings.target + "\" readonly=true"),
        identity_(identity) {
    auto* backend = static_cast<soci::sqlite3_session_backend*>(session().get_backend());
    api::sqlite3_busy_timeout(backend->conn_, static_cast<int>(settings.lockWait.count()));
    // A file that is open for reading can still be copied into a new one, and temporary tables
    // written: those are refused as well.
    session() << "PRAGMA query_only = ON";
    api::sqlite3_progress_handler(backend->conn_, kStepsBetweenLooks, &SqliteConnection::isOver,
                                  this);
  }

  void beginWait(std::chrono::steady_clock::time_point end) override { end_ = end; }
  void endWait() noexcept override { end_ = std::chrono::steady_clock::time_point::max(); }

  bool isStale() const override { return !isStillThere(settings().target, identity_); }

  bool isLost() override { return isStale(); }

  // SQLite itself prepares again what has become outdated.
  bool isOutdated(const std::exception&) const override { return false; }

  std::unique_ptr<soci::blob> makeBlob(const refl::Bytes& bytes) override {
    auto blob = std::make_unique<soci::blob>(session());
    blob->write(0, reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return blob;
  }

  std::unique_ptr<RowReader> makeRowReader(
      soci::details::statement_backend& statement) const override {
    return std::make_unique<SqliteRowReader>(
        static_cast<soci::sqlite3_statement_backend&>(statement).stmt_);
  }

 private:
  void makeIdle(soci::details::statement_backend& statement) const override {
    auto& backend = static_cast<soci::sqlite3_statement_backend&>(statement);
    api::sqlite3_reset(backend.stmt_);
    api::sqlite3_clear_bindings(backend.stmt_);
    backend.useData_.clear();
    backend.boundByPos_ = false;
  }

  // Called by SQLite in between; anything but 0 ends the statement.
  static int isOver(void* self) {
    return std::chrono::steady_clock::now() < static_cast<SqliteConnection*>(self)->end_ ? 0 : 1;
  }

  // Some ten microseconds' worth of SQLite's virtual machine.
  static constexpr int kStepsBetweenLooks = 1000;

  const FileIdentity identity_;
  std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::time_point::max();
};

}  // namespace

std::shared_ptr<Connection> openSqlite(const ConnectionSettings& settings) {
  if (settings.target.find('"') != std::string::npos) {
    throw std::runtime_error(
        "the path holds a double quote, which the database library cannot take");
  }
  // Before the file is opened: should it be replaced in between, the connection counts as stale.
  const FileIdentity identity = identityOf(settings.target);
  return std::make_shared<SqliteConnection>(settings, identity);
}

}  // namespace dao
