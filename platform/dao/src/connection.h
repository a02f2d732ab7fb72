// One open connection with a database, over SOCI. SOCI's exceptions stop at the users of this
// header.
#pragma once

#include <soci/soci.h>

#include <chrono>
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

  // A prepared statement of that text which nobody uses now; null when there is none.
  StatementHandle takePrepared(const std::string& text);
  // A new one. Throws what SOCI throws.
  StatementHandle prepare(const std::string& text);
  // Keeps a statement that ran without failure for the next use of its text. Of those kept, the
  // one unused for longest gives way.
  void keepPrepared(std::string text, StatementHandle statement);
  // Whether a kept statement failed only because of what has changed since it was prepared.
  virtual bool isOutdated(const std::exception& failure) const = 0;

  // Bytes as a parameter; null where the database takes them as a text in hexadecimal. Throws what
  // SOCI throws.
  virtual std::unique_ptr<soci::blob> makeBlob(const refl::Bytes& bytes) = 0;

  // Between the two, a wait for the database ends in a failure soon after that time.
  virtual void beginWait(std::chrono::steady_clock::time_point end) = 0;
  virtual void endWait() noexcept = 0;

  virtual std::unique_ptr<RowReader> makeRowReader(
      soci::details::statement_backend& statement) const = 0;

 protected:
  struct Prepared {
    std::string text;
    StatementHandle statement;
  };

  // Throws what SOCI throws.
  Connection(ConnectionSettings settings, const soci::backend_factory& factory,
             const std::string& connectString)
      : settings_(std::move(settings)), session_(factory, connectString) {
    prepared_.reserve(kMostPrepared);
  }

  soci::session& session() { return session_; }
  std::vector<Prepared>& prepared() { return prepared_; }
  // Lets go of the statement's rows, its locks and the values bound to it.
  virtual void makeIdle(soci::details::statement_backend& statement) const = 0;

 private:
  static constexpr std::size_t kMostPrepared = 16;

  const ConnectionSettings settings_;
  soci::session session_;
  std::vector<Prepared> prepared_;  // in the order of their last uses
};

// One wait for the database, which has as long as a statement may take.
class DatabaseWait {
 public:
  explicit DatabaseWait(Connection& connection)
      : connection_(connection),
        end_(std::chrono::steady_clock::now() + connection.settings().statementLimit) {
    connection_.beginWait(end_);
  }
  ~DatabaseWait() { connection_.endWait(); }
  DatabaseWait(const DatabaseWait&) = delete;
  DatabaseWait& operator=(const DatabaseWait&) = delete;

  // A failure once the time is over is told as that.
  template <typename Call>
  auto operator()(Call call) const {
    try {
      return call();
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::exception&) {
      if (std::chrono::steady_clock::now() < end_) throw;
      throw std::runtime_error("the statement took longer than " +
                               std::to_string(connection_.settings().statementLimit.count()) +
                               " ms (database.statementTimeoutMs)");
    }
  }

 private:
  Connection& connection_;
  const std::chrono::steady_clock::time_point end_;
};

std::shared_ptr<Connection> openSqlite(const ConnectionSettings& settings);
std::shared_ptr<Connection> openPostgresql(const ConnectionSettings& settings);

// A failure's text as one line, without the context that SOCI may add to it: statements with their
// parameters, whole.
std::string reasonOf(const std::exception& failure);

}  // namespace dao
