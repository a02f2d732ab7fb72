#include <gmock/gmock.h>

#include "files.h"
#include "inventory_writer.h"
#include "server_fixture.h"
#include "topology_walk.h"

namespace ormasim::testing {
namespace {

using ::testing::HasSubstr;

// The members of an object as text, joined by "|", in the order of the columns of kObjects.
std::string line(const Json::Value& object) {
  std::string text;
  for (const char* name :
       {"nodeClass", "objId", "parentId", "nativeId", "label", "iconFile", "exInfo", "ipAddr",
        "remark", "posX", "posY", "topoId", "typeId", "topoClassId", "origin"}) {
    text += (text.empty() ? "" : "|") + object[name].asString();
  }
  EXPECT_EQ(object.size(), 15u);
  for (const char* number : {"posX", "posY", "topoId", "typeId", "topoClassId", "origin"}) {
    EXPECT_TRUE(object[number].isInt()) << number;
  }
  return text;
}

std::vector<std::string> lines(const WalkedPages& walked) {
  std::vector<std::string> texts;
  for (const Json::Value& object : walked.objects) texts.push_back(line(object));
  return texts;
}

// Every object as the database has it: the management system, subnets and devices.
constexpr char kObjects[] =
    "WITH object AS (SELECT 0 AS kind, 0 AS number, 'ne' AS class, '1' AS obj, '102' AS parent, "
    "'OS=1' AS native, 'OS' AS label, '' AS icon, 'NodeType=OS;ProcID=1' AS extra, '' AS ip, "
    "'' AS remark, 0 AS x, 0 AS y, 100 AS topo, 0 AS type, 0 AS topo_class, 0 AS origin "
    "UNION ALL SELECT 1, topo_id, 'subnet', obj_id, parent_id, native_id, label, icon_file, "
    "ex_info, '', '', pos_x, pos_y, topo_id, type_id, topo_class_id, 0 FROM subnet "
    "UNION ALL SELECT 2, dev_id, node_class, 'D' || dev_id, subnet_id, native_id, name, icon_file, "
    "ex_info, ip_address, remark, pos_x, pos_y, topo_id, main_type * 65536 + sub_type, 0, origin "
    "FROM device) SELECT class, obj, parent, native, label, icon, extra, ip, remark, x, y, topo, "
    "type, topo_class, origin FROM object WHERE ";

class TopologyServicesTest : public ServerTest {
 protected:
  std::vector<std::string> stored(const std::string& where) {
    return query(directory_.path("net.db"), kObjects + where + " ORDER BY kind, number");
  }
  void expectWalks(const std::string& conditions, const std::string& where) {
    const std::vector<std::string> expected = stored(where);
    ASSERT_FALSE(expected.empty()) << where;
    for (const int limit : {1, 7, 200}) {
      const WalkedPages walked = walkTsNodes(port_, conditions, limit);
      EXPECT_EQ(lines(walked), expected) << conditions << " by " << limit;
      EXPECT_EQ(walked.pages, (expected.size() + static_cast<unsigned>(limit) - 1) /
                                  static_cast<unsigned>(limit));
    }
  }
  void expectViews(const std::string& filter, const std::string& where) {
    const std::vector<std::string> expected = stored(where);
    ASSERT_FALSE(expected.empty()) << where;
    for (const int limit : {1, 7, 200, 1000}) {
      EXPECT_EQ(lines(walkSubnetView(port_, filter, limit)), expected) << filter << " by " << limit;
    }
  }
  static std::string subnetsWith(const std::string& name, const std::string& value) {
    return conditions({expression("nodeClass", "equal", "\"subnet\"", "true"),
                       expression(name, "equal", "\"" + value + "\"", "true")});
  }
};

TEST_F(TopologyServicesTest, NodesOfClassesComeOnceInOrderInPagesOfEverySize) {
  serveNetwork(300);
  expectWalks(conditions({expression("nodeClass", "in", R"(["ne","container"])", "false")}),
              "class IN ('ne', 'container')");
  expectWalks(conditions({expression("nodeClass", "in", R"(["subnet"])", "false")}),
              "class = 'subnet'");
}

TEST_F(TopologyServicesTest, RootIsFoundByItsTopologyIdAndByItsNativeId) {
  serveNetwork(300);
  expectWalks(conditions({expression("topoId", "equal", "101", "true")}), "topo = 101");
  expectWalks(subnetsWith("nativeId", "/"), "obj = '102'");
}

TEST_F(TopologyServicesTest, SubnetsAreFoundByParentAndByObjectId) {
  serveNetwork(300);
  for (const std::string& id : query(directory_.path("net.db"), "SELECT obj_id FROM subnet")) {
    const std::string where = "class = 'subnet' AND ";
    expectWalks(subnetsWith("objId", id), where + "obj = '" + id + "'");
    if (!stored(where + "parent = '" + id + "'").empty()) {
      expectWalks(subnetsWith("parentId", id), where + "parent = '" + id + "'");
    }
  }
}

TEST_F(TopologyServicesTest, WithoutConditionsEveryObjectComes) {
  serveNetwork(300);
  expectWalks("", "1");
  expectWalks("[]", "1");
}

TEST_F(TopologyServicesTest, ConditionsThatNothingMeetsGiveOneEmptyPage) {
  serveNetwork(30);
  for (const std::string& none :
       {subnetsWith("objId", "7"), subnetsWith("parentId", ""), subnetsWith("nativeId", "NE=2"),
        conditions({expression("nodeClass", "equal", "\"SUBNET\"", "true")}),
        conditions({expression("topoId", "equal", "-1", "true")})}) {
    const WalkedPages walked = walkTsNodes(port_, none, 200);
    EXPECT_EQ(walked.pages, 1u);
    EXPECT_TRUE(walked.objects.empty()) << none;
  }
}

TEST_F(TopologyServicesTest, CaseCountsOnlyWhereItIsAskedFor) {
  serveNetwork(30);
  expectWalks(conditions({expression("nodeClass", "in", R"(["SubNet","CONTAINER"])", "false")}),
              "class IN ('subnet', 'container')");
  expectWalks(conditions({expression("nativeId", "equal", "\"ne=5\"", "false")}),
              "native = 'NE=5'");
  expectViews(viewFilter(expression("nativeId", "equal", "\"ne=5\"", "\"false\"")),
              "native = 'NE=5'");
  EXPECT_TRUE(
      walkSubnetView(port_, viewFilter(expression("nativeId", "equal", "\"ne=5\"", "\"true\"")), 5)
          .objects.empty());
}

TEST_F(TopologyServicesTest, ViewObjectsComeOnceInOrderInPagesOfEverySize) {
  serveNetwork(300);
  expectViews(viewFilter(expression("nodeClass", "in", R"(["ne","container"])", "\"false\"")),
              "class IN ('ne', 'container')");
}

TEST_F(TopologyServicesTest, ViewGivesOneNodeByItsNativeId) {
  serveNetwork(300);
  for (const char* id : {"OS=1", "NE=2", "NE=150", "NE=301"}) {
    expectViews(
        viewFilter(expression("nativeId", "equal", std::string("\"") + id + "\"", "\"false\"")),
        std::string("native = '") + id + "'");
  }
}

TEST_F(TopologyServicesTest, LimitIsTwoHundredWhereNoneIsAsked) {
  serveNetwork(300);
  const Json::Value page = json(get(kTsNodes)->body);
  EXPECT_EQ(page["dataList"].size(), 200u);
  EXPECT_TRUE(page["isTruncated"].asBool());
}

TEST_F(TopologyServicesTest, EmptyNetworkHasTheManagementSystemAndTheRoot) {
  serveNetwork(0);
  EXPECT_EQ(lines(walkTsNodes(port_, "", 200)), stored("1"));
  EXPECT_EQ(stored("1").size(), 2u);
}

TEST_F(TopologyServicesTest, NewContentsAreServedAtOnce) {
  serveNetwork(30);
  EXPECT_EQ(walkTsNodes(port_, "", 200).objects.size(), stored("1").size());
  {
    Database database(directory_.path("net.db"), Database::Mode::ReadWrite);
    database.execute("UPDATE device SET main_type = 65535, name = 'new' WHERE dev_id = 5");
  }
  const Json::Value object =
      walkTsNodes(port_, conditions({expression("nativeId", "equal", "\"NE=5\"", "true")}), 1)
          .objects.at(0);
  EXPECT_EQ(object["label"].asString(), "new");
  EXPECT_LT(object["typeId"].asInt(), 0);
}

TEST_F(TopologyServicesTest, AnswersAreTheDocumentedOnes) {
  settings_.databaseFile = directory_.path("net.db");
  NewDatabaseFile made(settings_.databaseFile);
  InventoryWriter writer(made.database());
  writer.add(physicalRoot());
  SubnetRow subnet = numberedSubnet(0);
  subnet.parentId = "102";
  subnet.label = "Zürich";
  subnet.exInfo = "Level 2 ProcID 3 auto";
  writer.add(subnet);
  DeviceRow device;
  device.id = 2;
  device.subnetId = subnet.objId;
  device.mainType = 2;
  device.subType = 5;
  device.ipAddress = "10.0.0.2";
  device.name = "Zürich-AGG-0002";
  device.iconFile = "/images/topo/agg_router.png";
  device.exInfo = "NodeType=AggregationRouter;ProcID=7";
  writer.add(device);
  made.publish();
  serveNetwork(0);

  const std::string document = contentOf(ORMASIM_FORMATS_DOCUMENT);
  const std::string byClass = conditions({expression("nodeClass", "equal", "\"subnet\"", "true")});
  EXPECT_THAT(document, HasSubstr("`conditions`\n```json\n" + byClass + "\n"));
  const std::string nodes = get(tsNodes(byClass, "&limit=1"))->body;
  EXPECT_THAT(nodes, HasSubstr("\"isTruncated\":true,\"marker\":\"t1-101\"}"));
  EXPECT_THAT(document, HasSubstr("\n" + nodes));

  const std::string body =
      viewBody(viewFilter(expression("nativeId", "equal", "\"NE=2\"", "\"false\"")), "1000");
  EXPECT_THAT(document, HasSubstr("\n" + body + "\n"));
  const std::string view = post(kSubnetView, body)->body;
  EXPECT_THAT(view, HasSubstr("\"label\":\"Zürich-AGG-0002\""));
  EXPECT_THAT(document, HasSubstr("\n" + view));
}

}  // namespace
}  // namespace ormasim::testing
