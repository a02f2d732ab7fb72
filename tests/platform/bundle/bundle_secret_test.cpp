#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <sstream>
#include <utility>

#include "orma/bundle/secret.h"
#include "temp_directory.h"

namespace orma {
namespace {

// The flags of the mapping that an address lies in, as the kernel tells them: "dd" is left out of
// core dumps.
std::string flagsOf(const void* address) {
  std::ifstream maps("/proc/self/smaps");
  bool inside = false;
  for (std::string line; std::getline(maps, line);) {
    unsigned long from = 0;
    unsigned long to = 0;
    char dash = '\0';
    std::istringstream words(line);
    if (words >> std::hex >> from >> dash >> to && dash == '-') {
      const auto place = reinterpret_cast<unsigned long>(address);
      inside = from <= place && place < to;
    }
    if (inside && line.rfind("VmFlags:", 0) == 0) return line + " ";
  }
  return "";
}

TEST(SecretText, IsEmptyAtFirst) {
  const SecretText none;
  EXPECT_TRUE(none.empty());
  EXPECT_EQ(none.c_str(), nullptr);
  const SecretText room(10);
  EXPECT_TRUE(room.empty());
  EXPECT_STREQ(room.c_str(), "");
}

TEST(SecretText, HoldsTwoTextsOneBehindTheOther) {
  const SecretText text("Name: ", "value");
  EXPECT_EQ(text.view(), "Name: value");
  EXPECT_STREQ(text.c_str(), "Name: value");
}

TEST(SecretText, IsLeftOutOfCoreDumps) {
  const SecretText text("se", "cret");
  EXPECT_THAT(flagsOf(text.c_str()), testing::HasSubstr(" dd "));
}

TEST(SecretText, WhatIsCutOffIsWiped) {
  SecretText text("abc", "def");
  text.resize(2);
  EXPECT_EQ(text.view(), "ab");
  EXPECT_EQ(std::string_view(text.data(), 7), std::string_view("ab\0\0\0\0\0", 7));
  text.resize(100);
  EXPECT_EQ(text.view().size(), text.capacity());
}

TEST(SecretText, KeepsAPartOfItself) {
  SecretText text("  ab", "  ");
  text.keep(text.view().substr(2, 2));
  EXPECT_EQ(text.view(), "ab");
  EXPECT_STREQ(text.c_str(), "ab");
  text.keep({});
  EXPECT_TRUE(text.empty());
}

TEST(SecretText, MovesItsMemory) {
  SecretText text("a", "b");
  const char* const place = text.c_str();
  SecretText other(std::move(text));
  EXPECT_EQ(other.c_str(), place);
  SecretText third;
  third = std::move(other);
  EXPECT_EQ(third.view(), "ab");
}

struct ModeCase {
  mode_t mode;
  bool ownerAndGroup;  // may hold a secret of the owner and the group
  bool owner;          // of the owner alone
};

TEST(SecretMode, OthersHaveNoAccess) {
  constexpr ModeCase kCases[] = {{0600, true, true},   {0400, true, true},   {0640, true, false},
                                 {0620, true, false},  {0604, false, false}, {0602, false, false},
                                 {0601, false, false}, {0777, false, false}};
  for (const ModeCase& row : kCases) {
    EXPECT_EQ(secretModeFault(row.mode, SecretReaders::kOwnerAndGroup).empty(), row.ownerAndGroup)
        << std::oct << row.mode;
    EXPECT_EQ(secretModeFault(row.mode, SecretReaders::kOwner).empty(), row.owner)
        << std::oct << row.mode;
  }
}

TEST(SecretMode, AFaultTellsTheModeAndTheRemedy) {
  EXPECT_EQ(secretModeFault(S_IFREG | 0644, SecretReaders::kOwnerAndGroup),
            "is open to every user (mode 0644) and holds a secret; take the access away: chmod "
            "o-rwx");
  EXPECT_EQ(secretModeFault(S_IFREG | 0640, SecretReaders::kOwner),
            "is open to its group (mode 0640) and holds a secret; take the access away: chmod "
            "go-rwx");
}

TEST(SecretMode, AFileThatCannotBeLookedAtIsForItsReaderToTell) {
  const TempDirectory directory;
  EXPECT_EQ(secretFileFault(directory / "none", SecretReaders::kOwner), "");
  const std::string file = directory.write("open", "se-cret");
  ASSERT_EQ(::chmod(file.c_str(), 0644), 0);
  EXPECT_THAT(secretFileFault(file, SecretReaders::kOwner),
              testing::StartsWith("is open to every"));
}

}  // namespace
}  // namespace orma
