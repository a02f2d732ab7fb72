// The database and southbound operations over an SQLite file that is missing, locked, endless, cut,
// damaged or of another layout: the stated result, the deadline kept, outputs kept, nothing held
// afterwards, and the next call whole.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "database_fixture.h"
#include "dbrowreader.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"
#include "sqlite_database.h"

namespace emf::faults {
namespace {

using dao::test::SqliteFile;

class SqliteMatrix : public DatabaseMatrix {
 public:
  SqliteMatrix() {
    {
      SqliteFile good(file("good.db"));
      fillInventory(good);
    }
    restore();
    reach("sqlite:" + path());
  }

  std::string path() const { return file("inventory.db"); }
  // The whole file in its place, as a new one.
  void restore() const {
    std::filesystem::remove_all(path());
    std::filesystem::copy_file(file("good.db"), path());
  }
  void remove() const { std::filesystem::remove_all(path()); }
  void run(const std::string& statements) const { SqliteFile(path()).run(statements); }
  std::uintmax_t size() const { return std::filesystem::file_size(path()); }
  void truncate(std::uintmax_t bytes) const {
    std::filesystem::resize_file(path(), bytes);
    renew();
  }
  void overwrite(std::uintmax_t at, const std::string& bytes) const {
    {
      std::fstream out(path(), std::ios::binary | std::ios::in | std::ios::out);
      out.seekp(static_cast<std::streamoff>(at));
      out << bytes;
    }
    renew();
  }

 private:
  // The same content as another file: of one that is open the database's library may know pages.
  void renew() const {
    std::filesystem::copy_file(path(), file("copy.db"));
    std::filesystem::rename(file("copy.db"), path());
  }
};

// One way in which the file is bad.
struct Damage {
  std::string what;
  std::function<void(const SqliteMatrix&)> apply;
};

struct SqliteFault {
  std::string name;
  bool mayBeUnseen;  // by the database's own library
  std::vector<Damage> (*damages)();
};
void PrintTo(const SqliteFault& fault, std::ostream* out) { *out << fault.name; }

std::vector<Damage> refused() {
  return {{"no file", [](const SqliteMatrix& world) { world.remove(); }},
          {"a directory",
           [](const SqliteMatrix& world) {
             world.remove();
             std::filesystem::create_directory(world.path());
           }},
          {"a pipe",
           [](const SqliteMatrix& world) {
             world.remove();
             EXPECT_EQ(::mkfifo(world.path().c_str(), 0600), 0);
           }},
          {"a link to nothing",
           [](const SqliteMatrix& world) {
             world.remove();
             std::filesystem::create_symlink("nothing", world.path());
           }},
          {"a link to itself", [](const SqliteMatrix& world) {
             world.remove();
             std::filesystem::create_symlink(world.path(), world.path());
           }}};
}

std::vector<Damage> cut() {
  std::vector<Damage> damages;
  // In the header, at its end, in pages and between them; each is a part of the whole.
  for (const int part : {0, 1, 15, 16, 50, 99, 100, 512, 4095, 4096, 4097, 8192, 20000, 100000}) {
    damages.push_back({"to " + std::to_string(part) + " bytes", [part](const SqliteMatrix& world) {
                         world.truncate(static_cast<std::uintmax_t>(part));
                       }});
  }
  return damages;
}

// A last page that nobody reads is not missed.
std::vector<Damage> cutInTheLastPage() {
  std::vector<Damage> damages;
  for (const int lost : {1, 100, 4095}) {
    damages.push_back({"by " + std::to_string(lost) + " bytes", [lost](const SqliteMatrix& world) {
                         world.truncate(world.size() - static_cast<std::uintmax_t>(lost));
                       }});
  }
  return damages;
}

std::vector<Damage> garbage() {
  return {
      {"zeros",
       [](const SqliteMatrix& world) { world.overwrite(0, std::string(world.size(), '\0')); }},
      {"ones",
       [](const SqliteMatrix& world) { world.overwrite(0, std::string(world.size(), '\xff')); }},
      {"another format", [](const SqliteMatrix& world) { world.overwrite(0, "SQLite 2"); }},
      {"a page size of 3",
       [](const SqliteMatrix& world) { world.overwrite(16, std::string("\0\3", 2)); }},
      {"a later version", [](const SqliteMatrix& world) { world.overwrite(18, "\x09\x09"); }},
      {"the schema's page",
       [](const SqliteMatrix& world) { world.overwrite(100, std::string(3996, '\x5a')); }}};
}

std::vector<Damage> garbageInAPage() {
  constexpr char kBytes[] = {'\0', '\x5a', '\xff'};
  std::vector<Damage> damages;
  for (std::size_t page = 1; page < 48; ++page) {
    const std::string bytes(4096, kBytes[page % 3]);
    damages.push_back({"page " + std::to_string(page), [=](const SqliteMatrix& world) {
                         if (page * 4096 < world.size()) world.overwrite(page * 4096, bytes);
                       }});
  }
  return damages;
}

// A table of each operation, replaced by a view.
Damage viewsInPlaceOfTables(const std::string& what, const std::string& source) {
  return {what, [source](const SqliteMatrix& world) {
            for (const std::string table :
                 {"device", "device_location", "resource_attribute", "port", "link"}) {
              const std::string kept = "kept_" + table;
              std::string statement = source;
              for (std::size_t at; (at = statement.find('?')) != std::string::npos;) {
                statement.replace(at, 1, kept);
              }
              world.run("PRAGMA legacy_alter_table = ON; ALTER TABLE " + table + " RENAME TO " +
                        kept + "; CREATE VIEW " + table + " AS " + statement);
            }
          }};
}

std::vector<Damage> cutInTheFirstRow() {
  return {viewsInPlaceOfTables("an error in the first row",
                               "SELECT * FROM ? WHERE abs(-9223372036854775807 - 1) > 0")};
}

std::vector<Damage> otherLayout() {
  const auto runs = [](const std::string& statements) {
    return Damage{statements, [statements](const SqliteMatrix& world) { world.run(statements); }};
  };
  return {runs("PRAGMA foreign_keys = OFF; DROP TABLE resource_attribute; DROP TABLE link; "
               "DROP TABLE port; DROP TABLE device_location; DROP TABLE device"),
          viewsInPlaceOfTables("tables without columns", "SELECT 1 AS unknown FROM ?")};
}

class Sqlite : public SqliteMatrix, public testing::WithParamInterface<SqliteFault> {};

TEST_P(Sqlite, Cell) {
  expectWhole();
  const Holdings before = settled();
  reach("sqlite:" + path());
  const Expected expected = GetParam().mayBeUnseen ? Expected::Bounded : Expected::Failed;
  for (const Damage& damage : GetParam().damages()) {
    SCOPED_TRACE(damage.what);
    damage.apply(*this);
    for (const DatabaseOperation& operation : databaseOperations()) strike(operation, expected);
    restore();
    expectWhole();
  }
  EXPECT_EQ(settled(), before);
}

INSTANTIATE_TEST_SUITE_P(FaultMatrix, Sqlite,
                         testing::ValuesIn(std::vector<SqliteFault>{
                             {"refused", false, refused},
                             {"cut", false, cut},
                             {"cutInTheLastPage", true, cutInTheLastPage},
                             {"cutInTheFirstRow", false, cutInTheFirstRow},
                             {"garbage", false, garbage},
                             {"garbageInAPage", true, garbageInAPage},
                             {"wrongTypeOfTheTables", false, otherLayout}}),
                         [](const auto& row) { return row.param.name; });

class FaultMatrixSqlite : public SqliteMatrix {
 protected:
  void strikeEach(Expected expected) {
    for (const DatabaseOperation& operation : databaseOperations()) strike(operation, expected);
  }
};

TEST_F(FaultMatrixSqlite, StalledByALock) {
  expectWhole();
  {
    SqliteFile other(path());
    other.run("BEGIN EXCLUSIVE");
    reach("sqlite:" + path(), kShortMs);
    for (const DatabaseOperation& operation : databaseOperations()) {
      EXPECT_GE(strike(operation, Expected::Failed).count(), kShortMs * 9 / 10);
    }
    other.run("COMMIT");
  }
  expectWhole();
}

// A row that never comes.
TEST_F(FaultMatrixSqlite, StalledInTheRows) {
  viewsInPlaceOfTables("endless tables",
                       "WITH RECURSIVE endless(i) AS (SELECT 0 UNION ALL SELECT i FROM endless) "
                       "SELECT ?.* FROM endless, ? WHERE i = 1")
      .apply(*this);
  reach("sqlite:" + path(), kLongMs, kShortMs);
  for (const DatabaseOperation& operation : databaseOperations()) {
    EXPECT_GE(strike(operation, Expected::Failed).count(), kShortMs * 9 / 10);
  }
  restore();
  reach("sqlite:" + path());
  expectWhole();
}

// What reads more than one row fails at the second; a caller of the cursor has the first.
TEST_F(FaultMatrixSqlite, CutInTheRows) {
  viewsInPlaceOfTables("an error in the second row",
                       "SELECT * FROM ? WHERE rowid = (SELECT min(rowid) FROM ?) OR "
                       "abs(-9223372036854775807 - 1) > 0")
      .apply(*this);
  for (const std::size_t operation : {2, 4, 6}) {
    strike(databaseOperations()[operation], Expected::Failed);
  }
  EXPECT_EQ(databaseOperations().back().call(), (Outcome{"failed", {"2 core-2"}}));
  restore();
  expectWhole();
}

// A value of another type than its column's, which this database takes everywhere.
struct WrongColumn {
  const char* statement;
  std::size_t operation;  // that reads it
};

TEST_F(FaultMatrixSqlite, WrongTypeOfAValue) {
  constexpr WrongColumn kColumns[] = {
      {"UPDATE device SET main_type = 'text'", 0},
      {"UPDATE device SET main_type = 1.5", 0},
      {"UPDATE device SET sub_type = x'00'", 0},
      {"UPDATE device SET ip_address = x'00'", 0},
      {"UPDATE device SET version_name = x'ff'", 1},
      {"UPDATE device_location SET part = x'00' WHERE seq = 1", 2},
      {"UPDATE device SET dev_id = 'text' WHERE node_id = '2'", 3},
      {"UPDATE resource_attribute SET number = 'text' WHERE number = 4", 4},
      {"UPDATE resource_attribute SET value = x'00'", 4},
      {"UPDATE link SET kind = 'text'", 5},
      {"UPDATE link SET attribute = 'text'", 5},
      {"UPDATE link SET name = x'00'", 5},
      {"UPDATE port SET dev_id = 'text'", 5},
      {"UPDATE link SET kind = 'text'", 6},
  };
  for (const WrongColumn& column : kColumns) {
    SCOPED_TRACE(column.statement);
    run(column.statement);
    strike(databaseOperations()[column.operation], Expected::Failed);
    restore();
    expectWhole();
  }
}

TEST_F(FaultMatrixSqlite, TooLargeAValue) {
  for (const WrongColumn& column :
       {WrongColumn{"UPDATE device SET main_type = 65536", 0},
        WrongColumn{"UPDATE device SET sub_type = 9223372036854775807", 0},
        WrongColumn{"UPDATE device SET dev_id = 4294967296 WHERE node_id = '2'", 3},
        WrongColumn{"UPDATE resource_attribute SET number = 2147483648 WHERE number = 4", 4},
        WrongColumn{"UPDATE link SET attribute = 2147483648", 5}}) {
    SCOPED_TRACE(column.statement);
    run(column.statement);
    strike(databaseOperations()[column.operation], Expected::Failed);
    restore();
    expectWhole();
  }
}

// Rows and columns stand in no order that counts.
TEST_F(FaultMatrixSqlite, WrongOrderOfColumnsAndRows) {
  run("PRAGMA legacy_alter_table = ON;"
      "ALTER TABLE device RENAME TO kept;"
      "CREATE TABLE device AS SELECT pos_y, pos_x, remark, ex_info, icon_file, origin,"
      " version_name, name, ip_address, sub_type, main_type, topo_id, subnet_id, node_class,"
      " node_id, native_id, dev_id FROM kept ORDER BY dev_id DESC;"
      "ALTER TABLE device_location RENAME TO kept_location;"
      "CREATE TABLE device_location AS SELECT part, seq, dev_id FROM kept_location"
      " ORDER BY seq DESC");
  strikeEach(Expected::Whole);
}

// The cursor: fetched before it is open, behind its end, after a failure and when it is closed.
TEST_F(FaultMatrixSqlite, WrongOrderOfTheCursorsCalls) {
  DbRowReader reader(0, nullptr);
  std::vector<refl::CValue> values;
  DbRowMap row = {{"1", {"name", "device", {}}}};
  const auto fetches = [&] {
    return std::vector<int>{reader.fetchRowByIndex(values, 1),
                            reader.fetchRowByNames(values, {"name"}), reader.fetchRowByMap(row)};
  };
  const std::vector<int> noRows(3, DbRowReader::kNoMoreRows);
  const std::vector<int> unusable(3, DbRowReader::kUnusable);
  EXPECT_EQ(fetches(), noRows);
  EXPECT_TRUE(reader.open("SELECT name FROM device WHERE dev_id = 9", {}).IsOk());
  EXPECT_EQ(fetches(), noRows);
  EXPECT_FALSE(reader.open("SELECT name FROM nothing", {}).IsOk());
  EXPECT_EQ(fetches(), unusable);
  EXPECT_TRUE(reader.open("SELECT name FROM device", {}).IsOk());
  EXPECT_EQ(fetches(), std::vector<int>(3, DbRowReader::kRowRead));
  EXPECT_EQ(fetches(), noRows);
  reader.close();
  EXPECT_EQ(fetches(), unusable);
  EXPECT_FALSE(reader.open("SELECT name FROM device", {}).IsOk());
  EXPECT_EQ(values.size(), 2u);
}

TEST_F(FaultMatrixSqlite, GoneAndBack) {
  for (int round = 0; round < 3; ++round) {
    expectWhole();
    remove();
    strikeEach(Expected::Failed);
    restore();
  }
  expectWhole();
}

// The rows of an open cursor are those of the file that it was opened on.
TEST_F(FaultMatrixSqlite, GoneBetweenTheRows) {
  DbRowReader reader(0, nullptr);
  ASSERT_TRUE(reader.open("SELECT name FROM device ORDER BY dev_id", {}).IsOk());
  std::vector<refl::CValue> values;
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), DbRowReader::kRowRead);
  remove();
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), DbRowReader::kRowRead);
  EXPECT_EQ(values.back().asText(), "core-3");
  EXPECT_FALSE(reader.open("SELECT name FROM device", {}).IsOk());
  restore();
  EXPECT_TRUE(reader.open("SELECT name FROM device ORDER BY dev_id", {}).IsOk());
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), DbRowReader::kRowRead);
  EXPECT_EQ(values.back().asText(), "core-2");
}

}  // namespace
}  // namespace emf::faults
