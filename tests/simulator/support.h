// What the simulator's tests share: directories of their own, and databases read plainly.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

namespace ormasim::testing {

// A directory that is removed with everything in it.
class TempDirectory {
 public:
  TempDirectory();
  ~TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;

  std::string path(const std::string& name) const { return directory_ + "/" + name; }
  // The full path of the new file.
  std::string write(const std::string& name, const std::string& text) const;
  // Names of all entries, sorted.
  std::vector<std::string> entries() const;

 private:
  std::string directory_;
};

std::string contentOf(const std::string& file);

// Each row as its columns joined by "|".
std::vector<std::string> query(const std::string& database, const std::string& sql);
// Every row of every table, sorted.
std::vector<std::string> dump(const std::string& database);

// The parsed text; a text that is no JSON fails the test and gives null.
Json::Value json(const std::string& text);

// The text of the SimError that the action throws; fails the test when it throws none.
template <typename Action>
std::string errorOf(Action action);

}  // namespace ormasim::testing

#include <gtest/gtest.h>

#include "error.h"

template <typename Action>
std::string ormasim::testing::errorOf(Action action) {
  try {
    action();
  } catch (const SimError& error) {
    return error.what();
  }
  ADD_FAILURE() << "nothing was thrown";
  return "";
}
