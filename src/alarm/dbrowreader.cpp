#include "dbrowreader.h"

#include <ace/OS_NS_stdio.h>

#include <memory>
#include <utility>

#include "filelogs.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"

namespace {

constexpr char kSessionName[] = "default";
constexpr int kServerType7 = 7;

// Appends a row of values, whole or not at all.
template <class Append>
void appendRow(std::vector<refl::CValue>& out, Append append) {
  const std::size_t before = out.size();
  try {
    append();
  } catch (...) {
    out.resize(before);
    throw;
  }
}

}  // namespace

DbRowReader::DbRowReader(unsigned int setting, dao::CSqlSession* session)
    : m_pSession(session), m_ownsSession(session == nullptr), m_setting(setting) {
  std::unique_ptr<dao::CSqlSession> own;
  if (m_ownsSession) own = std::make_unique<dao::CSqlSession>(kSessionName);
  m_pCursorTable = new dao::CCursorTable;
  if (m_ownsSession) m_pSession = own.release();
}

DbRowReader::~DbRowReader() {
  if (m_ownsSession) delete m_pSession;
  delete m_pCursorTable;
}

const dao::CExecStatus& DbRowReader::open(const std::string& statement,
                                          const std::vector<refl::CValue>& parameters) {
  if (m_pCursorTable != nullptr) {
    m_status = m_pCursorTable->Open(*m_pSession, statement, parameters).GetErrCode();
  }
  return lastStatus();
}

void DbRowReader::close() {
  delete m_pCursorTable;
  m_pCursorTable = nullptr;
}

const dao::CExecStatus& DbRowReader::lastStatus() const {
  static const auto& closed =
      *new dao::CExecStatus(dao::kExecStatementFailed, "the row reader is closed");
  return m_pCursorTable != nullptr ? m_pCursorTable->GetStatus() : closed;
}

std::vector<std::string> DbRowReader::columnNames() const {
  std::vector<std::string> names;
  if (m_pCursorTable == nullptr) return names;
  const unsigned long count = m_pCursorTable->GetColumnCount();
  for (unsigned long i = 0; i < count; ++i) names.push_back(m_pCursorTable->GetColumnName(i));
  return names;
}

int DbRowReader::nextRow(bool traced) {
  if (m_status != 0) return kUnusable;
  if (m_pCursorTable == nullptr) {
    if (traced) DbTrace("m_pCursorTable is NULL, return");
    return kUnusable;
  }
  return m_pCursorTable->FetchNextRow() ? kRowRead : kNoMoreRows;
}

int DbRowReader::fetchRowByMap(DbRowMap& row) {
  const int result = nextRow(true);
  if (result != kRowRead) return result;
  for (auto& entry : row) {
    DbColumn& column = entry.second;
    const refl::CValue value = (*m_pCursorTable)[column.columnName];
    if (value.isEmpty()) {
      DbTrace("error 1, can not find colunm:%s, tablename:%s", column.columnName.c_str(),
              column.tableName.c_str());
    }
    column.value.ReadFrom(refl::TEValue(value));
  }
  return kRowRead;
}

int DbRowReader::fetchRowByIndex(std::vector<refl::CValue>& out, unsigned int requiredColumns) {
  const int result = nextRow(false);  // silent about a missing cursor, unlike the others
  if (result != kRowRead) return result;
  const unsigned long columns = m_pCursorTable->GetColumnCount();
  if (requiredColumns > columns) {
    DbTrace("error3, real colunmns %d less than required %d, return", static_cast<int>(columns),
            static_cast<int>(requiredColumns));
    return kUnusable;
  }
  appendRow(out, [&] {
    for (unsigned long i = 0; i < requiredColumns; ++i) out.push_back((*m_pCursorTable)[i]);
  });
  return kRowRead;
}

int DbRowReader::fetchRowByNames(std::vector<refl::CValue>& out,
                                 const std::vector<std::string>& names) {
  const int result = nextRow(true);
  if (result != kRowRead) return result;
  appendRow(out, [&] {
    for (const std::string& name : names) {
      refl::CValue value = (*m_pCursorTable)[name];
      if (value.isEmpty()) DbTrace("error2, can not find colunm:%s, return", name.c_str());
      out.push_back(std::move(value));
    }
  });
  return kRowRead;
}

bool isDbServerType7() { return dao::CSqlSession().GetDBServerType() == kServerType7; }

int getDbServerType() { return dao::CSqlSession().GetDBServerType(); }

void printDbStatus(const dao::CExecStatus& status) {
  // One code stands for all three, meant as it stands.
  if (status.GetErrCode() != 0) {
    ACE_OS::printf("<DBTools.h++ error code>%ld\n", status.GetErrCode());
    ACE_OS::printf("<DB server error code>%ld\n", status.GetErrCode());
    ACE_OS::printf("<DB server severity level>%ld\n", status.GetErrCode());
  }
  ACE_OS::printf("<DB Msg> %s\n", status.GetMessage().c_str());
}
