#include <gtest/gtest.h>

#include "config_problems.h"
#include "orma/bundle/config_items.h"

namespace NS_BUNDLEMGR1 {
namespace {

class InstalledItems : public testing::Test {
 protected:
  ~InstalledItems() override { orma::Configuration::install(nullptr); }

  static void install(const std::string& text) { orma::Configuration::install(parsed(text)); }

  // The item after asking for it with 77 in the variable, and whether it was there.
  static std::pair<bool, int> item(const std::string& name) {
    int value = 77;
    const bool found = CorbaConfigItems::Instance()->GetIntItemInfo(name, value);
    return {found, value};
  }
};

constexpr std::pair<bool, int> kUntouched = {false, 77};

TEST_F(InstalledItems, IntegersAreStored) {
  install(R"({"items": {"IsReportSubnet": 1, "off": 0, "low": -2147483648, "high": 2147483647}})");
  EXPECT_EQ(item("IsReportSubnet"), std::pair(true, 1));
  EXPECT_EQ(item("off"), std::pair(true, 0));
  EXPECT_EQ(item("low"), std::pair(true, -2147483647 - 1));
  EXPECT_EQ(item("high"), std::pair(true, 2147483647));
}

TEST_F(InstalledItems, MissingItemLeavesTheVariableAlone) {
  EXPECT_EQ(item("IsReportSubnet"), kUntouched);
  install(R"({"items": {"other": 1}})");
  EXPECT_EQ(item("IsReportSubnet"), kUntouched);
  EXPECT_EQ(item(""), kUntouched);
}

TEST_F(InstalledItems, WhatIsNo32BitIntegerIsNoItem) {
  install(R"({"items": {"text": "1", "wide": 2147483648, "low": -2147483649}})");
  EXPECT_EQ(item("text"), kUntouched);
  EXPECT_EQ(item("wide"), kUntouched);
  EXPECT_EQ(item("low"), kUntouched);
}

TEST_F(InstalledItems, LaterConfigurationIsSeen) {
  install(R"({"items": {"IsReportSubnet": 1}})");
  install(R"({"items": {"IsReportSubnet": 2}})");
  EXPECT_EQ(item("IsReportSubnet"), std::pair(true, 2));
}

TEST_F(InstalledItems, InstallationPathsComeFromTheConfiguration) {
  EXPECT_EQ(GetORMAEnvironment(), "");
  EXPECT_EQ(GetORMARootPath(), "");
  install(R"({"installation": {"environment": "/opt/orma/bin", "root": "site"}})");
  EXPECT_EQ(GetORMAEnvironment(), "/opt/orma/bin");
  EXPECT_EQ(GetORMARootPath(), "/conf/site");
}

}  // namespace
}  // namespace NS_BUNDLEMGR1
