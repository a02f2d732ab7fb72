// What a row of a database costs on its way to the caller: 100,000 rows of five columns of an
// SQLite file, read through dao and through the row reader, against SOCI alone and against SQLite's
// own interface. The counter `rows` is rows a second, `ratio` ours by the peer's time.
#include <benchmark/benchmark.h>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "dbrowreader.h"
#include "orma/bundle/configuration.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"
#include "paired.h"

namespace {

namespace api = sqlite_api;  // where SOCI puts the declarations of sqlite3.h

constexpr int kRows = 100000;
constexpr unsigned int kColumns = 5;
constexpr char kQuery[] = "SELECT id, name, kind, load, address FROM element";
const std::vector<std::string> kNames = {"id", "name", "kind", "load", "address"};

void check(bool right, const char* what) {
  if (!right) throw std::runtime_error(what);
}

// The file, in a directory of its own, and the configuration that leads to it.
class Elements {
 public:
  Elements() {
    std::string directory = (std::filesystem::temp_directory_path() / "emf_rows_XXXXXX").string();
    check(::mkdtemp(directory.data()) != nullptr, "no temporary directory");
    directory_ = directory;
    fill();
    std::vector<orma::ConfigProblem> problems;
    auto configuration = orma::Configuration::parse(
        R"({"database": {"connection": "sqlite:rows.db"}})", "benchmark", directory, problems);
    check(configuration != nullptr, "bad configuration");
    orma::Configuration::install(std::move(configuration));
  }
  ~Elements() { std::filesystem::remove_all(directory_); }

  std::string file() const { return directory_ + "/rows.db"; }

 private:
  void fill() const {
    api::sqlite3* database = nullptr;
    check(api::sqlite3_open(file().c_str(), &database) == SQLITE_OK, "no database");
    const std::string statements =
        "PRAGMA synchronous = OFF;"
        "CREATE TABLE element (id INTEGER, name TEXT, kind INTEGER, load REAL, address TEXT);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
        std::to_string(kRows) +
        ") INSERT INTO element SELECT i, 'element-of-the-network-' || i, i % 21, i / 7.0, "
        "'10.' || (i >> 16) || '.' || ((i >> 8) & 255) || '.' || (i & 255) FROM n;";
    check(api::sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK,
          api::sqlite3_errmsg(database));
    api::sqlite3_close(database);
  }

  std::string directory_;
};

const Elements& elements() {
  static const Elements instance;
  return instance;
}

// One row as a caller keeps it, so that every way leaves the same behind.
struct Element {
  std::int64_t id = 0;
  std::string name;
  std::int64_t kind = 0;
  double load = 0;
  std::string address;
};

void readBySqlite() {
  static api::sqlite3* const database = [] {
    api::sqlite3* opened = nullptr;
    check(api::sqlite3_open(elements().file().c_str(), &opened) == SQLITE_OK, "no database");
    return opened;
  }();
  api::sqlite3_stmt* statement = nullptr;
  check(api::sqlite3_prepare_v2(database, kQuery, -1, &statement, nullptr) == SQLITE_OK,
        "no query");
  const auto text = [statement](int column) {
    return std::string(reinterpret_cast<const char*>(api::sqlite3_column_text(statement, column)),
                       static_cast<std::size_t>(api::sqlite3_column_bytes(statement, column)));
  };
  int rows = 0;
  for (; api::sqlite3_step(statement) == SQLITE_ROW; ++rows) {
    Element element{api::sqlite3_column_int64(statement, 0), text(1),
                    api::sqlite3_column_int64(statement, 2),
                    api::sqlite3_column_double(statement, 3), text(4)};
    benchmark::DoNotOptimize(element);
  }
  api::sqlite3_finalize(statement);
  check(rows == kRows, "rows are missing");
}

soci::session& sociSession() {
  static soci::session session(soci::sqlite3, "db=" + elements().file());
  return session;
}

// SOCI's quickest way: columns bound to variables whose types are known beforehand.
void readBySociInto() {
  long long id = 0;
  long long kind = 0;
  double load = 0;
  std::string name;
  std::string address;
  soci::statement statement = (sociSession().prepare << kQuery, soci::into(id), soci::into(name),
                               soci::into(kind), soci::into(load), soci::into(address));
  statement.execute();
  int rows = 0;
  for (; statement.fetch(); ++rows) {
    Element element{id, name, kind, load, address};
    benchmark::DoNotOptimize(element);
  }
  check(rows == kRows, "rows are missing");
}

// SOCI's way for columns whose types come with the rows, as they do in dao.
void readBySociRows() {
  const soci::rowset<soci::row> rows = (sociSession().prepare << kQuery);
  int count = 0;
  for (const soci::row& row : rows) {
    Element element{row.get<int>(0), row.get<std::string>(1), row.get<int>(2), row.get<double>(3),
                    row.get<std::string>(4)};
    benchmark::DoNotOptimize(element);
    ++count;
  }
  check(count == kRows, "rows are missing");
}

dao::CSqlSession& session() {
  elements();
  static dao::CSqlSession instance;
  return instance;
}

template <class Read>
void readByDao(Read read) {
  dao::CCursorTable rows;
  check(rows.Open(session(), kQuery).IsOk(), "no query");
  int count = 0;
  for (; rows.FetchNextRow(); ++count) {
    Element element = read(rows);
    benchmark::DoNotOptimize(element);
  }
  check(count == kRows, "rows are missing");
}

void readByDaoIndex() {
  readByDao([](const dao::CCursorTable& row) {
    return Element{row[0UL].asInteger(), row[1].asText(), row[2].asInteger(), row[3].asReal(),
                   row[4].asText()};
  });
}

void readByDaoName() {
  readByDao([](const dao::CCursorTable& row) {
    return Element{row[kNames[0]].asInteger(), row[kNames[1]].asText(), row[kNames[2]].asInteger(),
                   row[kNames[3]].asReal(), row[kNames[4]].asText()};
  });
}

// `fetch` is one of the reader's ways, into a row that it makes ready.
template <class Fetch>
void readByReader(Fetch fetch) {
  DbRowReader reader(0, &session());
  check(reader.open(kQuery, {}).IsOk(), "no query");
  int count = 0;
  while (fetch(reader) == DbRowReader::kRowRead) ++count;
  check(count == kRows, "rows are missing");
}

void readByReaderIndex() {
  std::vector<refl::CValue> row;
  readByReader([&row](DbRowReader& reader) {
    row.clear();
    return reader.fetchRowByIndex(row, kColumns);
  });
}

void readByReaderNames() {
  std::vector<refl::CValue> row;
  readByReader([&row](DbRowReader& reader) {
    row.clear();
    return reader.fetchRowByNames(row, kNames);
  });
}

void readByReaderMap() {
  DbRowMap row;
  for (const std::string& name : kNames) row[name] = {name, "element", {}};
  readByReader([&row](DbRowReader& reader) { return reader.fetchRowByMap(row); });
}

using Way = void (*)();

void compare(benchmark::State& state, Way ours, Way peer) {
  elements();
  ours();  // connections and caches are made
  peer();
  comparePaired(state, ours, peer);
  state.counters["rows"] = benchmark::Counter(static_cast<double>(state.iterations()) * kRows,
                                              benchmark::Counter::kIsRate);
}

#define ROWS_BENCHMARK(name, ours, peer)       \
  BENCHMARK_CAPTURE(compare, name, ours, peer) \
      ->UseManualTime()                        \
      ->Unit(benchmark::kMillisecond)          \
      ->MinTime(1.0)

ROWS_BENCHMARK(soci_into_by_sqlite, readBySociInto, readBySqlite);
ROWS_BENCHMARK(soci_rows_by_sqlite, readBySociRows, readBySqlite);
ROWS_BENCHMARK(dao_index_by_sqlite, readByDaoIndex, readBySqlite);
ROWS_BENCHMARK(dao_index_by_soci_into, readByDaoIndex, readBySociInto);
ROWS_BENCHMARK(dao_index_by_soci_rows, readByDaoIndex, readBySociRows);
ROWS_BENCHMARK(dao_name_by_soci_into, readByDaoName, readBySociInto);
ROWS_BENCHMARK(reader_index_by_soci_into, readByReaderIndex, readBySociInto);
ROWS_BENCHMARK(reader_names_by_soci_into, readByReaderNames, readBySociInto);
ROWS_BENCHMARK(reader_map_by_soci_into, readByReaderMap, readBySociInto);

}  // namespace
