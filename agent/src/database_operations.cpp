// Statements of the caller's own on the configured database.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "dbrowreader.h"
#include "exit_status.h"
#include "host_failure.h"
#include "message.h"
#include "operations.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"
#include "sql_value.h"

namespace ormaagent {

namespace {

void check(const dao::CExecStatus& status) {
  if (status.IsOk()) return;
  const bool configured = status.GetErrCode() != dao::kExecNotConfigured;
  throw HostFailure(configured ? kExitFailed : kExitUsage, status.GetMessage());
}

// Sessions only read, but a PostgreSQL session may be told otherwise by statements that end its
// transaction: not inside one that was begun read-only.
void beginReadOnly(dao::CSqlSession& session) {
  if (session.GetDBServerType() != dao::kDbServerPostgresql) return;
  check(dao::CCursorTable().Open(session, "BEGIN TRANSACTION READ ONLY"));
}

std::vector<refl::CValue> parametersOf(const Arguments& arguments) {
  std::vector<refl::CValue> values;
  for (const std::string& text : arguments.repeatedOption("--param")) {
    values.push_back(parseSqlValue(text).value());
  }
  return values;
}

// A document tells fields by their names, and a statement may give two columns the same one.
std::vector<std::string> distinct(std::vector<std::string> names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string name = names[i];
    const auto before = names.begin() + static_cast<std::ptrdiff_t>(i);
    for (int number = 2; std::find(names.begin(), before, names[i]) != before; ++number) {
      names[i] = name + "_" + std::to_string(number);
    }
  }
  return names;
}

std::string hexadecimal(const refl::Bytes& bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : bytes) text += {kDigits[byte >> 4], kDigits[byte & 0xF]};
  return text;
}

Value valueOf(const refl::CValue& value) {
  switch (value.type()) {
    case refl::CValue::Type::Integer:
      return value.asInteger();
    case refl::CValue::Type::Real:
      return value.asReal();
    case refl::CValue::Type::Text:
      return value.asText();
    case refl::CValue::Type::Binary:
      return hexadecimal(value.asBytes());
    default:
      return std::monostate();
  }
}

}  // namespace

Answer dbQuery(const Arguments& arguments) {
  dao::CSqlSession session("query");
  beginReadOnly(session);
  DbRowReader reader(0, &session);
  check(reader.open(arguments.text(0), parametersOf(arguments)));

  Answer answer;
  answer.fields = distinct(reader.columnNames());
  const auto columns = static_cast<unsigned int>(answer.fields.size());
  std::vector<refl::CValue> row;
  while (reader.fetchRowByIndex(row, columns) == DbRowReader::kRowRead) {
    std::vector<Value> record(columns);
    std::transform(row.begin(), row.end(), record.begin(), valueOf);
    answer.records.push_back(std::move(record));
    row.clear();
  }
  answer.result = reader.lastStatus().GetErrCode();
  if (answer.result != 0) tell(reader.lastStatus().GetMessage());
  return answer;
}

}  // namespace ormaagent
