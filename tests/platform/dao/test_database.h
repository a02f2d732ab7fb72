// A real database that a test may do with as it likes.
#pragma once

#include <memory>
#include <string>

namespace dao::test {

class TestDatabase {
 public:
  virtual ~TestDatabase() = default;
  // What the configuration's "database.connection" says to reach it.
  virtual std::string connection() const = 0;
  // Runs statements, separated by ";". Throws std::runtime_error with the database's reason.
  virtual void run(const std::string& statements) = 0;
};

// An empty database of the kind that the test program is about. Null where there can be none, and
// then the reason.
std::unique_ptr<TestDatabase> makeTestDatabase(std::string& whyNot);

}  // namespace dao::test
