#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <thread>
#include <vector>

#include "orma/text/text.h"

namespace {

std::string converted(const std::string& from, const std::string& to, const std::string& input) {
  std::string output = "replaced";
  OrmaGlobalUtils::OrmaCodeSetConvert(from, to, input, output);
  return output;
}

struct Example {
  const char* utf8;
  const char* gbk;
  const char* latin1;
};

// "?" stands where a set lacks the character.
const Example kExamples[] = {
    {"", "", ""},
    {"core-1", "core-1", "core-1"},
    {"框:1/槽:2", "\xBF\xF2:1/\xB2\xDB:2", "?:1/?:2"},
    {"M\xC3\xBCnchen", "M\xA8\xB9nchen", "M\xFCnchen"},
    {"Espa\xC3\xB1"
     "a",
     "Espa?a",
     "Espa\xF1"
     "a"},
    // The second byte of this GBK character is an ASCII one.
    {"\xE4\xB8\x82", "\x81\x40", "?"},
    {"a\xF0\x9F\x98\x80z", "a?z", "a?z"},
};

TEST(CodeSetConvert, ConvertsEachCharacterThatTheWantedSetHas) {
  for (const Example& example : kExamples) {
    EXPECT_EQ(converted("UTF-8", "GBK", example.utf8), example.gbk) << example.utf8;
    EXPECT_EQ(converted("UTF-8", "ISO-8859-1", example.utf8), example.latin1) << example.utf8;
  }
}

TEST(CodeSetConvert, ConvertsBackToUtf8) {
  EXPECT_EQ(converted("GBK", "UTF-8", "\xBF\xF2:1/\xB2\xDB:2"), "框:1/槽:2");
  EXPECT_EQ(converted("GBK", "UTF-8", "\x81\x40"), "\xE4\xB8\x82");
  EXPECT_EQ(converted("ISO-8859-1", "UTF-8", "M\xFCnchen"), "M\xC3\xBCnchen");
}

TEST(CodeSetConvert, CharacterThatTheWantedSetLacksIsOneQuestionMarkHoweverLong) {
  EXPECT_EQ(converted("GBK", "ISO-8859-1",
                      "\x81\x40"
                      "a"),
            "?a");
  EXPECT_EQ(converted("GBK", "ISO-8859-1", "\xBF\xF2\xB2\xDB"), "??");
  EXPECT_EQ(converted("UTF-8", "ISO-8859-1", "\xE6\xA1\x86x"), "?x");
}

TEST(CodeSetConvert, EachByteThatIsNoTextIsOneQuestionMark) {
  EXPECT_EQ(converted("UTF-8", "GBK",
                      "a\xFF"
                      "b"),
            "a?b");
  EXPECT_EQ(converted("UTF-8", "GBK", "\x80\x80z"), "??z");
  EXPECT_EQ(converted("UTF-8", "ISO-8859-1",
                      "\xC3"
                      "a"),
            "?a");
  EXPECT_EQ(converted("UTF-8", "ISO-8859-1",
                      "\xE6\xA1"
                      "a\xC3\xBC"),
            "??a\xFC");
  EXPECT_EQ(converted("UTF-8", "UTF-8", "ok \xC0\xAF"), "ok ??");  // overlong
  EXPECT_EQ(converted("UTF-8", "UTF-8",
                      "\xED\xA0\x80"
                      "s"),
            "???s");                                                 // a surrogate
  EXPECT_EQ(converted("UTF-8", "GBK", "\xF5\x80\x80\x80"), "????");  // beyond Unicode
  EXPECT_EQ(converted("GBK", "UTF-8", "\xFF\xBF\xF2"), "?框");
}

TEST(CodeSetConvert, TextThatEndsWithinACharacterEndsInOneQuestionMark) {
  const std::string text = "ab\xE6\xA1\x86";
  EXPECT_EQ(converted("UTF-8", "GBK", text.substr(0, 3)), "ab?");
  EXPECT_EQ(converted("UTF-8", "GBK", text.substr(0, 4)), "ab?");
  EXPECT_EQ(converted("UTF-8", "GBK", text), "ab\xBF\xF2");
  EXPECT_EQ(converted("GBK", "UTF-8", "\xBF\xF2\xB2"), "框?");
}

TEST(CodeSetConvert, NulIsACharacterLikeOthers) {
  EXPECT_EQ(converted("UTF-8", "ISO-8859-1", std::string("\xC3\xBC\0x", 4)),
            std::string("\xFC\0x", 3));
}

TEST(CodeSetConvert, UnknownSetNameCopiesTheTextUnchanged) {
  const std::string text = "\xE6\xA1\x86\xFF";
  EXPECT_EQ(converted("UTF-8", "EBCDIC", text), text);
  EXPECT_EQ(converted("", "GBK", text), text);
  EXPECT_EQ(converted("UTF-8", "GBK//TRANSLIT", text), text);
}

TEST(CodeSetConvert, OutputMayBeTheInput) {
  std::string text = "M\xC3\xBCnchen";
  OrmaGlobalUtils::OrmaCodeSetConvert("UTF-8", "ISO-8859-1", text, text);
  EXPECT_EQ(text, "M\xFCnchen");
}

TEST(CodeSetConvert, LongTextsKeepEveryCharacter) {
  std::string utf8;
  std::string latin1;
  for (int i = 0; i < 100000; ++i) {
    utf8 += i % 3 == 0 ? "\xC3\xBC" : i % 3 == 1 ? "x" : "\xE6\xA1\x86";
    latin1 += i % 3 == 0 ? "\xFC" : i % 3 == 1 ? "x" : "?";
  }
  EXPECT_EQ(converted("UTF-8", "ISO-8859-1", utf8), latin1);
}

TEST(CodeSetConvert, LongTextsAreNeverSplitWithinACharacter) {
  std::string latin1;
  std::string chinese;
  std::string gbk;
  for (int i = 0; i < 1000; ++i) {
    latin1 += "\xC3\xBC";
    chinese += "框";
    gbk += "\xBF\xF2";
  }
  EXPECT_EQ(converted("ISO-8859-1", "UTF-8", std::string(1000, '\xFC')), latin1);
  for (const std::string start : {"", "a", "ab"}) {
    EXPECT_EQ(converted("UTF-8", "GBK", start + chinese), start + gbk);
    EXPECT_EQ(converted("GBK", "UTF-8", start + gbk), start + chinese);
    EXPECT_EQ(converted("UTF-8", "ISO-8859-1", start + latin1), start + std::string(1000, '\xFC'));
  }
}

TEST(CodeSetConvert, LocaleDoesNotMatter) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
  const std::string inUtf8 =
      converted("UTF-8", "ISO-8859-1", "\xE2\x82\xAC 10 \xE2\x80\x9Cx\xE2\x80\x9D");
  ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr);
  const std::string inC =
      converted("UTF-8", "ISO-8859-1", "\xE2\x82\xAC 10 \xE2\x80\x9Cx\xE2\x80\x9D");
  std::setlocale(LC_ALL, before.c_str());
  EXPECT_EQ(inUtf8, "? 10 ?x?");
  EXPECT_EQ(inC, inUtf8);
}

// Under the address sanitizer this also shows that a thread's descriptors are closed when it ends.
TEST(CodeSetConvert, ThreadsConvertAtTheSameTime) {
  std::vector<std::string> results(8);
  std::vector<std::thread> threads;
  for (std::string& result : results) {
    threads.emplace_back([&result] {
      for (int i = 0; i < 500; ++i) {
        for (const Example& example : kExamples) {
          if (converted("UTF-8", "GBK", example.utf8) != example.gbk ||
              converted("UTF-8", "ISO-8859-1", example.utf8) != example.latin1) {
            result = example.utf8;
          }
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(results, std::vector<std::string>(8));
}

}  // namespace
