#include "postgresql_database.h"

#include <stdexcept>

namespace dao::test {
namespace {

class ServerDatabase : public TestDatabase {
 public:
  ServerDatabase(PrivatePostgres& server, const std::string& name)
      : conninfo_(server.conninfo(name)) {
    createDatabase(server, name);
  }
  std::string connection() const override { return "postgresql:" + conninfo_; }
  void run(const std::string& statements) override { PostgresqlClient(conninfo_).run(statements); }

 private:
  const std::string conninfo_;
};

}  // namespace

PostgresqlClient::PostgresqlClient(const std::string& conninfo)
    : handle_(PQconnectdb(conninfo.c_str())) {
  if (PQstatus(handle_) != CONNECTION_OK) {
    const std::string reason = PQerrorMessage(handle_);
    PQfinish(handle_);
    throw std::runtime_error(reason);
  }
}

std::string PostgresqlClient::run(const std::string& statements) {
  PGresult* result = PQexec(handle_, statements.c_str());
  const ExecStatusType status = PQresultStatus(result);
  std::string value;
  if (status == PGRES_TUPLES_OK && PQntuples(result) > 0) value = PQgetvalue(result, 0, 0);
  PQclear(result);
  if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK) {
    throw std::runtime_error(PQerrorMessage(handle_));
  }
  return value;
}

void createDatabase(PrivatePostgres& server, const std::string& name) {
  PostgresqlClient(server.conninfo("postgres")).run("CREATE DATABASE \"" + name + "\"");
}

std::unique_ptr<TestDatabase> makeTestDatabase(std::string& whyNot) {
  static int number = 0;
  PrivatePostgres* server = PrivatePostgres::instance(whyNot);
  if (server == nullptr) return nullptr;
  return std::make_unique<ServerDatabase>(*server, "test" + std::to_string(++number));
}

}  // namespace dao::test
