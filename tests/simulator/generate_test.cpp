#include "generate.h"

#include <gmock/gmock.h>

#include <regex>

#include "support.h"
#include "utf8.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class GenerateTest : public ::testing::Test {
 protected:
  std::string generate(std::uint64_t elements, std::uint64_t seed = 7) {
    const std::string file =
        directory_.path(std::to_string(elements) + "-" + std::to_string(seed) + ".db");
    generateFile(file, {elements, seed}, true);
    return file;
  }
  std::string one(const std::string& file, const std::string& sql) {
    const std::vector<std::string> rows = query(file, sql);
    return rows.size() == 1 ? rows[0] : std::to_string(rows.size()) + " rows";
  }

  TempDirectory directory_;
};

TEST_F(GenerateTest, SameSeedGivesTheSameNetwork) {
  const std::vector<std::string> first = dump(generate(500, 3));
  EXPECT_GT(first.size(), 500u);
  EXPECT_EQ(dump(generate(500, 3)), first);
}

TEST_F(GenerateTest, OtherSeedGivesAnotherNetwork) {
  EXPECT_NE(dump(generate(500, 3)), dump(generate(500, 4)));
}

// Pins the generator across compilers and libraries.
TEST_F(GenerateTest, SeedSevenIsTheNetworkThatItAlwaysWas) {
  EXPECT_THAT(query(generate(200),
                    "SELECT name, version_name, main_type, sub_type, pos_x, pos_y "
                    "FROM device WHERE dev_id IN (2, 40, 201) ORDER BY dev_id"),
              ElementsAre("上海-汇聚路由器-0002|R8.4.10|2|5|2980|608",
                          "北京-汇聚路由器-0040|R8.1.15|2|5|2979|474",
                          "Málaga-OLT-0201|T3.1.5|4|1|1766|514"));
}

TEST_F(GenerateTest, RootIsItsOwnParent) {
  EXPECT_THAT(query(generate(200),
                    "SELECT obj_id, parent_id, topo_id, native_id, label "
                    "FROM subnet WHERE obj_id = parent_id"),
              ElementsAre("102|102|101|/|Physical Root"));
}

TEST_F(GenerateTest, DevicesCountFromTwoWithIdsThatAgree) {
  const std::string file = generate(200);
  EXPECT_EQ(one(file, "SELECT count(*), min(dev_id), max(dev_id) FROM device"), "200|2|201");
  EXPECT_THAT(query(file,
                    "SELECT dev_id FROM device WHERE native_id <> 'NE=' || dev_id "
                    "OR node_id <> CAST(dev_id AS TEXT)"),
              IsEmpty());
}

TEST_F(GenerateTest, NoElementsGiveTheRootAlone) {
  const std::string file = generate(0);
  EXPECT_EQ(one(file, "SELECT count(*) FROM subnet"), "1");
  EXPECT_EQ(one(file, "SELECT count(*) FROM device"), "0");
  EXPECT_EQ(one(file, "SELECT count(*) FROM link"), "0");
}

TEST_F(GenerateTest, OneElementStandsAlone) {
  const std::string file = generate(1);
  EXPECT_EQ(one(file, "SELECT count(*) FROM device"), "1");
  EXPECT_EQ(one(file, "SELECT count(*) FROM link"), "0");
}

TEST_F(GenerateTest, EveryReferenceHolds) {
  const std::string file = generate(2000);
  EXPECT_THAT(query(file, "PRAGMA foreign_key_check"), IsEmpty());
  EXPECT_THAT(query(file,
                    "SELECT obj_id FROM subnet WHERE parent_id NOT IN "
                    "(SELECT obj_id FROM subnet)"),
              IsEmpty());
}

TEST_F(GenerateTest, TreeHasSeveralLevelsAndAllOfItHangsBelowTheRoot) {
  const std::string file = generate(2000);
  const std::string levels =
      "WITH RECURSIVE tree (obj_id, depth) AS (SELECT '102', 0 UNION ALL "
      "SELECT s.obj_id, depth + 1 FROM subnet s JOIN tree t ON s.parent_id = t.obj_id "
      "WHERE s.obj_id <> '102') ";
  EXPECT_EQ(one(file, levels + "SELECT max(depth) FROM tree"), "5");
  EXPECT_EQ(one(file, levels + "SELECT count(*) FROM tree"),
            one(file, "SELECT count(*) FROM subnet"));
}

TEST_F(GenerateTest, TopologyIdsAreOfOneSpace) {
  EXPECT_EQ(one(generate(2000),
                "SELECT count(*) - count(DISTINCT topo_id) FROM (SELECT topo_id "
                "FROM subnet UNION ALL SELECT topo_id FROM device)"),
            "0");
}

TEST_F(GenerateTest, LinksJoinEveryElement) {
  EXPECT_EQ(one(generate(2000),
                "WITH ends (a, z) AS (SELECT p.dev_id, q.dev_id FROM link "
                "JOIN port p ON p.port_id = a_port JOIN port q ON q.port_id = z_port "
                "UNION SELECT q.dev_id, p.dev_id FROM link "
                "JOIN port p ON p.port_id = a_port JOIN port q ON q.port_id = z_port), "
                "reached (dev) AS (SELECT 2 UNION SELECT z FROM ends JOIN reached ON a = dev) "
                "SELECT count(*) FROM reached"),
            "2000");
}

TEST_F(GenerateTest, LinksAreOfThreeKindsAndShareNoPort) {
  const std::string file = generate(2000);
  // A virtual link joins virtual ports, a layer 2 link logical ones, an IP link physical ones.
  EXPECT_THAT(query(file,
                    "SELECT DISTINCT kind, a.type, z.type FROM link JOIN port a ON a_port = "
                    "a.port_id JOIN port z ON z_port = z.port_id ORDER BY kind"),
              ElementsAre("0|65544|65544", "105|65539|65539", "204|65538|65538"));
  EXPECT_EQ(one(file,
                "SELECT count(*) - count(DISTINCT port) FROM (SELECT a_port AS port "
                "FROM link UNION ALL SELECT z_port FROM link)"),
            "0");
}

TEST_F(GenerateTest, FourOfFiveLinksAreIpAndASmallNetworkHasEveryKind) {
  EXPECT_THAT(one(generate(2000),
                  "SELECT round(100.0 * sum(kind = 204) / count(*)) BETWEEN 76 AND 84, "
                  "sum(kind = 105) > sum(kind = 0) FROM link"),
              "1|1");
  EXPECT_EQ(one(generate(50), "SELECT count(DISTINCT kind) FROM link"), "3");
}

// The word, a blank, a number, and then a blank or the end.
TEST_F(GenerateTest, ProcessOfASubnetStandsBetweenBlanks) {
  const std::regex form("(.* )?ProcID [1-9][0-9]*( .*)?");
  const std::vector<std::string> texts = query(generate(500), "SELECT ex_info FROM subnet");
  ASSERT_GT(texts.size(), 10u);
  for (const std::string& text : texts) EXPECT_TRUE(std::regex_match(text, form)) << text;
}

// The type comes first, and one character stands between it and the process.
TEST_F(GenerateTest, TypeOfADeviceStandsBeforeItsProcess) {
  const std::regex form("NodeType=[A-Za-z]+;ProcID=[1-9][0-9]*(;MainNode=1)?");
  const std::string file = generate(500);
  for (const std::string& text : query(file, "SELECT ex_info FROM device")) {
    EXPECT_TRUE(std::regex_match(text, form)) << text;
  }
  EXPECT_EQ(one(file,
                "SELECT count(*) FROM device WHERE (subnet_id = '102') <> "
                "(ex_info LIKE '%MainNode%')"),
            "0");
}

TEST_F(GenerateTest, EveryTwentiethDeviceHasAFrame) {
  const std::string file = generate(2000);
  EXPECT_THAT(query(file,
                    "SELECT dev_id FROM device WHERE dev_id % 20 = 0 AND dev_id NOT IN "
                    "(SELECT dev_id FROM frame)"),
              IsEmpty());
}

TEST_F(GenerateTest, LocationsHaveTwoToFourPartsWithoutGaps) {
  const std::string file = generate(2000);
  EXPECT_THAT(query(file,
                    "SELECT DISTINCT count(*) FROM device_location GROUP BY dev_id "
                    "ORDER BY 1"),
              ElementsAre("2", "3", "4"));
  EXPECT_THAT(query(file,
                    "SELECT dev_id FROM device_location GROUP BY dev_id "
                    "HAVING min(seq) <> 0 OR max(seq) <> count(*) - 1"),
              IsEmpty());
  EXPECT_EQ(one(file, "SELECT count(DISTINCT dev_id) FROM device_location"), "2000");
}

TEST_F(GenerateTest, AddressesAreDistinct) {
  EXPECT_EQ(one(generate(2000), "SELECT count(DISTINCT ip_address) FROM device"), "2000");
}

TEST_F(GenerateTest, NamesAreUtf8InSeveralScripts) {
  const std::string file = generate(200);
  std::string names;
  for (const std::string& name : query(file, "SELECT name FROM device")) names += name + "\n";
  EXPECT_EQ(findInvalidUtf8(names), std::string_view::npos);
  EXPECT_THAT(names, HasSubstr("上海"));
  EXPECT_THAT(names, HasSubstr("ü"));
}

TEST_F(GenerateTest, ElementsOfEverySortAreThere) {
  const std::string file = generate(200);
  EXPECT_THAT(query(file, "SELECT DISTINCT node_class FROM device ORDER BY 1"),
              ElementsAre("container", "ne"));
  EXPECT_THAT(query(file, "SELECT DISTINCT origin FROM device ORDER BY 1"), ElementsAre("0", "1"));
  EXPECT_EQ(one(file, "SELECT count(*) FROM device WHERE subnet_id = '102'"), "5");
}

TEST_F(GenerateTest, ExistingFileIsKeptUnlessForced) {
  const std::string file = directory_.write("net.db", "precious");
  EXPECT_THAT(errorOf([&] {
                generateFile(file, {10, 1}, false);
              }),
              ::testing::AllOf(HasSubstr(file), HasSubstr("--force")));
  EXPECT_EQ(contentOf(file), "precious");
  generateFile(file, {10, 1}, true);
  EXPECT_EQ(one(file, "SELECT count(*) FROM device"), "10");
}

TEST_F(GenerateTest, OldJournalIsNotPlayedIntoTheNewFile) {
  const std::string file = directory_.path("net.db");
  directory_.write("net.db-journal", "of an earlier database");
  directory_.write("net.db-wal", "of an earlier database");
  generateFile(file, {10, 1}, true);
  EXPECT_THAT(directory_.entries(), ElementsAre("net.db"));
}

TEST_F(GenerateTest, FailedRunLeavesNoFile) {
  EXPECT_THAT(errorOf([&] {
                generateFile(directory_.path("net.db"), {kMaxElements + 1, 1}, false);
              }),
              HasSubstr("limit"));
  EXPECT_THAT(directory_.entries(), IsEmpty());
}

TEST_F(GenerateTest, DirectoryThatIsMissingIsNamed) {
  EXPECT_THAT(errorOf([&] {
                generateFile(directory_.path("no/net.db"), {10, 1}, false);
              }),
              ::testing::AllOf(HasSubstr("no/net.db"), HasSubstr("No such file or directory")));
}

}  // namespace
}  // namespace ormasim::testing
