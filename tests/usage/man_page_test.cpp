#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "sample.h"

namespace usagetest {
namespace {

using testing::HasSubstr;
using testing::Not;

class ManPage : public testing::Test {
 protected:
  Sample sample_;
  std::string page_ = usage::manPage(sample_.app, sample_.manual);
};

TEST_F(ManPage, NamesTheProgramFirst) {
  EXPECT_EQ(page_.rfind(".TH mover 1 ", 0), 0u);
  EXPECT_THAT(page_, HasSubstr(".SH NAME\nmover \\- moves boxes about\n"));
  EXPECT_THAT(page_, HasSubstr(".SH DESCRIPTION\nMoves boxes.\n.SH OPTIONS\n"));
}

TEST_F(ManPage, OptionsStandWithNamesValueAndMeaning) {
  EXPECT_THAT(page_, HasSubstr(".TP\n\\fB\\-\\-map\\fR \\fIFILE\\fR\nThe way\n"));
  EXPECT_THAT(page_, HasSubstr(".TP\n\\fB\\-q\\fR, \\fB\\-\\-quiet\\fR\nSay nothing\n"));
}

TEST_F(ManPage, HelpStandsOnce) {
  const auto first = page_.find("\\-\\-help");
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(page_.find("\\-\\-help", first + 1), std::string::npos);
}

TEST_F(ManPage, ACommandShowsWhatMayBeLeftOutAndWhatRepeats) {
  EXPECT_THAT(page_, HasSubstr("\n\\fBbox lift\\fR \\fIID\\fR [\\fB\\-\\-height\\fR \\fIM\\fR]\n"
                               "Lift a box.\n"));
  EXPECT_THAT(page_, HasSubstr("\n\\fBbox pack\\fR \\fIthings\\fR... \\fB\\-\\-to\\fR "
                               "\\fIFILE\\fR\nFill a box with files.\n"));
  EXPECT_THAT(page_, HasSubstr("\n\\fBrest\\fR\nDo nothing.\n"));
}

TEST_F(ManPage, ChecksOfAValueAreTold) {
  EXPECT_THAT(page_, HasSubstr("How high [1] (INT in [1 \\- 9])\n"));
}

TEST_F(ManPage, AGroupIsAHeadingBelowTheCommandsThatStandAlone) {
  EXPECT_LT(page_.find("\\fBrest\\fR"), page_.find(".SS Boxes and what is in them\n"));
}

TEST_F(ManPage, ACommandsOwnExampleStandsBelowIt) {
  EXPECT_THAT(page_, HasSubstr(".IP\nExample: mover box lift 7\n"));
}

TEST_F(ManPage, TheManualFillsItsSections) {
  EXPECT_THAT(page_, HasSubstr(".SH EXIT STATUS\n.TP\n\\fB0\\fR\nmoved\n"));
  EXPECT_THAT(page_, HasSubstr(".SH ENVIRONMENT\n.TP\n\\fBMOVER_HOME\\fR\n"));
  EXPECT_THAT(page_, HasSubstr(".SH FILES\n.TP\n\\fB/etc/mover\\fR\nIts boxes.\n"));
  EXPECT_THAT(page_, HasSubstr(".SH EXAMPLES\n.nf\n.RS\nmover box lift 7\n.RE\n.fi\n"));
  EXPECT_THAT(page_, HasSubstr(".SH SEE ALSO\n.BR box (5) ,\n.BR crane (1)\n"));
}

TEST_F(ManPage, EmptySectionsAreLeftOut) {
  sample_.manual.environment.clear();
  EXPECT_THAT(usage::manPage(sample_.app, sample_.manual), Not(HasSubstr("ENVIRONMENT")));
}

TEST_F(ManPage, WhatIsHiddenStaysHidden) {
  EXPECT_THAT(page_, Not(HasSubstr("secret")));
  EXPECT_THAT(page_, Not(HasSubstr("idle")));
  EXPECT_THAT(page_, Not(HasSubstr("Not for everybody")));
}

}  // namespace
}  // namespace usagetest
