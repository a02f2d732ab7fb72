#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "orma/text/text.h"

namespace {

constexpr std::size_t kAreaBytes = 0x7FFFFFFF;
constexpr std::size_t kAreaCharacters = 0x7FFFFFFE;

// Memory of the largest target there is; the pages are only there once they are touched.
class LargeArea {
 public:
  LargeArea()
      : area_(mmap(nullptr, kAreaBytes, PROT_READ | PROT_WRITE,
                   MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
  ~LargeArea() {
    if (exists()) munmap(area_, kAreaBytes);
  }
  LargeArea(const LargeArea&) = delete;
  LargeArea& operator=(const LargeArea&) = delete;

  bool exists() const { return area_ != MAP_FAILED; }
  char* text() const { return static_cast<char*>(area_); }

  std::size_t touchedPages() const {
    const auto pageBytes = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::vector<unsigned char> resident((kAreaBytes + pageBytes - 1) / pageBytes);
    if (mincore(area_, kAreaBytes, resident.data()) != 0) return resident.size();
    std::size_t touched = 0;
    for (const unsigned char page : resident) touched += page & 1U;
    return touched;
  }

 private:
  void* area_;
};

// A target of eight characters between two that must stay as they are.
struct Guarded {
  char before = '<';
  char text[8] = {'x', 'x', 'x', 'x', 'x', 'x', 'x', '\0'};
  char after = '>';
  bool isWhole() const { return before == '<' && after == '>'; }
};

int formatted(char* dest, std::size_t destMax, std::size_t count, const char* format, ...)
    __attribute__((format(printf, 4, 5)));
int formatted(char* dest, std::size_t destMax, std::size_t count, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int result = vsnprintf_s(dest, destMax, count, format, arguments);
  va_end(arguments);
  return result;
}

TEST(MemsetS, FillsCountBytesAndNoMore) {
  Guarded target;
  EXPECT_EQ(memset_s(target.text, 8, 'a', 3), 0);
  EXPECT_EQ(std::string(target.text), "aaaxxxx");
  EXPECT_EQ(memset_s(target.text, 8, 'b', 8), 0);
  EXPECT_EQ(std::string(target.text, 8), "bbbbbbbb");
  EXPECT_EQ(memset_s(target.text, 8, 'c', 0), 0);
  EXPECT_EQ(std::string(target.text, 8), "bbbbbbbb");
  EXPECT_TRUE(target.isWhole());
}

TEST(MemsetS, CountBeyondTheTargetFillsTheTargetAndSaysSo) {
  Guarded target;
  EXPECT_EQ(memset_s(target.text, 8, 'a', 9), ERANGE);
  EXPECT_EQ(std::string(target.text, 8), "aaaaaaaa");
  EXPECT_EQ(memset_s(target.text, 4, 'b', SIZE_MAX), ERANGE);
  EXPECT_EQ(std::string(target.text, 8), "bbbbaaaa");
  EXPECT_TRUE(target.isWhole());
  EXPECT_EQ(memset_s(nullptr, 8, 'a', 1), EINVAL);
}

TEST(StrncpyS, CopiesAtMostCountCharacters) {
  Guarded target;
  EXPECT_EQ(strncpy_s(target.text, 8, "abcdef", 3), 0);
  EXPECT_STREQ(target.text, "abc");
  EXPECT_EQ(strncpy_s(target.text, 8, "abcdefg", SIZE_MAX), 0);
  EXPECT_STREQ(target.text, "abcdefg");
  EXPECT_EQ(strncpy_s(target.text, 8, "abcdefghij", 7), 0);
  EXPECT_STREQ(target.text, "abcdefg");
  EXPECT_EQ(strncpy_s(target.text, 8, "abc", 0), 0);
  EXPECT_STREQ(target.text, "");
  EXPECT_TRUE(target.isWhole());
}

TEST(StrncpyS, TextThatDoesNotFitEmptiesTheTarget) {
  Guarded target;
  EXPECT_EQ(strncpy_s(target.text, 8, "abcdefgh", 8), ERANGE);
  EXPECT_STREQ(target.text, "");
  EXPECT_EQ(std::string(target.text + 1), "xxxxxx");
  EXPECT_EQ(strncpy_s(target.text, 1, "a", 1), ERANGE);
  EXPECT_TRUE(target.isWhole());
}

TEST(StrncpyS, ReadsNoFurtherThanTheTargetCouldTake) {
  const std::vector<char> unterminated(8, 'u');  // the address sanitizer sees a ninth byte read
  Guarded target;
  EXPECT_EQ(strncpy_s(target.text, 8, unterminated.data(), 100), ERANGE);
  EXPECT_EQ(strncpy_s(target.text, 8, unterminated.data(), 5), 0);
  EXPECT_STREQ(target.text, "uuuuu");
}

TEST(StrncpyS, NullPointersAndNoRoomAreErrors) {
  Guarded target;
  EXPECT_EQ(strncpy_s(nullptr, 8, "a", 1), EINVAL);
  EXPECT_EQ(strncpy_s(target.text, 0, "a", 1), EINVAL);
  EXPECT_STREQ(target.text, "xxxxxxx");
  EXPECT_EQ(strncpy_s(target.text, 8, nullptr, 1), EINVAL);
  EXPECT_STREQ(target.text, "");
}

TEST(SnprintfS, GivesTheNumberOfCharactersWritten) {
  Guarded target;
  EXPECT_EQ(snprintf_s(target.text, 8, 7, "%s-%d", "NE", 1234), 7);
  EXPECT_STREQ(target.text, "NE-1234");
  EXPECT_EQ(snprintf_s(target.text, 8, 7, "%s", ""), 0);
  EXPECT_STREQ(target.text, "");
  EXPECT_EQ(formatted(target.text, 8, 7, "%u", 42U), 2);
  EXPECT_STREQ(target.text, "42");
  EXPECT_TRUE(target.isWhole());
}

TEST(SnprintfS, CutTextStaysAndIsToldByMinusOne) {
  Guarded target;
  EXPECT_EQ(snprintf_s(target.text, 8, 7, "%s", "abcdefgh"), -1);
  EXPECT_STREQ(target.text, "abcdefg");
  EXPECT_EQ(snprintf_s(target.text, 8, 3, "%s", "abcd"), -1);
  EXPECT_STREQ(target.text, "abc");
  EXPECT_EQ(snprintf_s(target.text, 8, 0, "%s", "a"), -1);
  EXPECT_STREQ(target.text, "");
  EXPECT_TRUE(target.isWhole());
}

TEST(SnprintfS, BoundsThatMakeNoSenseEmptyTheTarget) {
  Guarded target;
  EXPECT_EQ(snprintf_s(target.text, 8, 8, "%s", "a"), -1);
  EXPECT_STREQ(target.text, "");
  EXPECT_EQ(std::string(target.text + 1), "xxxxxx");
  EXPECT_EQ(snprintf_s(target.text, 8, SIZE_MAX, "%s", "a"), -1);
  EXPECT_EQ(snprintf_s(nullptr, 8, 7, "%s", "a"), -1);
  EXPECT_EQ(snprintf_s(target.text, 0, 0, "%s", "a"), -1);
  EXPECT_TRUE(target.isWhole());
}

TEST(SnprintfS, FormatThatFailsEmptiesTheTarget) {
  Guarded target;
  const wchar_t unconvertible[] = {static_cast<wchar_t>(0x6846), 0};  // the C locale is ASCII
  EXPECT_EQ(snprintf_s(target.text, 8, 7, "ab%ls", unconvertible), -1);
  EXPECT_STREQ(target.text, "");
  EXPECT_TRUE(target.isWhole());
}

TEST(SnprintfS, TheLargestBoundsTouchOnlyWhatIsWritten) {
  const LargeArea area;
  if (!area.exists()) GTEST_SKIP() << "this machine gives no 2 GiB of unreserved address space";
  ASSERT_EQ(area.touchedPages(), 0U);
  EXPECT_EQ(snprintf_s(area.text(), kAreaBytes, kAreaCharacters, "NE=%u", 4294967295U), 13);
  EXPECT_STREQ(area.text(), "NE=4294967295");
  EXPECT_EQ(area.touchedPages(), 1U);
  EXPECT_EQ(snprintf_s(area.text(), kAreaBytes, kAreaBytes, "NE=%u", 1U), -1);
  EXPECT_EQ(area.touchedPages(), 1U);
}

TEST(StrncpyS, TheLargestBoundsTouchOnlyWhatIsWritten) {
  const LargeArea area;
  if (!area.exists()) GTEST_SKIP() << "this machine gives no 2 GiB of unreserved address space";
  EXPECT_EQ(strncpy_s(area.text(), kAreaBytes, "NE=1", kAreaCharacters), 0);
  EXPECT_STREQ(area.text(), "NE=1");
  EXPECT_EQ(area.touchedPages(), 1U);
}

}  // namespace
