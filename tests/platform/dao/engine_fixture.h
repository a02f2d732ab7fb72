// What the tests of data access have in common: a temporary directory, the configuration and the
// log as it was written.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "orma/dao/emf_comm_db_engine.h"
#include "orma/refl/value.h"

namespace dao::test {

class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// A literal of any width as a value of 64 bits.
inline refl::CValue integer(std::int64_t value) { return refl::CValue(value); }

struct LoggedLine {
  std::string level;
  std::string file;
  std::string function;
  std::string text;

  friend bool operator==(const LoggedLine& a, const LoggedLine& b) {
    return a.level == b.level && a.file == b.file && a.function == b.function && a.text == b.text;
  }
  friend std::ostream& operator<<(std::ostream& out, const LoggedLine& line) {
    return out << line.level << " " << line.file << " " << line.function << " " << line.text;
  }
};

// Starts with a log in a file of its own and no database configured; ends with the engine gone.
class EngineTest : public ::testing::Test {
 protected:
  EngineTest();
  ~EngineTest() override;

  void configure(const std::string& connection, int busyTimeoutMs = 5000,
                 int statementTimeoutMs = 60000);
  void configure(const std::string& connection, const std::string& passwordFile);
  // A path of this name in the test's own directory.
  std::string file(const std::string& name) const { return directory_.path() + "/" + name; }
  CEmfCommDBEngine& engine() const {
    return *CEmfCommDBEngine::Instance(CEmfCommDBEngine::GetModuleName());
  }
  // The lines written at a level ("error", "info", "detail") since the test began.
  std::vector<LoggedLine> loggedLines(const std::string& level) const;
  // Those at the error level.
  std::vector<LoggedLine> loggedErrors() const;
  // The texts of them.
  std::vector<std::string> loggedTexts() const;

 private:
  void configureDatabase(const Json::Value& database) const;

  TemporaryDirectory directory_;
};

}  // namespace dao::test
