#include "orma/dao/cursor_table.h"

#include <algorithm>

#include "orma/dao/sql_session.h"
#include "orma/metrics/outside_services.h"
#include "statement.h"

namespace dao {
namespace {

using orma::metrics::Outcome;

void count(orma::metrics::Exchange& exchange, const CExecStatus& status) {
  switch (status.GetErrCode()) {
    case kExecOk:
      return exchange.arrived(Outcome::kAnswered);
    case kExecStatementFailed:
      return exchange.arrived(Outcome::kRefused);
    case kExecNotConfigured:
      return exchange.cancel();
    default:
      return exchange.arrived(Outcome::kUnreached);
  }
}

}  // namespace

CCursorTable::CCursorTable() = default;
CCursorTable::~CCursorTable() = default;

CExecStatus CCursorTable::Open(CSqlSession& session, const std::string& statement,
                               const std::vector<refl::CValue>& parameters) {
  statement_.reset();
  orma::metrics::Exchange exchange(orma::metrics::OutsideService::kDatabase);
  try {
    status_ = tryOpen(session.connection(), statement, parameters);
    if (status_.GetErrCode() == kExecConnectionLost) {
      status_ = tryOpen(session.freshConnection(), statement, parameters);
    }
  } catch (const DatabaseError& failure) {
    status_ = CExecStatus(failure.code(), failure.what());
  }
  count(exchange, status_);
  if (statement_) statement_->countWith(std::move(exchange));
  return status_;
}

CExecStatus CCursorTable::tryOpen(std::shared_ptr<Connection> connection,
                                  const std::string& statement,
                                  const std::vector<refl::CValue>& parameters) {
  try {
    statement_ = std::make_unique<Statement>(connection, statement, parameters);
    return {};
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& failure) {
    return {connection->isLost() ? kExecConnectionLost : kExecStatementFailed, reasonOf(failure)};
  }
}

bool CCursorTable::FetchNextRow() {
  if (!statement_) return false;
  try {
    return statement_->next();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& failure) {
    statement_->countAsRefused();
    status_ = CExecStatus(kExecStatementFailed, reasonOf(failure));
    return false;
  }
}

refl::CValue CCursorTable::operator[](const std::string& column) const {
  if (!statement_) return {};
  const auto& names = statement_->columnNames();
  const auto found = std::find(names.begin(), names.end(), column);
  return statement_->value(static_cast<std::size_t>(found - names.begin()));
}

refl::CValue CCursorTable::operator[](unsigned long column) const {
  return statement_ ? statement_->value(column) : refl::CValue();
}

unsigned long CCursorTable::GetColumnCount() const {
  return statement_ ? statement_->columnNames().size() : 0;
}

std::string CCursorTable::GetColumnName(unsigned long column) const {
  return column < GetColumnCount() ? statement_->columnNames()[column] : std::string();
}

}  // namespace dao
