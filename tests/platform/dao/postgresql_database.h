// A database of the program's own PostgreSQL server.
#pragma once

#include <libpq-fe.h>

#include <string>

#include "private_postgres.h"
#include "test_database.h"

namespace dao::test {

// A connection of the test's own.
class PostgresqlClient {
 public:
  explicit PostgresqlClient(const std::string& conninfo);
  ~PostgresqlClient() { PQfinish(handle_); }
  PostgresqlClient(const PostgresqlClient&) = delete;
  PostgresqlClient& operator=(const PostgresqlClient&) = delete;

  // Runs statements and gives the first value of the last one's answer, empty when it has none.
  // Throws std::runtime_error with the server's reason.
  std::string run(const std::string& statements);

 private:
  PGconn* handle_;
};

// Makes a database of that name; gives the server's reason when it cannot.
void createDatabase(PrivatePostgres& server, const std::string& name);

}  // namespace dao::test
