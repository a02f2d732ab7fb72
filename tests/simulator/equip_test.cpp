#include "equip.h"

#include <gmock/gmock.h>

#include "generate.h"
#include "graphml_text.h"
#include "import.h"
#include "resource_ids.h"
#include "support.h"
#include "utf8.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// One network for all tests that only read it.
class EquipTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    directory_ = new TempDirectory;
    generateFile(network(), {260, 7}, false);
  }
  static void TearDownTestSuite() { delete directory_; }

  static std::string network() { return directory_->path("net.db"); }
  static std::vector<std::string> rows(const std::string& sql) { return query(network(), sql); }
  static std::string one(const std::string& sql) {
    const std::vector<std::string> found = rows(sql);
    return found.size() == 1 ? found[0] : std::to_string(found.size()) + " rows";
  }

  static TempDirectory* directory_;
};
TempDirectory* EquipTest::directory_ = nullptr;

TEST_F(EquipTest, FirstTwoHundredElementsHaveShelves) {
  EXPECT_EQ(one("SELECT count(DISTINCT dev_id), min(dev_id), max(dev_id) FROM resource"),
            "200|2|201");
  for (const char* table : {"resource", "device_place", "resource_attribute", "frame"}) {
    const std::string id = table == std::string("resource_attribute") ? "res_id" : "dev_id";
    EXPECT_THAT(rows("SELECT dev_id FROM device WHERE dev_id <= 201 AND dev_id NOT IN (SELECT " +
                     id + " FROM " + table + ")"),
                IsEmpty())
        << table;
  }
}

TEST_F(EquipTest, ShelvesAreAsLargeAsRealOnes) {
  EXPECT_THAT(rows("SELECT DISTINCT count(*) FROM resource WHERE main_type = 3 GROUP BY dev_id "
                   "ORDER BY 1"),
              ElementsAre("1", "2", "3", "4"));
  EXPECT_EQ(one("SELECT min(n), max(n) FROM (SELECT count(*) n FROM resource WHERE main_type = 4 "
                "GROUP BY parent_id)"),
            "8|18");
  EXPECT_EQ(one("SELECT min(n), max(n) FROM (SELECT count(*) n FROM resource WHERE main_type = 6 "
                "GROUP BY parent_id)"),
            "2|48");
  EXPECT_GT(std::stoi(one("SELECT count(*) FROM resource WHERE main_type = 21")), 200);
}

TEST_F(EquipTest, PortsOfAHolderAreThoseOfItsCard) {
  EXPECT_THAT(rows("SELECT parent_id FROM resource WHERE main_type = 6 AND parent_id NOT IN "
                   "(SELECT parent_id FROM resource WHERE main_type IN (20, 21))"),
              IsEmpty());
}

// What holds a resource is the one named by the longest part of its name.
TEST_F(EquipTest, HoldersAreNamedByTheFrontOfTheName) {
  EXPECT_THAT(rows("SELECT r.native_id FROM resource r LEFT JOIN resource p ON p.res_id = "
                   "r.parent_id WHERE r.main_type <> 3 AND (p.res_id IS NULL OR p.seq >= r.seq OR "
                   "substr(r.native_id, 1, length(p.native_id) + 1) <> p.native_id || ',')"),
              IsEmpty());
  EXPECT_THAT(rows("SELECT native_id FROM resource WHERE main_type = 3 AND parent_id <> dev_id"),
              IsEmpty());
}

TEST_F(EquipTest, NamesOfEachKindHaveTheirForm) {
  const struct {
    const char* mainType;
    const char* form;
  } kForms[] = {{"3", "NE=*,FR=*"},           {"4", "NE=*,FR=*,S=*"},
                {"5", "NE=*,FR=*,S=*,SS=*"},  {"6", "NE=*,FR=*,S=*,SS=*,PP=*"},
                {"20", "NE=*,FR=*,S=*,CP=1"}, {"21", "NE=*,FR=*,S=*,SS=*,SC=1"}};
  for (const auto& [mainType, form] : kForms) {
    const std::string of = std::string(" FROM resource WHERE main_type = ") + mainType;
    EXPECT_NE(one("SELECT count(*)" + of), "0") << form;
    EXPECT_THAT(rows("SELECT native_id" + of + " AND (native_id NOT GLOB '" + form +
                     "' OR length(native_id) - length(replace(native_id, ',', '')) <> length('" +
                     form + "') - length(replace('" + form + "', ',', '')))"),
                IsEmpty());
  }
}

TEST_F(EquipTest, IdsFollowFromNames) {
  for (const std::string& row : rows("SELECT res_id, native_id FROM resource LIMIT 2000")) {
    const std::size_t bar = row.find('|');
    EXPECT_EQ(std::to_string(resourceIdOf(row.substr(bar + 1))), row.substr(0, bar));
  }
  EXPECT_EQ(resourceIdOf("NE=2"), 2);
  EXPECT_EQ(resourceIdOf("NE=2,FR=1"), 5253907868763091724);
  EXPECT_EQ(resourceIdOf("NE=2,FR=1,S=3"), 5290850205616058834);
}

TEST_F(EquipTest, PortOfALinkIsAPortOfItsShelf) {
  EXPECT_THAT(rows("SELECT port_id FROM port WHERE dev_id <= 201 AND NOT EXISTS (SELECT 1 FROM "
                   "resource r WHERE r.native_id = 'NE=' || port.dev_id || ',FR=' || frame || "
                   "',S=' || slot || ',SS=' || card || ',PP=' || port AND r.name = port.name AND "
                   "r.sub_type = port.type)"),
              IsEmpty());
}

TEST_F(EquipTest, FramesAreThoseThatAreListed) {
  EXPECT_THAT(rows("SELECT native_id, name FROM resource WHERE main_type = 3 EXCEPT "
                   "SELECT 'NE=' || dev_id || ',FR=' || frame_no, label FROM frame"),
              IsEmpty());
  EXPECT_THAT(rows("SELECT 'NE=' || dev_id || ',FR=' || frame_no, label FROM frame WHERE dev_id "
                   "<= 201 EXCEPT SELECT native_id, name FROM resource WHERE main_type = 3"),
              IsEmpty());
}

TEST_F(EquipTest, PortsToCustomersStandInLineTerminalsOnly) {
  EXPECT_THAT(rows("SELECT DISTINCT main_type FROM device WHERE dev_id IN "
                   "(SELECT dev_id FROM resource WHERE sub_type = 131073)"),
              ElementsAre("4"));
  EXPECT_THAT(rows("SELECT native_id FROM resource WHERE sub_type = 131073 AND "
                   "native_id NOT GLOB '*,PP=[0-9]*-[0-9]*-[0-9]*'"),
              IsEmpty());
}

TEST_F(EquipTest, EverythingHasAttributes) {
  EXPECT_THAT(rows("SELECT native_id FROM resource WHERE res_id NOT IN "
                   "(SELECT res_id FROM resource_attribute)"),
              IsEmpty());
  EXPECT_THAT(rows("SELECT number FROM resource_attribute WHERE res_id = 2 ORDER BY number"),
              ElementsAre("1", "2", "3", "30", "59", "60", "61", "62", "63", "64"));
  EXPECT_THAT(rows("SELECT res_id FROM resource_attribute WHERE short_id & 4294967295 <> "
                   "res_id & 4294967295 OR short_id NOT BETWEEN -2147483648 AND 2147483647"),
              IsEmpty());
}

TEST_F(EquipTest, SomeElementsHaveNoKeeperAndSomeSeveral) {
  EXPECT_THAT(rows("SELECT DISTINCT (SELECT count(*) FROM device_keeper k WHERE k.dev_id = "
                   "p.dev_id) FROM device_place p ORDER BY 1"),
              ElementsAre("0", "1", "2", "3"));
  EXPECT_THAT(rows("PRAGMA foreign_key_check"), IsEmpty());
}

TEST_F(EquipTest, TextsAreUtf8InSeveralScripts) {
  std::string texts;
  for (const std::string& text : rows("SELECT name FROM resource UNION SELECT address FROM "
                                      "device_place UNION SELECT value FROM resource_attribute")) {
    texts += text + "\n";
  }
  EXPECT_EQ(findInvalidUtf8(texts), std::string_view::npos);
  for (const char* part : {"机框", "槽位", "Frame 0", "☎", "ö", "人民路"}) {
    EXPECT_THAT(texts, HasSubstr(part));
  }
}

TEST_F(EquipTest, MainTypesOfAllResourcesHaveNames) {
  EXPECT_THAT(rows("SELECT type_id FROM main_type WHERE type_id IN (1, 3, 4, 5, 6, 20, 21) "
                   "AND name <> '' ORDER BY 1"),
              ElementsAre("1", "3", "4", "5", "6", "20", "21"));
}

// The equipment draws on a source of chance of its own.
TEST_F(EquipTest, NetworkIsTheSameWithAndWithoutShelves) {
  const std::string bare = directory_->path("bare.db");
  generateFile(bare, {260, 7, 0}, false);
  for (const char* table : {"subnet", "device", "device_location", "port", "link"}) {
    const std::string sql = std::string("SELECT * FROM ") + table;
    EXPECT_EQ(query(bare, sql), rows(sql)) << table;
  }
  EXPECT_THAT(query(bare, "SELECT * FROM resource"), IsEmpty());
}

TEST_F(EquipTest, ShelfOfAnElementDoesNotDependOnHowManyThereAre) {
  const std::string few = directory_->path("few.db");
  generateFile(few, {260, 7, 3}, false);
  EXPECT_EQ(query(few, "SELECT * FROM resource"), rows("SELECT * FROM resource WHERE dev_id < 5"));
}

TEST_F(EquipTest, ImportedElementsAreEquippedLikewise) {
  std::string elements = node("0", {{"Country", "Norway"}}) + node("1", {});
  for (int i = 0; i < 500; ++i) elements += edge("0", "1");
  const std::string database = directory_->path("imported.db");
  importFiles({directory_->write("a.graphml", graphml(elements))}, database);
  // 500 links need 21 slots, more than the largest shelf has.
  EXPECT_THAT(query(database,
                    "SELECT count(*) FROM resource WHERE main_type = 4 AND native_id GLOB "
                    "'NE=?,FR=0,*' GROUP BY dev_id"),
              ElementsAre("21", "21"));
  EXPECT_THAT(query(database, "SELECT country, city FROM device_place ORDER BY dev_id"),
              ElementsAre("Norway|", "|"));
}

}  // namespace
}  // namespace ormasim::testing
