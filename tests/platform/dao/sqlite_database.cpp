#include "sqlite_database.h"

#include <stdexcept>

#include "engine_fixture.h"

namespace dao::test {
namespace {

class TemporarySqliteFile : public TestDatabase {
 public:
  std::string connection() const override { return file_.connection(); }
  void run(const std::string& statements) override { file_.run(statements); }

 private:
  TemporaryDirectory directory_;
  SqliteFile file_{directory_.path() + "/inventory.db"};
};

}  // namespace

SqliteFile::SqliteFile(const std::string& path) : path_(path) {
  if (sqlite3_open(path.c_str(), &handle_) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle_));
  }
  run("PRAGMA synchronous = OFF");  // the file need not outlive a power cut
}

SqliteFile::~SqliteFile() { sqlite3_close(handle_); }

void SqliteFile::run(const std::string& statements) {
  if (sqlite3_exec(handle_, statements.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle_));
  }
}

std::unique_ptr<TestDatabase> makeTestDatabase(std::string&) {
  return std::make_unique<TemporarySqliteFile>();
}

}  // namespace dao::test
