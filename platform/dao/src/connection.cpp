#include "connection.h"

#include <sstream>

namespace dao {

std::shared_ptr<Connection> Connection::open(const ConnectionSettings& settings) {
  const bool isSqlite = settings.server == kDbServerSqlite;
  const std::string what =
      isSqlite ? "the database file " + settings.target : std::string("the PostgreSQL database");
  try {
    return isSqlite ? openSqlite(settings) : openPostgresql(settings);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& failure) {
    throw DatabaseError(kExecNotConnected, "cannot open " + what + ": " + reasonOf(failure));
  }
}

std::string reasonOf(const std::exception& failure) {
  const auto* ofSoci = dynamic_cast<const soci::soci_error*>(&failure);
  const std::string text = ofSoci != nullptr ? ofSoci->get_error_message() : failure.what();
  std::string line;
  std::istringstream words(text);
  for (std::string word; words >> word;) line += (line.empty() ? "" : " ") + word;
  return line;
}

}  // namespace dao
