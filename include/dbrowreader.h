// Reads the rows that an SQL statement gives, one after the other, and the kind of the database.
//
// Thread-safety: thread-compatible; a reader and its session belong to one thread at a time.
// Failure is told by results and by the status; nothing is thrown but std::bad_alloc. Opening and
// each fetch block in the database, for at most database.statementTimeoutMs. Callers include the
// platform's headers of the types named here.
//
//   DbRowReader reader(0, nullptr);
//   reader.open("SELECT name FROM device WHERE dev_id = :id", {refl::CValue(std::int64_t{2})});
//   std::vector<refl::CValue> row;
//   while (reader.fetchRowByNames(row, {"name"}) == DbRowReader::kRowRead) use(row.back());
//   if (!reader.lastStatus().IsOk()) ...  // there may have been more rows
#pragma once

#include <map>
#include <string>
#include <vector>

#include "emfexport.h"

namespace dao {
class CCursorTable;
class CExecStatus;
class CSqlSession;
}  // namespace dao
namespace refl {
class CValue;
}

// A column that fetchRowByMap reads. The table's name is for the trace alone.
template <class Value>
struct DbColumnOf {
  std::string columnName;
  std::string tableName;
  Value value;  // of the row read last; empty before, for NULL and for an unknown column
};
using DbColumn = DbColumnOf<refl::CValue>;
// The columns to read, by a key of the caller's, in whose order they are read.
using DbRowMap = std::map<std::string, DbColumn>;

class EMF_API DbRowReader {
 public:
  // The results of fetching.
  enum FetchResult : int {
    kRowRead = 0,
    kUnusable = 1,  // no statement could be opened, the reader is closed, or columns are missing
    kNoMoreRows = 6,
  };

  // `setting` is kept and steers nothing. `session` is borrowed and outlives the reader; with null
  // the reader has one of its own, named "default".
  DbRowReader(unsigned int setting, dao::CSqlSession* session);
  DbRowReader(const DbRowReader&) = delete;
  DbRowReader& operator=(const DbRowReader&) = delete;
  ~DbRowReader();

  // Runs one statement that reads and stands before its first row; the rows of an earlier one are
  // given up. `parameters` take the places of the placeholders, ":name" each, in their order; an
  // empty value is NULL. The result is lastStatus: anything but OK makes each fetch give
  // kUnusable, until a statement could be opened.
  const dao::CExecStatus& open(const std::string& statement,
                               const std::vector<refl::CValue>& parameters);
  // Gives up the rows and the cursor: the reader is unusable for good.
  void close();

  // How the last open or fetch went: tells the end of the rows from a failure to read on.
  const dao::CExecStatus& lastStatus() const;
  unsigned int setting() const { return m_setting; }
  // The names of the open statement's columns, in their order.
  std::vector<std::string> columnNames() const;

  // Each gives a FetchResult. With kNoMoreRows and kUnusable the output stays as it was. A column
  // that there is not is traced and has an empty value, and reading goes on: the trace texts that
  // speak of a return are meant as they stand.

  // Replaces the value of every entry.
  int fetchRowByMap(DbRowMap& row);
  // Appends the first `requiredColumns` columns to `out`; kUnusable when there are fewer, and the
  // row is passed over then.
  int fetchRowByIndex(std::vector<refl::CValue>& out, unsigned int requiredColumns);
  // Appends one value for each name to `out`.
  int fetchRowByNames(std::vector<refl::CValue>& out, const std::vector<std::string>& names);

 private:
  // What every fetch does first.
  int nextRow(bool traced);

  dao::CSqlSession* m_pSession;
  dao::CCursorTable* m_pCursorTable;  // owned; null once closed
  long m_status = 0;                  // code of the last open
  bool m_ownsSession;
  unsigned int m_setting;
};

// Whether the configured database has the server type 7, which is PostgreSQL's.
EMF_API bool isDbServerType7();
// The server type: 0 none, 1 SQLite, 7 PostgreSQL.
EMF_API int getDbServerType();

// Prints a status to standard output: with an error its code, three times over, and in any case its
// message.
EMF_API void printDbStatus(const dao::CExecStatus& status);
