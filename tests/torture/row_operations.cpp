// DbRowReader and the functions beside it.
#include <memory>

#include "captured_output.h"
#include "dbrowreader.h"
#include "operation.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"
#include "platform.h"

namespace emf::torture {
namespace {

using doubles::platform;
using refl::CValue;

const std::string kStatement = "SELECT id, name FROM device WHERE dev_id > :id ORDER BY id";
const std::string kRowName = "core-1, a name that takes memory of its own";
const std::vector<CValue> kParameters = {CValue(std::int64_t{1})};
const std::vector<std::string> kColumns = {"id", "name", "no column of this name"};

struct Row {
  std::vector<CValue> values;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
  for (const CValue& value : row.values) {
    out << (value.isEmpty() ? std::string("none") : value.asText()) << " | ";
  }
  return out;
}

void scriptRows() {
  platform().cursors.gives({"id", "name"}, {{CValue(std::int64_t{2}), CValue(kRowName)},
                                            {CValue(std::int64_t{3}), CValue(kRowName)}});
}

// The whole use of a reader: it is made, opens, reads to the end with `fetch`, and goes.
template <class Fetch>
int readAll(std::list<Row>& out, Fetch fetch) {
  DbRowReader reader(0, nullptr);
  reader.open(kStatement, kParameters);
  for (;;) {
    Row row;
    const int result = fetch(reader, row.values);
    // One row goes into what the caller has already, whole or not at all.
    if (result == DbRowReader::kRowRead) {
      out.push_back(std::move(row));
    } else {
      return result == DbRowReader::kNoMoreRows && !reader.lastStatus().IsOk() ? -1 : result;
    }
  }
}

int readByIndex(std::list<Row>& out) {
  return readAll(out,
                 [](DbRowReader& reader, auto& row) { return reader.fetchRowByIndex(row, 2); });
}

int readByNames(std::list<Row>& out) {
  return readAll(
      out, [](DbRowReader& reader, auto& row) { return reader.fetchRowByNames(row, kColumns); });
}

int readByMap(std::list<Row>& out) {
  return readAll(out, [](DbRowReader& reader, auto& row) {
    DbRowMap columns = {{"a", {"id", "device", {}}}, {"b", {"name", "device", {}}}};
    const int result = reader.fetchRowByMap(columns);
    for (auto& [key, column] : columns) row.push_back(column.value);
    return result;
  });
}

// One reader that goes on behind a fetch that threw: what is appended must be whole rows.
int readOn(std::list<Row>& out) {
  DbRowReader reader(0, nullptr);
  reader.open(kStatement, kParameters);
  Row all;
  for (int lacks = 0; lacks < 2;) {
    try {
      if (reader.fetchRowByIndex(all.values, 2) != DbRowReader::kRowRead) break;
    } catch (const std::bad_alloc&) {
      ++lacks;
    }
  }
  const bool areWhole = all.values.size() % 2 == 0;
  out.push_back(std::move(all));
  return areWhole ? 0 : 1;
}

int columnNames(std::vector<std::string>& out) {
  DbRowReader reader(0, nullptr);
  const int code = static_cast<int>(reader.open(kStatement, kParameters).GetErrCode());
  out = reader.columnNames();
  return code;
}

int closeReader() {
  DbRowReader reader(0, nullptr);
  reader.open(kStatement, kParameters);
  reader.close();
  std::vector<CValue> row;
  return reader.fetchRowByNames(row, kColumns);
}

int nextStatus() {
  dao::CSqlSession session("given");
  DbRowReader reader(0, &session);
  return reader.lastStatus().IsOk() ? 0 : 1;
}

const std::list<Row> kRowsBefore = {{{CValue(std::int64_t{9})}}};
const std::list<Row> kRows = {
    {{CValue(std::int64_t{9})}},
    {{CValue(std::int64_t{2}), CValue(kRowName)}},
    {{CValue(std::int64_t{3}), CValue(kRowName)}},
};
const std::list<Row> kNamedRows = {
    {{CValue(std::int64_t{9})}},
    {{CValue(std::int64_t{2}), CValue(kRowName), CValue()}},
    {{CValue(std::int64_t{3}), CValue(kRowName), CValue()}},
};
const std::list<Row> kOneRun = {
    {{CValue(std::int64_t{2}), CValue(kRowName), CValue(std::int64_t{3}), CValue(kRowName)}}};

// A statement that is refused makes every fetch give 1, and a row that cannot be read ends them.
const std::map<std::string, Texts> kReadOutages = {{"statement", {"1", kNoMemory}},
                                                   {"row", {"-1", kNoMemory}}};

const dao::CExecStatus kStatus(dao::kExecStatementFailed, "a reason that takes memory of its own");

}  // namespace

const std::vector<Operation>& rowOperations() {
  static const std::vector<Operation> rows = {
      {"DbRowReader::fetchRowByIndex",
       calling(scriptRows, kRowsBefore, readByIndex),
       {"6", textsOf(kRows), {}},
       Left::kStart,
       kReadOutages,
       {},
       {},
       1},
      {"DbRowReader::fetchRowByNames",
       calling(scriptRows, kRowsBefore, readByNames),
       {"6", textsOf(kNamedRows), {}},
       Left::kStart,
       kReadOutages,
       {},
       {},
       1},
      {"DbRowReader::fetchRowByMap",
       calling(scriptRows, kRowsBefore, readByMap),
       {"6", textsOf(kRows), {}},
       Left::kStart,
       kReadOutages,
       {},
       {},
       1},
      {"DbRowReader::columnNames",
       calling(scriptRows, std::vector<std::string>(), columnNames),
       {"0", {"id", "name"}, {}},
       Left::kWhole,
       {{"statement", {"4", kNoMemory}}}},
      {"DbRowReader::open",
       calling(scriptRows, std::list<Row>(), readOn),
       {"0", textsOf(kOneRun), {}},
       Left::kAnything,
       {{"statement", {"0", kNoMemory}}, {"row", {"0", "0"}}},
       {"0"}},
      {"DbRowReader::close",
       calling(scriptRows, closeReader),
       {"1", {}, {}},
       Left::kWhole,
       {{"statement", {"1", kNoMemory}}}},
      {"DbRowReader::lastStatus", calling(scriptRows, nextStatus), {"0", {}, {}}},
      {"getDbServerType",
       calling([] { platform().cursors.serverType(7); }, [] { return getDbServerType(); }),
       {"7", {}, {}},
       Left::kWhole,
       {{"server type", {"0"}}}},
      {"isDbServerType7",
       calling([] { platform().cursors.serverType(7); },
               [] { return static_cast<int>(isDbServerType7()); }),
       {"1", {}, {}},
       Left::kWhole,
       {{"server type", {"0"}}}},
      {"printDbStatus",
       callingPrinter(scriptNothing, [] { printDbStatus(kStatus); }),
       {"done",
        {"<DBTools.h++ error code>4\n<DB server error code>4\n<DB server severity level>4\n"
         "<DB Msg> a reason that takes memory of its own\n"},
        {}}},
  };
  return rows;
}

}  // namespace emf::torture
