// Whatever text comes as a name: the operations end, and agree with one another.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "orma/ident/port_index.h"
#include "orma/ident/resource_ids.h"

namespace {

using NS_UTIL::UtilCommon;

constexpr std::int64_t kBelowElement = std::int64_t{1} << 62;
constexpr std::int64_t kCompatible = std::int64_t{1} << 60;

void useAsAnyName(const std::string& text) {
  SCOPED_TRACE(::testing::PrintToString(text));
  const std::vector<std::int64_t> path = resid_compat::ExtractResIdsFromFDN(text);
  EXPECT_EQ(resid_compat::ResDN2ResID(text), path.empty() ? 0 : path.back());
  for (std::size_t i = 0; i < path.size(); ++i) {
    // An element comes first and nowhere else; the compatible form of an id is none itself.
    EXPECT_EQ((path[i] & kBelowElement) != 0, i != 0);
    EXPECT_GE(path[i], 0);
    EXPECT_EQ(path[i] & kCompatible, 0);
    EXPECT_EQ(NS_UTIL::compat::IID2ResID(NS_UTIL::compat::ResID2IID(path[i])), path[i]);
  }
  const std::string moc = UtilCommon::GetMoc(text);
  EXPECT_TRUE(moc.empty() || text.find(moc + "=") != std::string::npos);

  std::map<int, std::string> parts;
  UtilCommon::GetSplitePPDataByLine(parts, text);
  std::size_t length = parts.empty() ? 0 : parts.size() - 1;  // the separators
  for (const auto& [number, part] : parts) length += part.size();
  EXPECT_EQ(length, text.size());

  NS_DOMAIN::PortIndex port;
  NS_UTIL::ResIDUtil::ResID2PortIndex(text, port);
}

TEST(HostileNames, TextsOfTheirOwnCharactersDoNoHarm) {
  const std::vector<std::string> pieces = {"NE=",
                                           "ONE=",
                                           "OS=",
                                           ",",
                                           "=",
                                           "2",
                                           "FR=",
                                           "S=",
                                           "PP=",
                                           "-",
                                           "/",
                                           ";",
                                           "%",
                                           "%2C",
                                           "x",
                                           " ",
                                           "\xFF",
                                           "框",
                                           std::string(1, '\0')};
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (auto left = random() % 12; left > 0; --left) text += pieces[random() % pieces.size()];
    useAsAnyName(text);
  }
}

TEST(HostileNames, RandomBytesDoNoHarm) {
  std::mt19937 random(11);
  for (int round = 0; round < 1000; ++round) {
    std::string text(random() % 40, '\0');
    for (char& byte : text) byte = static_cast<char>(random());
    useAsAnyName(text);
  }
}

TEST(HostileNames, LongNamesTakeTimeInProportion) {
  std::string deep = "NE=2";
  for (int level = 0; level < 100'000; ++level) deep += ",S=1";
  EXPECT_EQ(resid_compat::ExtractResIdsFromFDN(deep).size(), 100'001u);
  EXPECT_EQ(UtilCommon::GetMoc(deep), "S");
  const std::string dashes(100'000, '-');
  std::map<int, std::string> parts;
  UtilCommon::GetSplitePPDataByLine(parts, dashes);
  EXPECT_EQ(parts.size(), 100'001u);
  EXPECT_EQ(resid_compat::ResDN2ResID("NE=" + std::string(1'000'000, '9')), 0);
  EXPECT_EQ(resid_compat::ResDN2ResID("NE=" + std::string(1'000'000, '0') + "7"), 7);
}

}  // namespace
