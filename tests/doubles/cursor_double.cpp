#include "cursor_double.h"

#include <algorithm>
#include <new>
#include <utility>

#include "orma/dao/cursor_table.h"
#include "orma/dao/sql_session.h"
#include "outage.h"
#include "platform.h"

namespace emf::doubles {

void CursorDouble::gives(std::vector<std::string> columns, std::vector<Row> rows) {
  breaksBehind(std::move(columns), std::move(rows), {});
}

void CursorDouble::breaksBehind(std::vector<std::string> columns, std::vector<Row> rows,
                                dao::CExecStatus failure) {
  std::lock_guard lock(mutex_);
  scripts_.push_back({std::move(columns), std::move(rows), {}, std::move(failure)});
}

void CursorDouble::refuses(dao::CExecStatus failure) {
  std::lock_guard lock(mutex_);
  scripts_.push_back({{}, {}, std::move(failure), {}});
}

void CursorDouble::serverType(int type) {
  std::lock_guard lock(mutex_);
  serverType_ = type;
}

std::vector<std::string> CursorDouble::calls() const {
  std::lock_guard lock(mutex_);
  return calls_;
}

std::vector<CursorDouble::Row> CursorDouble::parameters() const {
  std::lock_guard lock(mutex_);
  return parameters_;
}

void CursorDouble::reset() {
  std::lock_guard lock(mutex_);
  scripts_.clear();
  serverType_ = 0;
  calls_.clear();
  parameters_.clear();
}

void CursorDouble::note(const std::string& call) {
  std::lock_guard lock(mutex_);
  calls_.push_back(call);
}

// From a destructor: a call that there is no memory to note is not noted.
void CursorDouble::noteEnd(const char* call, const std::string& name) noexcept {
  try {
    note(call + name);
  } catch (const std::bad_alloc&) {
  }
}

CursorDouble::Script CursorDouble::open(const std::string& statement, const Row& parameters) {
  std::lock_guard lock(mutex_);
  calls_.push_back("open " + statement);
  parameters_.push_back(parameters);
  const int way = outage("statement", 2);
  if (way == 0) return {{}, {}, {dao::kExecStatementFailed, "outage"}, {}};
  if (way == 1) throw std::bad_alloc();
  if (scripts_.empty()) return {};
  Script script = std::move(scripts_.front());
  scripts_.pop_front();
  return script;
}

int CursorDouble::serverType() {
  std::lock_guard lock(mutex_);
  calls_.emplace_back("server type");
  if (outage("server type", 1) == 0) return dao::kDbServerNone;
  return serverType_;
}

}  // namespace emf::doubles

using emf::doubles::platform;

namespace dao {

// A script being read.
class Statement {
 public:
  explicit Statement(emf::doubles::CursorDouble::Script script) : script_(std::move(script)) {}

  bool next() { return ++fetched_ <= script_.rows.size(); }
  const CExecStatus& ended() const { return script_.ended; }
  const std::vector<std::string>& columns() const { return script_.columns; }
  refl::CValue value(std::size_t column) const {
    const bool onRow = fetched_ > 0 && fetched_ <= script_.rows.size();
    return onRow && column < columns().size() ? script_.rows[fetched_ - 1][column] : refl::CValue();
  }

 private:
  emf::doubles::CursorDouble::Script script_;
  std::size_t fetched_ = 0;
};

CSqlSession::CSqlSession() : CSqlSession(nullptr) {}
CSqlSession::CSqlSession(const char* name) : name_(name != nullptr ? name : "default") {
  platform().cursors.note("session " + name_);
}
CSqlSession::~CSqlSession() { platform().cursors.noteEnd("session gone ", name_); }
int CSqlSession::GetDBServerType() const { return platform().cursors.serverType(); }

CCursorTable::CCursorTable() { platform().cursors.note("cursor"); }
CCursorTable::~CCursorTable() { platform().cursors.noteEnd("cursor gone"); }

CExecStatus CCursorTable::Open(CSqlSession&, const std::string& statement,
                               const std::vector<refl::CValue>& parameters) {
  auto script = platform().cursors.open(statement, parameters);
  status_ = script.opened;
  statement_ = status_.IsOk() ? std::make_unique<Statement>(std::move(script)) : nullptr;
  return status_;
}

bool CCursorTable::FetchNextRow() {
  platform().cursors.note("fetch");
  if (!statement_) return false;
  const int way = emf::doubles::outage("row", 2);
  if (way == 0) status_ = {kExecConnectionLost, "outage"};
  if (way == 1) throw std::bad_alloc();
  if (way == 0) return false;
  if (statement_->next()) return true;
  status_ = statement_->ended();
  return false;
}

refl::CValue CCursorTable::operator[](const std::string& column) const {
  if (!statement_) return {};
  const auto& names = statement_->columns();
  const auto found = std::find(names.begin(), names.end(), column);
  return statement_->value(static_cast<std::size_t>(found - names.begin()));
}

refl::CValue CCursorTable::operator[](unsigned long column) const {
  return statement_ ? statement_->value(column) : refl::CValue();
}

unsigned long CCursorTable::GetColumnCount() const {
  return statement_ ? statement_->columns().size() : 0;
}

std::string CCursorTable::GetColumnName(unsigned long column) const {
  return column < GetColumnCount() ? statement_->columns()[column] : std::string();
}

}  // namespace dao
