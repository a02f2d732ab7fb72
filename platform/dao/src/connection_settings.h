// Where the configured database is and how it is spoken to.
#pragma once

#include <chrono>
#include <stdexcept>
#include <string>

#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"

namespace orma {
class Configuration;
}

namespace dao {

// Why there is no connection. Its text never holds a password.
class DatabaseError : public std::runtime_error {
 public:
  DatabaseError(ExecCode code, const std::string& message)
      : std::runtime_error(message), code_(code) {}
  ExecCode code() const { return code_; }

 private:
  ExecCode code_;
};

struct ConnectionSettings {
  DbServerType server = kDbServerNone;
  std::string target;        // SQLite: the file's absolute path; PostgreSQL: as libpq takes it
  std::string passwordFile;  // PostgreSQL: as libpq takes it; empty: the user's own
  std::chrono::milliseconds lockWait{0};
  std::chrono::milliseconds statementLimit{0};

  friend bool operator==(const ConnectionSettings& a, const ConnectionSettings& b) {
    return a.server == b.server && a.target == b.target && a.passwordFile == b.passwordFile &&
           a.lockWait == b.lockWait && a.statementLimit == b.statementLimit;
  }
};

// Throws DatabaseError (kExecNotConfigured) where the configuration names no known database.
ConnectionSettings connectionSettings(const orma::Configuration& configuration);

}  // namespace dao
