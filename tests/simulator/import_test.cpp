#include "import.h"

#include <gmock/gmock.h>

#include "generate.h"
#include "graphml_text.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ImportTest : public ::testing::Test {
 protected:
  std::vector<std::string> imported(const std::vector<std::string>& files, const std::string& sql) {
    importFiles(files, database_);
    return query(database_, sql);
  }

  TempDirectory directory_;
  const std::string database_ = directory_.path("net.db");
};

TEST_F(ImportTest, FileBecomesASubnetWithCountriesBelow) {
  const std::string file = directory_.write(
      "Metro.graphml", graphml(node("0", {{"label", "Oslo"}, {"Country", "Norway"}}) +
                               node("1", {{"label", "Åre"}, {"Country", "Sweden"}}) +
                               node("2", {{"label", "Bergen"}, {"Country", "Norway"}}) +
                               node("3", {{"label", "Ship"}})));
  EXPECT_THAT(imported({file},
                       "SELECT s.label, p.label FROM subnet s "
                       "JOIN subnet p ON p.obj_id = s.parent_id ORDER BY s.topo_id"),
              ElementsAre("Physical Root|Physical Root", "Metro|Physical Root", "Norway|Metro",
                          "Sweden|Metro"));
  EXPECT_THAT(query(database_,
                    "SELECT dev_id, device.native_id, node_id, node_class, name, origin, "
                    "label FROM device JOIN subnet ON obj_id = subnet_id ORDER BY dev_id"),
              ElementsAre("2|NE=2|2|ne|Oslo|1|Norway", "3|NE=3|3|ne|Åre|1|Sweden",
                          "4|NE=4|4|ne|Bergen|1|Norway", "5|NE=5|5|ne|Ship|1|Metro"));
}

TEST_F(ImportTest, RootIsAsEverywhere) {
  const std::string file = directory_.write("a.graphml", graphml(""));
  EXPECT_THAT(imported({file},
                       "SELECT obj_id, parent_id, topo_id, native_id, label FROM subnet "
                       "WHERE obj_id = parent_id"),
              ElementsAre("102|102|101|/|Physical Root"));
}

TEST_F(ImportTest, FilesComeInTheOrderOfTheirNamesWithIdsOverAll) {
  const std::string b = directory_.write("1/b.graphml", graphml(node("x", {}) + node("y", {})));
  const std::string a = directory_.write("2/a.graphml", graphml(node("z", {})));
  EXPECT_THAT(imported({b, a}, "SELECT dev_id, name FROM device ORDER BY dev_id"),
              ElementsAre("2|a-z", "3|b-x", "4|b-y"));
}

TEST_F(ImportTest, SameCountryInTwoFilesIsTwoSubnets) {
  const std::string network = graphml(node("0", {{"Country", "Norway"}}));
  const std::string a = directory_.write("a.graphml", network);
  const std::string b = directory_.write("b.graphml", network);
  EXPECT_THAT(imported({a, b},
                       "SELECT p.label FROM subnet s JOIN subnet p ON "
                       "p.obj_id = s.parent_id WHERE s.label = 'Norway' ORDER BY s.topo_id"),
              ElementsAre("a", "b"));
}

TEST_F(ImportTest, NodeWithoutALabelIsNamedByStemAndId) {
  const std::string file =
      directory_.write("Net.v2.graphml", graphml(node("n7", {}) + node("n8", {{"label", ""}})));
  EXPECT_THAT(imported({file}, "SELECT name FROM device ORDER BY dev_id"),
              ElementsAre("Net.v2-n7", "Net.v2-n8"));
}

TEST_F(ImportTest, PlacesBecomePositions) {
  const std::string file = directory_.write(
      "a.graphml", graphml(node("0", {{"Longitude", "10.75225"}, {"Latitude", "59.91273"}}) +
                           node("1", {{"Longitude", "-180"}, {"Latitude", "-90"}}) +
                           node("2", {{"Longitude", "0.05"}, {"Latitude", "0.05"}}) +
                           node("3", {{"Longitude", " +4 "}}) + node("4", {{"Latitude", "1e1"}}) +
                           node("5", {})));
  EXPECT_THAT(imported({file}, "SELECT pos_x, pos_y FROM device ORDER BY dev_id"),
              ElementsAre("1908|301", "0|1800", "1801|900", "1840|0", "0|800", "0|0"));
}

TEST_F(ImportTest, KeysGoByTheirNamesAndNotByTheirIds) {
  const std::string file = directory_.write("a.graphml", R"(<graphml>
  <key id="a" for="edge" attr.name="label"/>
  <key id="b" for="graph" attr.name="Country"/>
  <key id="c" for="node" attr.name="Country"/>
  <key id="d" for="all" attr.name="label"/>
  <key id="e" attr.name="Latitude"/>
  <key id="f" for="node" yfiles.type="nodegraphics"/>
  <graph><data key="b">Atlantis</data>
    <node id="0"><data key="c">Chile</data><data key="d">Arica</data><data key="e">0</data>
      <data key="f"><shape/></data></node>
  </graph></graphml>)");
  EXPECT_THAT(imported({file},
                       "SELECT name, label, device.pos_y FROM device JOIN subnet "
                       "ON obj_id = subnet_id"),
              ElementsAre("Arica|Chile|900"));
}

TEST_F(ImportTest, DefaultOfAKeyHoldsForNodesThatSayNothing) {
  const std::string file = directory_.write("a.graphml", R"(<graphml>
  <key id="c" for="node" attr.name="Country"><default>Chile</default></key>
  <graph><node id="0"/><node id="1"><data key="c">Peru</data></node></graph></graphml>)");
  EXPECT_THAT(imported({file},
                       "SELECT label FROM device JOIN subnet ON obj_id = subnet_id "
                       "ORDER BY dev_id"),
              ElementsAre("Chile", "Peru"));
}

TEST_F(ImportTest, TextsKeepEntitiesSectionsAndScripts) {
  const std::string file = directory_.write(
      "a.graphml", graphml(node("0", {{"label", "A &amp; B <!-- note --><![CDATA[<北京>]]>"}})));
  EXPECT_THAT(imported({file}, "SELECT name FROM device"), ElementsAre("A & B <北京>"));
}

TEST_F(ImportTest, Latin1FilesAreConverted) {
  const std::string file = directory_.write(
      "a.graphml", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                       graphml(node("0", {{"label", "Z\xFCrich"}, {"Country", "\xD6sterreich"}})));
  EXPECT_THAT(imported({file}, "SELECT name, label FROM device JOIN subnet ON obj_id = subnet_id"),
              ElementsAre("Zürich|Österreich"));
}

TEST_F(ImportTest, ByteOrderMarkIsPassedOver) {
  const std::string file = directory_.write("a.graphml", "\xEF\xBB\xBF" + graphml(node("0", {})));
  EXPECT_THAT(imported({file}, "SELECT name FROM device"), ElementsAre("a-0"));
}

TEST_F(ImportTest, EdgeIsAnIpLinkWithAPortOfItsOwnAtEachEnd) {
  const std::string file = directory_.write(
      "a.graphml",
      graphml(edge("0", "1") + node("0", {}) + node("1", {}) + edge("1", "0") + edge("1", "1")));
  EXPECT_THAT(imported({file},
                       "SELECT link_id, kind, p.dev_id, p.name, q.dev_id, q.name FROM link "
                       "JOIN port p ON p.port_id = a_port JOIN port q ON q.port_id = z_port "
                       "ORDER BY link_id"),
              ElementsAre("1|204|2|GE0/1/1|3|GE0/1/1", "2|204|3|GE0/1/2|2|GE0/1/2",
                          "3|204|3|GE0/1/3|3|GE0/1/4"));
  EXPECT_THAT(query(database_, "PRAGMA foreign_key_check"), IsEmpty());
}

TEST_F(ImportTest, ExtraTextsAreOfTheFormsOfSubnetsAndDevices) {
  const std::string file = directory_.write("a.graphml", graphml(node("0", {{"Country", "Peru"}})));
  EXPECT_THAT(imported({file}, "SELECT ex_info FROM subnet ORDER BY topo_id"),
              ElementsAre("ProcID 1", "Level 2 ProcID 2 import", "Level 3 ProcID 3 import"));
  EXPECT_THAT(query(database_, "SELECT ex_info FROM device"),
              ElementsAre("NodeType=Router;ProcID=1"));
}

TEST_F(ImportTest, NodesOfOneFileAreNotThoseOfAnother) {
  const std::string network = graphml(node("0", {}) + node("1", {}) + edge("0", "1"));
  const std::string a = directory_.write("a.graphml", network);
  const std::string b = directory_.write("b.graphml", network);
  EXPECT_THAT(imported({a, b},
                       "SELECT p.dev_id, q.dev_id FROM link JOIN port p ON "
                       "p.port_id = a_port JOIN port q ON q.port_id = z_port "
                       "ORDER BY link_id"),
              ElementsAre("2|3", "4|5"));
}

TEST_F(ImportTest, ManyEdgesAtANodeFillSlotAfterSlot) {
  std::string elements = node("0", {}) + node("1", {});
  for (int i = 0; i < 30; ++i) elements += edge("0", "1");
  const std::string file = directory_.write("a.graphml", graphml(elements));
  EXPECT_THAT(imported({file},
                       "SELECT slot, count(*), min(port), max(port) FROM port "
                       "WHERE dev_id = 2 GROUP BY slot"),
              ElementsAre("1|24|1|24", "2|6|1|6"));
}

TEST_F(ImportTest, ImportReplacesWhatTheDatabaseHeld) {
  generateFile(database_, {50, 1}, false);
  const std::string file = directory_.write("a.graphml", graphml(node("0", {})));
  const ImportSummary summary = importFiles({file}, database_, 0);
  EXPECT_TRUE(summary.replaced);
  EXPECT_THAT(query(database_, "SELECT name FROM device"), ElementsAre("a-0"));
  EXPECT_THAT(query(database_, "SELECT label FROM subnet ORDER BY topo_id"),
              ElementsAre("Physical Root", "a"));
  for (const char* table : {"port", "link", "frame", "device_location", "resource",
                            "resource_attribute", "device_place", "device_keeper"}) {
    EXPECT_THAT(query(database_, std::string("SELECT * FROM ") + table), IsEmpty()) << table;
  }
}

TEST_F(ImportTest, SummaryCountsWhatCame) {
  const std::string a = directory_.write("a.graphml", graphml(node("0", {}) + edge("0", "0")));
  const std::string b = directory_.write("b.graphml", graphml(node("0", {}) + node("1", {})));
  const ImportSummary summary = importFiles({a, b}, database_);
  EXPECT_EQ(summary.networks, 2u);
  EXPECT_EQ(summary.elements, 3u);
  EXPECT_EQ(summary.links, 1u);
  EXPECT_FALSE(summary.replaced);
}

TEST_F(ImportTest, OtherFileThanAnInventoryIsNotTouched) {
  const std::string file = directory_.write("a.graphml", graphml(node("0", {})));
  directory_.write("net.db", "a letter to my aunt, long enough to be no empty database");
  EXPECT_THAT(errorOf([&] { importFiles({file}, database_); }),
              AllOf(HasSubstr(database_), HasSubstr("not a database")));
  EXPECT_EQ(contentOf(database_), "a letter to my aunt, long enough to be no empty database");
}

}  // namespace
}  // namespace ormasim::testing
