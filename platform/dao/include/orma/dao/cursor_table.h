// The rows that a statement gives, one after the other.
//
//   dao::CSqlSession session;
//   dao::CCursorTable rows;
//   if (!rows.Open(session, "SELECT name FROM device WHERE dev_id = :id",
//                  {refl::CValue(std::int64_t{2})}).IsOk()) return;
//   while (rows.FetchNextRow()) use(rows["name"].asText());
//   if (!rows.GetStatus().IsOk()) ...  // the rows ended because the read failed
//
// Thread-safety: thread-compatible. Failures are told by CExecStatus; nothing is thrown but
// std::bad_alloc.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orma/bundle/export.h"
#include "orma/dao/exec_status.h"
#include "orma/refl/value.h"

namespace dao {

class Connection;
class CSqlSession;
class Statement;

class ORMA_API CCursorTable {
 public:
  CCursorTable();
  ~CCursorTable();
  CCursorTable(const CCursorTable&) = delete;
  CCursorTable& operator=(const CCursorTable&) = delete;

  // Runs one statement and stands before its first row; an open one is given up. `parameters`
  // take the places of the statement's placeholders, ":name" each, in their order; an empty value
  // is NULL. Blocks in the database. A statement that failed because the connection was lost is
  // run once more on a new one. The cursor keeps its connection, not the session.
  CExecStatus Open(CSqlSession& session, const std::string& statement,
                   const std::vector<refl::CValue>& parameters = {});
  // Moves to the next row. False when there is none: at the end, with no statement open, or
  // because the read failed, which GetStatus tells.
  bool FetchNextRow();

  // The current row's value in a column, by its name in the result or counted from 0. Empty for
  // NULL, for a column that there is not, and where there is no current row. Integers of every
  // width are integers and floating numbers reals; booleans are 0 and 1; what has no type of its
  // own in CValue (dates, exact decimals) is its text.
  refl::CValue operator[](const std::string& column) const;
  refl::CValue operator[](unsigned long column) const;
  // The number of columns of the open statement's rows; 0 with none open.
  unsigned long GetColumnCount() const;
  // A column's name in the result, counted from 0; empty where there is no such column.
  std::string GetColumnName(unsigned long column) const;

  // How the last Open or FetchNextRow went.
  const CExecStatus& GetStatus() const { return status_; }

 private:
  CExecStatus tryOpen(std::shared_ptr<Connection> connection, const std::string& statement,
                      const std::vector<refl::CValue>& parameters);

  std::unique_ptr<Statement> statement_;
  CExecStatus status_;
};

}  // namespace dao
