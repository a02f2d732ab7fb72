#include "connection_settings.h"

#include <string_view>

#include "orma/bundle/configuration.h"

namespace dao {
namespace {

constexpr std::string_view kSqlitePrefix = "sqlite:";
constexpr std::string_view kPostgresqlPrefix = "postgresql:";
constexpr std::string_view kForms = "sqlite:PATH or postgresql:CONNINFO";

bool startsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// The value itself stays out of the messages: it may hold a password.
[[noreturn]] void refuse(const std::string& what) {
  throw DatabaseError(kExecNotConfigured, "the configuration key database.connection " + what +
                                              "; set it to " + std::string(kForms));
}

}  // namespace

ConnectionSettings connectionSettings(const orma::Configuration& configuration) {
  const std::string connection = configuration.text("database.connection");
  ConnectionSettings settings;
  settings.lockWait = std::chrono::milliseconds(configuration.integer("database.busyTimeoutMs"));
  settings.passwordFile = configuration.path("database.passwordFile");
  settings.statementLimit =
      std::chrono::milliseconds(configuration.integer("database.statementTimeoutMs"));
  if (connection.empty()) refuse("is not set");
  if (startsWith(connection, kSqlitePrefix)) {
    settings.server = kDbServerSqlite;
    settings.target = configuration.absolutePath(connection.substr(kSqlitePrefix.size()));
    if (settings.target.empty()) refuse("names no file");
  } else if (startsWith(connection, kPostgresqlPrefix)) {
    settings.server = kDbServerPostgresql;
    settings.target = connection.substr(kPostgresqlPrefix.size());
    // An address of the form postgresql://host/name is one as a whole.
    if (startsWith(settings.target, "//")) settings.target = connection;
  } else {
    refuse("names no known kind of database");
  }
  return settings;
}

}  // namespace dao
