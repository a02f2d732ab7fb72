// A test that logs into a directory of its own and reads the lines back.
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "config_problems.h"
#include "orma/log/log_sink.h"
#include "temp_directory.h"

inline std::vector<std::string> linesOf(const std::string& file) {
  orma::flushLog();
  std::ifstream in(file, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// Configures the log with that "log" object.
inline void configureLogWith(const std::string& log) {
  orma::configureLog(*parsed("{\"log\": " + log + "}"));
}

class LogTest : public testing::Test {
 protected:
  // Nothing of a test may reach a file of the next one.
  ~LogTest() override { configureLogWith(R"({"stderr": false})"); }

  // Only the file "agent.log"; `more` holds further members, each after a comma.
  void logToFile(const std::string& more = "") {
    configureLogWith(R"({"stderr": false, "file": ")" + file_ + "\"" + more + "}");
  }

  std::vector<std::string> lines() const { return linesOf(file_); }

  // The one line that was written, without time and thread.
  std::string onlyLine() const {
    const std::vector<std::string> all = lines();
    if (all.size() != 1) return std::to_string(all.size()) + " lines";
    const std::string& line = all.front();
    return line.substr(line.find(' ', line.find(' ') + 1) + 1);
  }

  TempDirectory directory_;
  const std::string file_ = directory_ / "agent.log";
};
