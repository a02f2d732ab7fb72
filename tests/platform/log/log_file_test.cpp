#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <stdexcept>

#include "log_fixture.h"
#include "orma/log/trace.h"

namespace orma {
namespace {

using testing::ElementsAre;
namespace fs = std::filesystem;

std::string textOf(const std::string& line) { return line.substr(line.find(" - ") + 3); }

std::vector<std::string> textsOf(const std::string& file) {
  std::vector<std::string> texts;
  for (const std::string& line : linesOf(file)) texts.push_back(textOf(line));
  return texts;
}

// What happens meanwhile on standard error.
template <typename Action>
std::string standardErrorOf(Action action) {
  testing::internal::CaptureStderr();
  action();
  return testing::internal::GetCapturedStderr();
}

class LogFile : public LogTest {
 protected:
  static void write(const std::string& text) { writeLog(1, "", "f", "u", 1, text); }

  // Why the log cannot be configured with that file.
  static std::string faultOf(const std::string& file) {
    try {
      configureLogWith(R"({"file": ")" + file + "\", \"level\": 9}");
    } catch (const std::runtime_error& fault) {
      return fault.what();
    }
    return "none";
  }
};

TEST_F(LogFile, IsAppendedTo) {
  logToFile();
  write("first run");
  logToFile();
  write("second run");
  EXPECT_THAT(textsOf(file_), ElementsAre("first run", "second run"));
}

TEST_F(LogFile, HoldsALineAsSoonAsItIsWritten) {
  logToFile(R"(,"level": 3)");
  writeLog(3, "", "f", "u", 1, "detail");
  std::ifstream in(file_);
  std::string line;
  std::getline(in, line);
  EXPECT_EQ(textOf(line), "detail");
}

TEST_F(LogFile, GetsItsDirectoriesMade) {
  const std::string file = directory_ / "a/b/agent.log";
  configureLogWith(R"({"stderr": false, "file": ")" + file + "\"}");
  write("deep");
  EXPECT_THAT(textsOf(file), ElementsAre("deep"));
}

TEST_F(LogFile, StandsBesideStandardError) {
  const std::string shown = standardErrorOf([&] {
    configureLogWith(R"({"file": ")" + file_ + "\"}");
    write("both");
  });
  EXPECT_EQ(linesOf(file_), std::vector{shown.substr(0, shown.size() - 1)});
}

TEST_F(LogFile, NoneMeansNone) {
  EXPECT_EQ(standardErrorOf([] {
              configureLogWith(R"({"stderr": false})");
              write("nowhere");
            }),
            "");
}

TEST_F(LogFile, IsRotatedAtItsSize) {
  logToFile(R"(,"maxFileBytes": 4096, "maxFiles": 2)");
  for (int i = 0; i < 400; ++i) write(std::to_string(i));
  EXPECT_FALSE(fs::exists(directory_ / "agent.3.log"));
  int next = -1;
  for (const char* name : {"agent.2.log", "agent.1.log", "agent.log"}) {
    EXPECT_LE(fs::file_size(directory_ / name), 4096u);
    for (const std::string& text : textsOf(directory_ / name)) {
      EXPECT_TRUE(next == -1 || text == std::to_string(next)) << name << " " << text;
      next = std::stoi(text) + 1;
    }
  }
  EXPECT_EQ(next, 400);
}

TEST_F(LogFile, TakesALineThatIsLargerThanItsSize) {
  logToFile(R"(,"maxFileBytes": 4096)");
  const std::string large(10000, 'x');
  write("small");
  write(large);
  EXPECT_THAT(textsOf(file_), ElementsAre(large));
  EXPECT_THAT(textsOf(directory_ / "agent.1.log"), ElementsAre("small"));
}

TEST_F(LogFile, ThatIsADirectoryIsRefused) {
  EXPECT_EQ(faultOf(directory_.path()),
            "cannot open the log file \"" + directory_.path() + "\": Is a directory");
}

TEST_F(LogFile, ThatIsAPipeIsRefused) {
  const std::string pipe = directory_ / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(faultOf(pipe), "cannot open the log file \"" + pipe + "\": Is a pipe");
}

TEST_F(LogFile, BelowAFileIsRefused) {
  const std::string file = directory_.write("plain", "") + "/agent.log";
  EXPECT_EQ(faultOf(file), "cannot open the log file \"" + file + "\": Not a directory");
}

TEST_F(LogFile, ThatIsRefusedLeavesTheLogAsItWas) {
  logToFile();
  EXPECT_NE(faultOf(directory_.path()), "none");
  write("still here");
  EXPECT_FALSE(logEnabled(2));
  EXPECT_THAT(textsOf(file_), ElementsAre("still here"));
}

TEST_F(LogFile, OnAFullDiskIsReportedOnce) {
  configureLogWith(R"({"stderr": false, "file": "/dev/full"})");
  EXPECT_EQ(standardErrorOf([] {
              for (int i = 0; i < 5; ++i) write("lost");
              flushLog();
            }),
            "cannot write the log file \"/dev/full\": Failed flush to file /dev/full: No space "
            "left on device; its messages are dropped until it can be written again\n");
}

class VanishingLogFile : public LogFile {
 protected:
  VanishingLogFile() {
    configureLogWith(R"({"stderr": false, "maxFileBytes": 4096, "file": ")" + inner_ + "\"}");
    write("before");
  }

  // The directory goes, and nothing can be made in its place.
  void blockDirectory() {
    fs::rename(directory_ / "log", directory_ / "gone");
    directory_.write("log", "");
  }

  const std::string inner_ = directory_ / "log/agent.log";
  const std::string large_ = std::string(4096, 'x');  // makes the file rotate
};

TEST_F(VanishingLogFile, IsReportedOnceAndCountedWhenItComesBack) {
  blockDirectory();
  const std::string shown = standardErrorOf([&] {
    for (int i = 0; i < 3; ++i) write(large_);
  });
  EXPECT_EQ(shown, "cannot write the log file \"" + inner_ + "\": Failed opening file " + inner_ +
                       " for writing: Not a directory; its messages are dropped until it can be "
                       "written again\n");
  fs::remove(directory_ / "log");
  EXPECT_EQ(standardErrorOf([] { write("after"); }), "");
  const std::vector<std::string> lines = linesOf(inner_);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_THAT(lines[0], testing::HasSubstr(
                            " error -:0 - log messages lost while this file could not be written: "
                            "3"));
  EXPECT_EQ(textOf(lines[1]), "after");
}

TEST_F(VanishingLogFile, IsMadeAnewAtTheNextRotation) {
  fs::remove_all(directory_ / "log");
  EXPECT_EQ(standardErrorOf([&] { write(large_); }), "");
  EXPECT_THAT(textsOf(inner_), ElementsAre(large_));
}

TEST_F(VanishingLogFile, LossIsNotedInTheFormOfTheLines) {
  configureLogWith(R"({"stderr": false, "maxFileBytes": 4096, "format": "json", "file": ")" +
                   inner_ + "\"}");
  blockDirectory();
  standardErrorOf([&] { write(large_); });
  fs::remove(directory_ / "log");
  write("after");
  EXPECT_THAT(
      linesOf(inner_).at(0),
      testing::HasSubstr(R"("text":"messages lost while this file could not be written: 1"})"));
}

TEST_F(LogFile, ThatCannotBeRenamedIsBegunAnew) {
  logToFile(R"(,"maxFileBytes": 4096, "maxFiles": 1)");
  fs::create_directories(directory_ / "agent.1.log/in the way");
  write("before");
  const std::string shown = standardErrorOf([&] { write(std::string(4096, 'x')); });
  EXPECT_EQ(shown, "cannot write the log file \"" + file_ +
                       "\": rotating_file_sink: failed renaming " + file_ + " to " +
                       (directory_ / "agent.1.log") +
                       ": Is a directory; its messages are dropped until it can be written "
                       "again\n");
  write("after");
  EXPECT_EQ(linesOf(file_).size(), 2u);
  EXPECT_EQ(textOf(linesOf(file_).back()), "after");
}

}  // namespace
}  // namespace orma
