// Rows of the database through DbRowReader.
#include "dbrowreader.h"
#include "operation.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"

namespace soak {

namespace {

constexpr char kContents[] =
    "SELECT native_id, name, main_type, sub_type FROM resource WHERE dev_id = :id ORDER BY seq";
constexpr int kSqlite = 1;

// The contents of an element; `fetch` appends one row and gives the reader's result.
template <class Fetch>
Verdict readContents(Context& context, dao::CSqlSession* session, const Fetch& fetch) {
  const EquippedElement& element = context.pick(context.network.equipped);
  Rows expected;
  for (const Content& content : element.contents) {
    expected.push_back(joined(content.dn, content.name, content.mainType, content.subType));
  }
  Rows rows;
  const auto read = [&] {
    DbRowReader reader(0, session);
    reader.open(kContents, {refl::CValue(element.id)});
    int result = DbRowReader::kRowRead;
    while ((result = fetch(reader, rows)) == DbRowReader::kRowRead) {
    }
    return reader.lastStatus().IsOk() ? result : -1;
  };
  return context.check(
      read, [&] { return rows; }, Expected(DbRowReader::kNoMoreRows, std::move(expected)));
}

std::string rowTextOf(const std::vector<refl::CValue>& row) {
  return joined(row[0].asText(), row[1].asText(), row[2].asInteger(), row[3].asInteger());
}

Verdict fetchRowByIndex(Context& context) {
  return readContents(context, nullptr, [](DbRowReader& reader, Rows& rows) {
    std::vector<refl::CValue> row;
    const int result = reader.fetchRowByIndex(row, 4);
    if (result == DbRowReader::kRowRead) rows.push_back(rowTextOf(row));
    return result;
  });
}

// On a session of the caller's.
Verdict fetchRowByNames(Context& context) {
  dao::CSqlSession session("soak");
  return readContents(context, &session, [](DbRowReader& reader, Rows& rows) {
    std::vector<refl::CValue> row;
    const int result = reader.fetchRowByNames(row, {"native_id", "name", "main_type", "sub_type"});
    if (result == DbRowReader::kRowRead) rows.push_back(rowTextOf(row));
    return result;
  });
}

Verdict fetchRowByMap(Context& context) {
  return readContents(context, nullptr, [](DbRowReader& reader, Rows& rows) {
    DbRowMap row = {{"1", {"native_id", "resource", {}}},
                    {"2", {"name", "resource", {}}},
                    {"3", {"main_type", "resource", {}}},
                    {"4", {"sub_type", "resource", {}}}};
    const int result = reader.fetchRowByMap(row);
    if (result == DbRowReader::kRowRead) {
      rows.push_back(rowTextOf({row["1"].value, row["2"].value, row["3"].value, row["4"].value}));
    }
    return result;
  });
}

// A reader that is given up half-way, then one whose statement is refused.
Verdict giveUp(Context& context) {
  std::vector<refl::CValue> row;
  const auto read = [&] {
    DbRowReader reader(0, nullptr);
    reader.open("SELECT dev_id FROM device ORDER BY dev_id", {});
    const int first = reader.fetchRowByIndex(row, 1);
    reader.open("SELECT nothing FROM nowhere", {});
    const bool told = !reader.lastStatus().IsOk();
    printDbStatus(reader.lastStatus());
    const int refused = reader.fetchRowByIndex(row, 1);
    reader.close();
    return first == DbRowReader::kRowRead && told && refused == DbRowReader::kUnusable ? 0 : 1;
  };
  const std::string first = std::to_string(context.network.elements.front().id);
  return context.check(
      read, [&] { return Rows{row.at(0).asText()}; }, Expected(0, Rows{first}));
}

Verdict serverType(Context& context) {
  return context.check([] { return isDbServerType7() ? -1 : getDbServerType(); },
                       [] { return Rows{}; }, Expected(kSqlite, Rows{}));
}

}  // namespace

void addDatabaseOperations(std::vector<Operation>& all) {
  all.insert(all.end(), {{"DbRowReader::fetchRowByIndex", 3, fetchRowByIndex},
                         {"DbRowReader::fetchRowByNames", 3, fetchRowByNames},
                         {"DbRowReader::fetchRowByMap", 3, fetchRowByMap},
                         {"DbRowReader::close, printDbStatus", 2, giveUp},
                         {"getDbServerType, isDbServerType7", 5, serverType}});
}

}  // namespace soak
