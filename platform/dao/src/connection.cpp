#include "connection.h"

#include <algorithm>
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

StatementHandle Connection::takePrepared(const std::string& text) {
  const auto entry = std::find_if(prepared_.begin(), prepared_.end(),
                                  [&text](const Prepared& kept) { return kept.text == text; });
  if (entry == prepared_.end()) return nullptr;
  StatementHandle statement = std::move(entry->statement);
  prepared_.erase(entry);
  return statement;
}

StatementHandle Connection::prepare(const std::string& text) {
  const DatabaseWait wait(*this);
  StatementHandle statement(session_.make_statement_backend());
  statement->alloc();
  wait([&] { statement->prepare(text, soci::details::st_repeatable_query); });
  return statement;
}

void Connection::keepPrepared(std::string text, StatementHandle statement) {
  makeIdle(*statement);
  if (prepared_.size() == kMostPrepared) {
    const DatabaseWait wait(*this);  // the server hears of what it may forget
    prepared_.erase(prepared_.begin());
  }
  prepared_.push_back({std::move(text), std::move(statement)});
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
