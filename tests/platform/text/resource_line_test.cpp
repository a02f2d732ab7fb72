#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "orma/text/text.h"

namespace {

using ::testing::ElementsAre;

// A file of this content, open for reading.
class ResourceFile {
 public:
  explicit ResourceFile(std::string content)
      : content_(std::move(content)),
        file_(content_.empty() ? std::fopen("/dev/null", "r")
                               : fmemopen(content_.data(), content_.size(), "r")) {}
  ~ResourceFile() { std::fclose(file_); }
  ResourceFile(const ResourceFile&) = delete;
  ResourceFile& operator=(const ResourceFile&) = delete;
  std::FILE* get() const { return file_; }

 private:
  std::string content_;
  std::FILE* file_;
};

// The caller's two buffers, each with a guard behind it.
struct Buffers {
  struct Buffer {
    std::array<char, kOrmaLineBufferBytes> text{};
    char guard = '#';
  };
  Buffer key;
  Buffer value;

  int read(const ResourceFile& file) {
    const int result = OrmaGetLine(key.text.data(), value.text.data(), file.get());
    EXPECT_EQ(key.guard, '#');
    EXPECT_EQ(value.guard, '#');
    return result;
  }
};

// Each line as the caller sees it: "1 key|value", "2", and at last "0".
std::vector<std::string> linesOf(const std::string& content) {
  const ResourceFile file(content);
  const auto buffers = std::make_unique<Buffers>();
  std::vector<std::string> lines;
  for (;;) {
    const int result = buffers->read(file);
    lines.push_back(std::to_string(result));
    if (result == 1) {
      lines.back() +=
          std::string(" ") + buffers->key.text.data() + "|" + buffers->value.text.data();
    }
    if (result == 0) return lines;
  }
}

TEST(OrmaGetLine, PairIsSplitAtTheFirstEqualsSign) {
  EXPECT_THAT(linesOf("16=text\n0x10=a=b\n"), ElementsAre("1 16|text", "1 0x10|a=b", "0"));
}

TEST(OrmaGetLine, BlanksAroundKeyAndValueAreTrimmedAndThoseWithinStay) {
  EXPECT_THAT(linesOf(" \t16 \t= \t some  text \t\n"), ElementsAre("1 16|some  text", "0"));
}

TEST(OrmaGetLine, LineEndsOfBothKindsAndNoneAtTheEnd) {
  EXPECT_THAT(linesOf("1=a\r\n2=b\n\r\n3=c"), ElementsAre("1 1|a", "1 2|b", "2", "1 3|c", "0"));
}

TEST(OrmaGetLine, CommentsAndEmptyLinesHoldNoPair) {
  EXPECT_THAT(linesOf("# 1=a\n  \t# 2=b\n\n   \n3=c # not a comment\n"),
              ElementsAre("2", "2", "2", "2", "1 3|c # not a comment", "0"));
}

TEST(OrmaGetLine, LineWithoutEqualsSignHoldsNoPair) {
  EXPECT_THAT(linesOf("16 text\n16\n"), ElementsAre("2", "2", "0"));
}

TEST(OrmaGetLine, KeyAndValueMayBeEmpty) {
  EXPECT_THAT(linesOf("=text\n16=\n=\n = \n"), ElementsAre("1 |text", "1 16|", "1 |", "1 |", "0"));
}

TEST(OrmaGetLine, SharpBehindTheEqualsSignIsText) {
  EXPECT_THAT(linesOf("=#a\n1=#b\n"), ElementsAre("1 |#a", "1 1|#b", "0"));
}

TEST(OrmaGetLine, NulBytesArePassedOver) {
  EXPECT_THAT(linesOf(std::string("1\0"
                                  "2=a\0b\n\0#3=c\n",
                                  14)),
              ElementsAre("1 12|ab", "2", "0"));
}

TEST(OrmaGetLine, LineWithoutPairLeavesTheBuffersAsTheyWere) {
  const ResourceFile file("16=text\n#\nno pair\n");
  const auto buffers = std::make_unique<Buffers>();
  ASSERT_EQ(buffers->read(file), 1);
  for (const int expected : {2, 2, 0}) {
    EXPECT_EQ(buffers->read(file), expected);
    EXPECT_STREQ(buffers->key.text.data(), "16");
    EXPECT_STREQ(buffers->value.text.data(), "text");
  }
}

TEST(OrmaGetLine, LongKeyAndValueAreCutAndTheRestOfTheLineIsPassedOver) {
  const std::string longText(10000, 'x');
  const std::string cut(kOrmaLineBufferBytes - 1, 'x');
  EXPECT_THAT(linesOf(longText + "=" + longText + "\n1=a\n"),
              ElementsAre("1 " + cut + "|" + cut, "1 1|a", "0"));
}

TEST(OrmaGetLine, TextOfExactlyTheBuffersLengthIsWhole) {
  for (const std::size_t length : {2046U, 2047U, 2048U}) {
    const std::string text(length, 'v');
    EXPECT_THAT(linesOf("1=" + text + "\n"),
                ElementsAre("1 1|" + text.substr(0, kOrmaLineBufferBytes - 1), "0"));
  }
}

TEST(OrmaGetLine, BlanksInFrontOfALongLineDoNotCountAsText) {
  const std::string blanks(5000, ' ');
  EXPECT_THAT(linesOf(blanks + "1" + blanks + "=" + blanks + "a" + blanks + "\n"),
              ElementsAre("1 1|a", "0"));
}

TEST(OrmaGetLine, LongLineWithoutPairIsOneLine) {
  EXPECT_THAT(linesOf(std::string(10000, 'x') + "\n#" + std::string(10000, '=') + "\n1=a\n"),
              ElementsAre("2", "2", "1 1|a", "0"));
}

TEST(OrmaGetLine, BytesOfOtherCharacterSetsPassUnchanged) {
  EXPECT_THAT(linesOf("1=\xBF\xF2\xFF\x80\n"), ElementsAre("1 1|\xBF\xF2\xFF\x80", "0"));
}

TEST(OrmaGetLine, EmptyFileIsAtItsEnd) { EXPECT_THAT(linesOf(""), ElementsAre("0")); }

TEST(OrmaGetLine, EndOfFileStaysTheEnd) {
  const ResourceFile file("1=a");
  const auto buffers = std::make_unique<Buffers>();
  EXPECT_EQ(buffers->read(file), 1);
  EXPECT_EQ(buffers->read(file), 0);
  EXPECT_EQ(buffers->read(file), 0);
}

TEST(OrmaGetLine, DirectoryIsAReadErrorAndEndsAtOnce) {
  std::FILE* directory = std::fopen("/", "r");
  ASSERT_NE(directory, nullptr);
  const auto buffers = std::make_unique<Buffers>();
  EXPECT_EQ(OrmaGetLine(buffers->key.text.data(), buffers->value.text.data(), directory), 0);
  std::fclose(directory);
}

// A file whose first read gives the start of a line and whose second fails.
struct FailingFile {
  static ssize_t read(void* self, char* buffer, std::size_t) {
    auto* file = static_cast<FailingFile*>(self);
    if (file->isRead) {
      errno = EIO;
      return -1;
    }
    file->isRead = true;
    std::memcpy(buffer, "1=a", 3);
    return 3;
  }
  bool isRead = false;
};

TEST(OrmaGetLine, ReadErrorWithinALineEndsAndLeavesTheBuffersAsTheyWere) {
  FailingFile failing;
  cookie_io_functions_t functions{};
  functions.read = FailingFile::read;
  std::FILE* file = fopencookie(&failing, "r", functions);
  ASSERT_NE(file, nullptr);
  const auto buffers = std::make_unique<Buffers>();
  EXPECT_EQ(OrmaGetLine(buffers->key.text.data(), buffers->value.text.data(), file), 0);
  EXPECT_STREQ(buffers->key.text.data(), "");
  EXPECT_STREQ(buffers->value.text.data(), "");
  std::fclose(file);
}

TEST(OrmaGetLine, NullPointersReadNothing) {
  const ResourceFile file("1=a\n");
  char buffer[kOrmaLineBufferBytes];
  EXPECT_EQ(OrmaGetLine(nullptr, buffer, file.get()), 0);
  EXPECT_EQ(OrmaGetLine(buffer, nullptr, file.get()), 0);
  EXPECT_EQ(OrmaGetLine(buffer, buffer, nullptr), 0);
  EXPECT_THAT(linesOf("1=a\n"), ElementsAre("1 1|a", "0"));
}

std::string trimmed(const std::string& text) {
  std::vector<char> buffer(text.c_str(), text.c_str() + text.size() + 1);
  OrmaTrim(buffer.data());
  return buffer.data();
}

TEST(OrmaTrim, RemovesBlanksTabsAndLineEndsAtBothEnds) {
  EXPECT_EQ(trimmed("  \t/opt/agent \r\n"), "/opt/agent");
  EXPECT_EQ(trimmed("a \t b"), "a \t b");
  EXPECT_EQ(trimmed("a"), "a");
  EXPECT_EQ(trimmed(" \t\r\n"), "");
  EXPECT_EQ(trimmed(""), "");
  OrmaTrim(nullptr);
}

}  // namespace
