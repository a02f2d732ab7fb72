// The log file opened anew after someone else has renamed it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <set>
#include <thread>

#include "log_fixture.h"

namespace orma {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

class LogReopening : public LogTest {
 protected:
  static void write(const std::string& text) { writeLog(1, "", "f", "u", 1, text); }
};

TEST_F(LogReopening, LinesGoIntoTheFileOfTheName) {
  logToFile();
  write("before");
  const std::string moved = directory_ / "moved.log";
  fs::rename(file_, moved);
  write("meanwhile");
  EXPECT_EQ(reopenLog(), "");
  write("after");
  EXPECT_THAT(linesOf(moved), SizeIs(2));
  EXPECT_THAT(onlyLine(), testing::EndsWith(" after"));
}

TEST_F(LogReopening, AFileThatIsStillThereIsAppendedTo) {
  logToFile();
  write("before");
  EXPECT_EQ(reopenLog(), "");
  write("after");
  EXPECT_THAT(lines(), SizeIs(2));
}

TEST_F(LogReopening, WithoutAFileThereIsNothingToDo) {
  configureLogWith(R"({"stderr": false})");
  EXPECT_EQ(reopenLog(), "");
}

TEST_F(LogReopening, WhatCannotBeOpenedIsToldAndTheOldFileGoesOn) {
  logToFile();
  const std::string moved = directory_ / "moved.log";
  fs::rename(file_, moved);
  fs::create_directory(file_);
  EXPECT_EQ(reopenLog(), "cannot open the log file \"" + file_ + "\" anew: Is a directory");
  write("after");
  EXPECT_THAT(linesOf(moved), SizeIs(1));
}

TEST_F(LogReopening, TheFileCountsItsSizeAnew) {
  logToFile(R"(,"maxFileBytes": 4096)");
  write(std::string(3000, 'x'));
  fs::rename(file_, directory_ / "moved.log");
  EXPECT_EQ(reopenLog(), "");
  write(std::string(3000, 'y'));
  EXPECT_FALSE(fs::exists(directory_ / "agent.1.log"));
}

// Every line has to be in one of the files, once, whatever the writers do meanwhile.
TEST_F(LogReopening, NoLineIsLostWhileEightThreadsWrite) {
  constexpr int kWriters = 8;
  constexpr int kLines = 400;
  constexpr int kRenames = 25;
  logToFile();
  std::atomic<int> running{kWriters};
  std::vector<std::thread> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([writer, &running] {
      for (int i = 0; i < kLines; ++i) write(std::to_string(writer * kLines + i));
      --running;
    });
  }
  std::vector<std::string> files = {file_};
  while (running > 0 && files.size() <= kRenames) {
    files.push_back(directory_ / ("moved" + std::to_string(files.size()) + ".log"));
    fs::rename(file_, files.back());
    EXPECT_EQ(reopenLog(), "");
  }
  for (std::thread& writer : writers) writer.join();
  std::multiset<std::string> texts;
  for (const std::string& file : files) {
    for (const std::string& line : linesOf(file)) texts.insert(line.substr(line.find(" - ") + 3));
  }
  EXPECT_THAT(texts, SizeIs(kWriters * kLines));
  for (int i = 0; i < kWriters * kLines; ++i) EXPECT_EQ(texts.count(std::to_string(i)), 1u) << i;
}

}  // namespace
}  // namespace orma
