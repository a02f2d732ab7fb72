// The table against a scripted directory and a scripted line reader: what a real file system
// shows by chance only. readdir and OrmaGetLine are wrapped by the linker.
#include <dirent.h>

#include <cerrno>
#include <cstring>
#include <deque>
#include <optional>

#include "error_table_fixture.h"
#include "orma/text/text.h"

namespace {

// Names that the directory has, in order; then its end, or a read error.
std::optional<std::deque<std::string>> directoryScript;
int directoryError = 0;

// One call of the line reader: the texts it writes, where given, and its result.
struct LineScript {
  std::optional<std::string> key;
  std::optional<std::string> value;
  int result;
};
std::optional<std::deque<LineScript>> lineScript;
bool buffersWereClear = false;

bool isClear(const char* buffer) {
  return std::all_of(buffer, buffer + kOrmaLineBufferBytes, [](char byte) { return byte == 0; });
}

}  // namespace

extern "C" {

dirent* __real_readdir(DIR* directory);
dirent* __wrap_readdir(DIR* directory) {
  static dirent entry;
  if (!directoryScript) return __real_readdir(directory);
  if (directoryScript->empty()) {
    errno = directoryError;
    return nullptr;
  }
  std::strncpy(entry.d_name, directoryScript->front().c_str(), sizeof entry.d_name - 1);
  directoryScript->pop_front();
  return &entry;
}

int __real__Z11OrmaGetLinePcS_P8_IO_FILE(char* key, char* value, std::FILE* file);
int __wrap__Z11OrmaGetLinePcS_P8_IO_FILE(char* key, char* value, std::FILE* file) {
  if (!lineScript) return __real__Z11OrmaGetLinePcS_P8_IO_FILE(key, value, file);
  if (lineScript->empty()) return 0;
  const LineScript line = lineScript->front();
  lineScript->pop_front();
  buffersWereClear = isClear(key) && isClear(value);
  if (line.key) std::memcpy(key, line.key->data(), line.key->size());
  if (line.value) std::memcpy(value, line.value->data(), line.value->size());
  return line.result;
}
}

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ScriptedErrorTable : public ErrorTableTest {
 protected:
  ScriptedErrorTable() { reset(); }
  ~ScriptedErrorTable() override { reset(); }

  static void reset() {
    directoryScript.reset();
    directoryError = 0;
    lineScript.reset();
  }
  // Loads one file with the scripted lines.
  void load(std::deque<LineScript> lines) {
    const auto file = write("a.res", "");
    lineScript = std::move(lines);
    table().LoadFile(file);
  }
};

std::string padded(std::string text) {
  text.push_back('\0');
  return text;
}

TEST_F(ScriptedErrorTable, FilesAreReadInTheDirectorysOrderButForTheDefaults) {
  write("b.res", "1=b\n2=b\n3=b\n");
  write("a.res", "1=a\n2=a\n");
  write("errcode_ACCESS_TDT.res", "1=d\n2=d\n3=d\n4=d\n");
  directoryScript = {".", "b.res", "..", "a.res", "errcode_ACCESS_TDT.res"};
  table().Init();
  EXPECT_EQ(textOf(1), "a");
  EXPECT_EQ(textOf(3), "b");
  EXPECT_EQ(textOf(4), "d");
  directoryScript = {"a.res", "errcode_ACCESS_TDT.res", "b.res"};
  table().Init();
  EXPECT_EQ(textOf(1), "b");
  EXPECT_EQ(textOf(4), "d");
}

TEST_F(ScriptedErrorTable, OnlyTheExactNameIsTheDefaultsFile) {
  write("x.res", "1=x\n");
  write("errcode_ACCESS_TDT.res.old", "1=old\n");
  directoryScript = {"x.res", "errcode_ACCESS_TDT.res.old"};
  table().Init();
  EXPECT_EQ(textOf(1), "old");
}

TEST_F(ScriptedErrorTable, ReadErrorOfTheDirectoryKeepsWhatCameBefore) {
  write("a.res", "1=a\n");
  directoryScript = {"a.res"};
  directoryError = EIO;
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(1), "a");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(ScriptedErrorTable, EntryThatVanishedIsReportedAndTheOthersAreRead) {
  write("a.res", "1=a\n");
  write("c.res", "3=c\n");
  directoryScript = {"a.res", "vanished.res", "c.res"};
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(1), "a");
  EXPECT_EQ(textOf(3), "c");
  EXPECT_THAT(platform().log.lines(), ElementsAre(ReportsUnopened(pathOf("vanished.res"))));
}

TEST_F(ScriptedErrorTable, DirectoryItselfAndTheOneAboveAreNotRead) {
  directoryScript = {".", ".."};
  lineScript = {{padded("5"), padded("five"), 1}};
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(lineScript->size(), 1U);
}

TEST_F(ScriptedErrorTable, WhatReadingADirectoryGivesIsForTheLineReader) {
  write("sub/a.res", "");
  directoryScript = {"sub"};
  lineScript = {{padded("5"), padded("five"), 1}};
  EXPECT_TRUE(table().Init());
  EXPECT_EQ(textOf(5), "five");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(ScriptedErrorTable, BuffersAreClearAtTheFirstLineOnly) {
  load({{padded("5"), padded("five"), 1}});
  EXPECT_TRUE(buffersWereClear);
  load({{padded("5"), padded("five"), 1}, {{}, {}, 2}});
  EXPECT_FALSE(buffersWereClear);
}

TEST_F(ScriptedErrorTable, KeyOfTheLineBeforeStaysWhenTheReaderLeavesIt) {
  load({{padded("5"), padded("five"), 1}, {{}, padded("again"), 1}});
  EXPECT_EQ(textOf(5), "again");
}

TEST_F(ScriptedErrorTable, OnlyResultOneIsAPairAndOnlyZeroEnds) {
  load({{padded("1"), padded("a"), 2},
        {padded("2"), padded("b"), -1},
        {padded("3"), padded("c"), 1},
        {padded("4"), padded("d"), 100},
        {padded("5"), padded("e"), 1},
        {padded("6"), padded("f"), 0},
        {padded("7"), padded("g"), 1}});
  EXPECT_EQ(textOf(1), "unknown");
  EXPECT_EQ(textOf(2), "unknown");
  EXPECT_EQ(textOf(3), "c");
  EXPECT_EQ(textOf(4), "unknown");
  EXPECT_EQ(textOf(5), "e");
  EXPECT_EQ(textOf(6), "unknown");
  EXPECT_EQ(textOf(7), "unknown");
  EXPECT_EQ(lineScript->size(), 1U);
}

TEST_F(ScriptedErrorTable, ValueEndsAtItsFirstNul) {
  load({{padded("5"), std::string("one\0two\0", 8), 1}});
  EXPECT_EQ(textOf(5), "one");
}

}  // namespace
}  // namespace emf::test
