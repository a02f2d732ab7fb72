// The engine's reads, on whichever database the program is built for.
#include <gmock/gmock.h>

#include <thread>

#include "inventory_fixture.h"

namespace dao::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Inventory : public InventoryTest {
 protected:
  std::vector<std::string> devices(const std::list<unsigned int>& ids, int expected = 0) {
    std::list<stDevProperty> found;
    EXPECT_EQ(engine().GetDevProperty(ids, found), expected);
    return textsOf(found);
  }
};

TEST_F(Inventory, DevicePropertiesAreThoseOfTheTable) {
  EXPECT_THAT(devices({2}), ElementsAre("2 2/5 10.0.0.1 core-1"));
  EXPECT_THAT(devices({3}), ElementsAre("3 65535/0 10.0.0.1 Größe 框"));
  EXPECT_THAT(devices({4294967295U}), ElementsAre("4294967295 2/5 10.0.0.1 last"));
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Inventory, UnknownIdsAreMissingAndTheOthersStandInTheOrderAsked) {
  EXPECT_THAT(devices({7, 4294967295U, 0, 2, 1}),
              ElementsAre("4294967295 2/5 10.0.0.1 last", "2 2/5 10.0.0.1 core-1"));
  EXPECT_THAT(devices({7}), IsEmpty());
}

TEST_F(Inventory, IdAskedTwiceGivesOneRecord) {
  EXPECT_THAT(devices({2, 3, 2}),
              ElementsAre("2 2/5 10.0.0.1 core-1", "3 65535/0 10.0.0.1 Größe 框"));
}

TEST_F(Inventory, RecordsAreAppended) {
  std::list<stDevProperty> found(1);
  ASSERT_EQ(engine().GetDevProperty({2}, found), 0);
  EXPECT_THAT(textsOf(found), ElementsAre("0 0/0  ", "2 2/5 10.0.0.1 core-1"));
}

TEST_F(Inventory, ManyIdsAreReadInBatches) {
  std::string rows;
  std::list<unsigned int> ids;
  for (unsigned int id = 1301; id >= 100; --id) {
    if (id % 7 != 0) rows += deviceRow(std::to_string(id), "d" + std::to_string(id));
    ids.push_back(id);
  }
  database().run(rows);
  std::list<stDevProperty> found;
  ASSERT_EQ(engine().GetDevProperty(ids, found), 0);
  ids.remove_if([](unsigned int id) { return id % 7 == 0; });
  ASSERT_EQ(found.size(), ids.size());
  auto id = ids.begin();
  for (const stDevProperty& device : found) {
    EXPECT_EQ(device.devId, *id);
    EXPECT_EQ(device.devName, "d" + std::to_string(*id++));
  }
}

TEST_F(Inventory, TypeOutsideItsRangeFailsTheReadAndIsNotCut) {
  database().run(deviceRow("10", "wide", "70000") + deviceRow("11", "negative", "-1") +
                 deviceRow("12", "wide", "2", "65536") + deviceRow("13", "negative", "2", "-2"));
  EXPECT_THAT(devices({2, 10}, -1), IsEmpty());
  EXPECT_THAT(devices({11}, -1), IsEmpty());
  EXPECT_THAT(devices({12}, -1), IsEmpty());
  EXPECT_THAT(devices({13}, -1), IsEmpty());
  const std::string start = "[CEmfCommDBEngine::GetDevProperty] device ";
  EXPECT_THAT(loggedTexts(),
              ElementsAre(start + "10, column main_type: 70000 is not between 0 and 65535",
                          start + "11, column main_type: -1 is not between 0 and 65535",
                          start + "12, column sub_type: 65536 is not between 0 and 65535",
                          start + "13, column sub_type: -2 is not between 0 and 65535"));
}

TEST_F(Inventory, IdOutsideItsRangeFailsTheReadOfAllNodes) {
  database().run(deviceRow("4294967296", "beyond"));
  std::list<NodeStruct> nodes;
  EXPECT_EQ(engine().GetBaseNode(TOPO_QUERY_ALL, "", nodes), -1);
  EXPECT_THAT(nodes, IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre("[CEmfCommDBEngine::GetBaseNode] column dev_id: "
                                         "4294967296 is not between 0 and 4294967295"));
}

TEST_F(Inventory, VersionNameIsThatOfTheDevice) {
  std::string version = "replaced";
  EXPECT_EQ(engine().GetDevVersionName(3, version), 0);
  EXPECT_EQ(version, "V1 3");
}

TEST_F(Inventory, UnknownDeviceHasNoVersionAndIsNoError) {
  std::string version = "unchanged";
  EXPECT_EQ(engine().GetDevVersionName(7, version), -1);
  EXPECT_EQ(version, "unchanged");
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Inventory, LocationPartsComeOutermostFirstAndAreAppended) {
  std::list<std::string> parts{"before"};
  EXPECT_EQ(engine().GetDevLocationByDevID(2, parts), 0);
  EXPECT_THAT(parts, ElementsAre("before", "A", "B"));
}

TEST_F(Inventory, DeviceWithoutLocationIsKnownAndTheUnknownOneIsNot) {
  std::list<std::string> parts;
  EXPECT_EQ(engine().GetDevLocationByDevID(3, parts), 0);
  EXPECT_EQ(engine().GetDevLocationByDevID(7, parts), -1);
  EXPECT_THAT(parts, IsEmpty());
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Inventory, NodeIdGivesItsDevice) {
  std::list<NodeStruct> nodes(1);
  EXPECT_EQ(engine().GetBaseNode(TOPO_QUERY_BY_NODE, "3", nodes), 1);
  EXPECT_THAT(textsOf(nodes), ElementsAre("0  ", "3 3 Größe 框"));
}

TEST_F(Inventory, NodeIdIsComparedAsAWholeAndNeverAsSql) {
  std::list<NodeStruct> nodes;
  for (const char* key : {"", "03", " 3", "NE=3", "3' OR '1'='1", ":id", "%"}) {
    EXPECT_EQ(engine().GetBaseNode(TOPO_QUERY_BY_NODE, key, nodes), 0) << key;
  }
  EXPECT_THAT(nodes, IsEmpty());
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Inventory, NodeIdWithNulIsRefused) {
  std::list<NodeStruct> nodes;
  EXPECT_EQ(engine().GetBaseNode(TOPO_QUERY_BY_NODE, std::string("3\0x", 3), nodes), -1);
  EXPECT_THAT(loggedTexts(), ElementsAre("[CEmfCommDBEngine::GetBaseNode] a text parameter holds "
                                         "a NUL character"));
}

TEST_F(Inventory, AllNodesComeInOrderOfTheirDevices) {
  std::list<NodeStruct> nodes;
  EXPECT_EQ(engine().GetBaseNode(TOPO_QUERY_ALL, "ignored", nodes), 3);
  EXPECT_THAT(textsOf(nodes),
              ElementsAre("2 2 core-1", "3 3 Größe 框", "4294967295 4294967295 last"));
}

TEST_F(Inventory, MissingTableFailsTheReadWithItsName) {
  database().run("DROP TABLE device_location");
  std::list<std::string> parts;
  EXPECT_EQ(engine().GetDevLocationByDevID(2, parts), -1);
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("device_location")));
  EXPECT_THAT(devices({2}), ElementsAre("2 2/5 10.0.0.1 core-1"));
}

TEST_F(Inventory, AnotherConfigurationLeadsToItsDatabase) {
  EXPECT_THAT(devices({2}), ElementsAre("2 2/5 10.0.0.1 core-1"));
  std::string whyNot;
  const auto other = makeTestDatabase(whyNot);
  layOutInventory(*other);
  other->run(deviceRow("2", "other"));
  configure(other->connection());
  EXPECT_THAT(devices({2}), ElementsAre("2 2/5 10.0.0.1 other"));
}

TEST_F(Inventory, EightThreadsReadAtOnce) {
  std::vector<int> rightAnswers(8);
  std::vector<std::thread> threads;
  for (int& mine : rightAnswers) {
    threads.emplace_back([this, &mine] {
      for (int round = 0; round < 25; ++round) {
        std::list<stDevProperty> found;
        std::list<std::string> parts;
        std::list<NodeStruct> nodes;
        std::string version;
        if (engine().GetDevProperty({2, 3, 7}, found) == 0 && found.size() == 2 &&
            engine().GetDevVersionName(3, version) == 0 && version == "V1 3" &&
            engine().GetDevLocationByDevID(2, parts) == 0 && parts.size() == 2 &&
            engine().GetBaseNode(TOPO_QUERY_ALL, "", nodes) == 3) {
          ++mine;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(rightAnswers, std::vector<int>(8, 25));
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

}  // namespace
}  // namespace dao::test
