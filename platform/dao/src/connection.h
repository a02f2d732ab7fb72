// One open connection with a database, over SOCI. SOCI's exceptions stop at the users of this
// header.
#pragma once

#include <soci/soci.h>

#include <memory>
#include <string>
#include <vector>

#include "connection_settings.h"
#include "orma/refl/value.h"

namespace dao {

// Reads the rows of one running statement as the database's own library holds them. SOCI's row
// type is not used for it: it cuts SQLite's 64-bit integers to 32 and turns texts in number
// columns into 0.
class RowReader {
 public:
  virtual ~RowReader() = default;
  virtual std::vector<std::string> columnNames() const = 0;
  virtual refl::CValue value(std::size_t column) const = 0;
};

// A statement backend, cleaned up before it is deleted, as SOCI's own statements do it.
struct StatementDeleter {
  void operator()(soci::details::statement_backend* statement) const {
    statement->clean_up();
    delete statement;
  }
};
using StatementHandle = std::unique_ptr<soci::details::statement_backend, StatementDeleter>;

class Connection {
 public:
  // Throws DatabaseError (kExecNotConnected).
  static std::shared_ptr<Connection> open(const ConnectionSettings& settings);

  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  virtual ~Connection() = default;

  const ConnectionSettings& settings() const { return settings_; }

  // Whether it is seen without asking the server that what it leads to is gone.
  virtual bool isStale() const = 0;
  // The same after a failed read; may ask the server.
  virtual bool isLost() = 0;

  StatementHandle makeStatement() { return StatementHandle(session_.make_statement_backend()); }
  virtual std::unique_ptr<RowReader> makeRowReader(
      soci::details::statement_backend& statement) const = 0;

 protected:
  // Throws what SOCI throws.
  Connection(ConnectionSettings settings, const soci::backend_factory& factory,
             const std::string& connectString)
      : settings_(std::move(settings)), session_(factory, connectString) {}

  soci::session& session() { return session_; }

 private:
  const ConnectionSettings settings_;
  soci::session session_;
};

std::shared_ptr<Connection> openSqlite(const ConnectionSettings& settings);
std::shared_ptr<Connection> openPostgresql(const ConnectionSettings& settings);

// A failure's text as one line, without the context that SOCI may add to it: statements with their
// parameters, whole.
std::string reasonOf(const std::exception& failure);

}  // namespace dao
