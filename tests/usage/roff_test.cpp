#include "usage/roff.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace usagetest {
namespace {

using testing::HasSubstr;
using usage::Roff;
using usage::roffWords;

TEST(RoffWords, NothingIsARequestOrAnEscape) {
  EXPECT_EQ(roffWords(".hidden file"), "\\&.hidden file");
  EXPECT_EQ(roffWords("'quoted'"), "\\&\\(aqquoted\\(aq");
  EXPECT_EQ(roffWords("a\\nb"), "a\\enb");
  EXPECT_EQ(roffWords("a.b"), "a.b");
  EXPECT_EQ(roffWords(""), "");
}

TEST(RoffWords, SignsStayThoseOfTheKeyboard) {
  EXPECT_EQ(roffWords("--all-of-it"), "\\-\\-all\\-of\\-it");
  EXPECT_EQ(roffWords("`^~"), "\\(ga\\(ha\\(ti");
}

TEST(RoffPage, EachSentenceHasALine) {
  Roff page("mover", 1, "moves");
  page.paragraph("One. Two, v1.0. .three");
  EXPECT_THAT(page.text(), HasSubstr(".PP\nOne.\nTwo, v1.0.\n\\&.three\n"));
}

TEST(RoffPage, ATitleBeginsAParagraphByItself) {
  Roff page("mover", 1, "moves");
  page.section("FIRST");
  page.paragraph("One.");
  page.paragraph("Two.");
  page.subsection("second");
  page.paragraph("Three.");
  EXPECT_THAT(page.text(), HasSubstr(".SH FIRST\nOne.\n.PP\nTwo.\n.SS second\nThree.\n"));
}

TEST(RoffPage, CodeKeepsItsLines) {
  Roff page("mover", 1, "moves");
  page.code({"{", "  \"a\": 'b'", ".c", "}"});
  EXPECT_THAT(page.text(),
              HasSubstr(".PP\n.nf\n.RS\n{\n  \"a\": \\(aqb\\(aq\n\\&.c\n}\n.RE\n.fi\n"));
}

}  // namespace
}  // namespace usagetest
