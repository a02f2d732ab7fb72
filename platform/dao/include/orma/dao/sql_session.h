// A session with the configured database ("database.connection"), for reading only.
//
// The connection is opened at the first statement and opened anew when it was lost or another
// configuration was installed. Construction neither blocks nor fails.
//
// Thread-safety: thread-compatible; a session and the cursors on it belong to one thread at a time.
#pragma once

#include <memory>
#include <string>

#include "orma/bundle/export.h"

namespace dao {

class Connection;

// The values of GetDBServerType.
enum DbServerType : int {
  kDbServerNone = 0,  // no database is configured, or none that is known
  kDbServerSqlite = 1,
  kDbServerPostgresql = 7,
};

class ORMA_API CSqlSession {
 public:
  // The session named "default".
  CSqlSession();
  // Every name leads to the configured database; null counts as "default".
  explicit CSqlSession(const char* name);
  ~CSqlSession();
  CSqlSession(const CSqlSession&) = delete;
  CSqlSession& operator=(const CSqlSession&) = delete;

  const std::string& GetName() const { return name_; }
  // A DbServerType, by the configuration alone.
  int GetDBServerType() const;

 private:
  friend class CCursorTable;

  // Both throw DatabaseError.
  std::shared_ptr<Connection> connection();
  std::shared_ptr<Connection> freshConnection();

  std::string name_;
  std::shared_ptr<Connection> connection_;
};

}  // namespace dao
