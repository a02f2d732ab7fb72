#include <gmock/gmock.h>

#include <regex>

#include "files.h"
#include "inventory_writer.h"
#include "resource_fixture.h"
#include "resource_ids.h"
#include "topology_walk.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PropertiesTest : public ResourceTest {
 protected:
  void SetUp() override { serveNetwork(12); }

  void expectAll(const std::string& kind, const std::string& mainTypes) {
    const std::string where = "main_type IN (" + mainTypes + ")";
    const std::vector<std::string> expected = rows(storedLines(where));
    ASSERT_GT(expected.size(), 10u);
    EXPECT_EQ(lines(properties(kind, rows("SELECT native_id FROM resource WHERE " + where +
                                          " ORDER BY dev_id, seq"))),
              expected);
  }
};

TEST_F(PropertiesTest, AreThoseOfTheInventoryForEveryKind) {
  expectAll("port", "6");
  expectAll("slot", "4, 5");
  expectAll("card", "20, 21");
  expectAll("frame", "3");
}

TEST_F(PropertiesTest, ElementsAreDevicesAndTheManagementSystem) {
  EXPECT_EQ(
      lines(properties("ne", rows("SELECT native_id FROM device ORDER BY dev_id"))),
      rows("SELECT 1, native_id, name, main_type * 65536 + sub_type FROM device ORDER BY dev_id"));
  EXPECT_THAT(lines(properties("ne", {"OS=1"})), ElementsAre("1|OS=1|OS|0"));
}

TEST_F(PropertiesTest, NamesOfOtherKindsAndOfNothingAreLeftOut) {
  const std::vector<std::string> names = {"NE=2",
                                          "NE=2,FR=0",
                                          "NE=2,FR=0,S=1",
                                          "NE=2,FR=0,S=1,CP=1",
                                          "NE=2,FR=0,S=1,SS=0,PP=1",
                                          "NE=99",
                                          "",
                                          "' OR 1=1 --",
                                          "ne=2"};
  const std::pair<std::string, std::string> found[] = {{"ne", "NE=2"},
                                                       {"frame", "NE=2,FR=0"},
                                                       {"slot", "NE=2,FR=0,S=1"},
                                                       {"card", "NE=2,FR=0,S=1,CP=1"},
                                                       {"port", "NE=2,FR=0,S=1,SS=0,PP=1"}};
  for (const auto& [kind, name] : found) {
    const Json::Value objects = properties(kind, names);
    ASSERT_EQ(objects.size(), 1u) << kind;
    EXPECT_EQ(objects[0][kind == "slot" ? "slotNativeId" : "nativeId"], name);
  }
}

TEST_F(PropertiesTest, NameAskedTwiceIsAnsweredTwiceInTheOrderAsked) {
  const Json::Value objects = properties("ne", {"NE=3", "NE=2", "NE=3"});
  ASSERT_EQ(objects.size(), 3u);
  EXPECT_EQ(objects[0]["nativeId"], "NE=3");
  EXPECT_EQ(objects[1]["nativeId"], "NE=2");
  EXPECT_EQ(objects[2]["nativeId"], "NE=3");
}

TEST_F(PropertiesTest, NoNamesGiveNoObjects) {
  EXPECT_THAT(lines(properties("port", {})), IsEmpty());
}

class ContainedTest : public ResourceTest {};

TEST_F(ContainedTest, EverythingBelowAnElementComesOnceInOrderInPagesOfEverySize) {
  serveNetwork(12);
  for (const char* element : {"2", "5", "13"}) {
    const std::vector<std::string> expected = rows(storedLines(std::string("dev_id = ") + element));
    ASSERT_GT(expected.size(), 10u);
    for (const int limit : {7, 100, 1000, 10'000}) {
      std::size_t pages = 0;
      EXPECT_EQ(lines(contained(std::string("NE=") + element, limit, pages)), expected);
      EXPECT_EQ(pages, (expected.size() + static_cast<unsigned>(limit) - 1) /
                           static_cast<unsigned>(limit));
    }
  }
}

TEST_F(ContainedTest, UnknownElementsHoldNothing) {
  serveNetwork(5);
  for (const char* element : {"NE=99", "NE=02", "OS=1", "x", "NE=2,FR=0"}) {
    EXPECT_EQ(posted(kGraphQuery, graphQuery(element)), json(R"({"objList":[],"queryId":""})"));
  }
}

TEST_F(ContainedTest, CursorIsUsedOnce) {
  serveNetwork(5);
  const Json::Value first = posted(kGraphQuery, graphQuery("NE=2", R"(,"limit":5)"));
  const std::string body = R"({"query-id":")" + first["queryId"].asString() + "\"}";
  EXPECT_EQ(posted(kGraphQuery, body)["objList"].size(), 5u);
  const httplib::Result again = post(kGraphQuery, body);
  EXPECT_EQ(again->status, 400);
  EXPECT_EQ(reasonOf(again), "\"query-id\" has expired, was used already or is none");
}

TEST_F(ContainedTest, CursorExpires) {
  settings_.cursorLife = std::chrono::milliseconds(0);
  serveNetwork(5);
  const Json::Value first = posted(kGraphQuery, graphQuery("NE=2", R"(,"limit":5)"));
  const httplib::Result next =
      post(kGraphQuery, R"({"query-id":")" + first["queryId"].asString() + "\"}");
  EXPECT_EQ(next->status, 400);
  EXPECT_EQ(reasonOf(next), "\"query-id\" has expired, was used already or is none");
}

TEST_F(ContainedTest, WalksOfSeveralClientsDoNotMeet) {
  serveNetwork(5);
  std::size_t pages = 0;
  const std::vector<std::string> whole = lines(contained("NE=2", 10'000, pages));
  std::vector<std::string> walked;
  std::string mine = graphQuery("NE=2", R"(,"limit":10)");
  for (int page = 0; page < 5; ++page) {
    const Json::Value answer = posted(kGraphQuery, mine);
    for (const std::string& one : lines(answer["objList"])) walked.push_back(one);
    mine = R"({"query-id":")" + answer["queryId"].asString() + "\"}";
    posted(kGraphQuery, graphQuery("NE=3", R"(,"limit":1)"));
  }
  EXPECT_EQ(walked, std::vector<std::string>(whole.begin(), whole.begin() + 50));
}

class InstancesTest : public ResourceTest {
 protected:
  void SetUp() override { serveNetwork(30); }

  // The names of the elements that the condition holds for.
  std::vector<std::string> elementsWith(const std::string& condition) {
    std::size_t pages = 0;
    std::vector<std::string> names;
    for (const Json::Value& object :
         walk(kElements, R"("content-selector":["nativeId"],"condition":)" + condition, pages)) {
      EXPECT_EQ(object.size(), 1u);
      names.push_back(object["nativeId"].asString());
    }
    return names;
  }
  std::vector<std::string> storedElements(const std::string& where) {
    return rows("SELECT native_id FROM device WHERE " + where + " ORDER BY dev_id");
  }
};

TEST_F(InstancesTest, ElementsComeOnceInOrderInPagesOfEverySize) {
  const std::vector<std::string> expected =
      rows("SELECT name, native_id, main_type * 65536 + sub_type FROM device ORDER BY dev_id");
  for (const int limit : {1, 7, 30, 1000}) {
    std::size_t pages = 0;
    std::vector<std::string> found;
    for (const Json::Value& object :
         walk(kElements,
              R"("content-selector":["name","nativeId","neType"],"limit":)" + std::to_string(limit),
              pages)) {
      EXPECT_TRUE(object["neType"].isInt());
      found.push_back(object["name"].asString() + "|" + object["nativeId"].asString() + "|" +
                      object["neType"].asString());
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(pages, (30 + static_cast<unsigned>(limit) - 1) / static_cast<unsigned>(limit));
  }
}

TEST_F(InstancesTest, ObjectsHaveEveryMemberWhenNoneIsSelected) {
  const Json::Value object = posted(kElements, R"({"limit":1})")["objList"][0];
  EXPECT_EQ(rows("SELECT native_id, name, main_type * 65536 + sub_type, ip_address, "
                 "version_name, remark FROM device WHERE dev_id = 2"),
            std::vector<std::string>{
                object["nativeId"].asString() + "|" + object["name"].asString() + "|" +
                object["neType"].asString() + "|" + object["ipAddress"].asString() + "|" +
                object["softwareVersion"].asString() + "|" + object["remark"].asString()});
  EXPECT_EQ(object.size(), 6u);
}

TEST_F(InstancesTest, MembersStandInTheOrderThatIsAsked) {
  EXPECT_THAT(post(kElements, R"({"content-selector":["neType","name"],"limit":1})")->body,
              ::testing::StartsWith(R"({"objList":[{"neType":)"));
}

TEST_F(InstancesTest, ParametersAskTheSameAsABody) {
  const std::string filter =
      condition("and", {expression("nativeId", "in", R"(["NE=3","NE=4"])", "true")});
  const std::string members = R"("content-selector":["name"],"limit":1,"condition":)" + filter;
  const std::string first = post(kElements, "{" + members + "}")->body;
  const auto encoded = [](const std::string& text) {
    return httplib::detail::encode_query_param(text);
  };
  const std::string target = std::string(kElements) +
                             "?content-selector=" + encoded(R"(["name"])") +
                             "&condition=" + encoded(filter) + "&limit=1";
  EXPECT_EQ(get(target)->body, first);
  const std::string marker = json(first)["marker"].asString();
  EXPECT_EQ(get(target + "&marker=" + marker)->body,
            post(kElements, "{" + members + R"(,"marker":")" + marker + "\"}")->body);
}

TEST_F(InstancesTest, FiltersHoldForWhatTheyDescribe) {
  const auto equal = [](const char* name, const std::string& value, const char* flag = "true") {
    return expression(name, "equal", "\"" + value + "\"", flag);
  };
  EXPECT_THAT(elementsWith(condition("or", {equal("nativeId", "NE=3"), equal("nativeId", "NE=7"),
                                            equal("nativeId", "ne=8")})),
              ElementsAre("NE=3", "NE=7"));
  EXPECT_THAT(elementsWith(condition("or", {equal("nativeId", "ne=8", "false")})),
              ElementsAre("NE=8"));
  EXPECT_THAT(
      elementsWith(condition("and", {equal("nativeId", "NE=3"), equal("nativeId", "NE=7")})),
      IsEmpty());
  EXPECT_EQ(elementsWith(condition("and", {expression("neType", "equal", "131073", "true")})),
            storedElements("main_type = 2 AND sub_type = 1"));
  EXPECT_EQ(
      elementsWith(
          condition("and", {expression("neType", "notEqual", "131073", "true"),
                            expression("remark", "in", R"(["", "leased site"])", "true")})),
      storedElements("NOT (main_type = 2 AND sub_type = 1) AND remark IN ('','leased site')"));
  EXPECT_EQ(elementsWith(condition("or", {expression("neType", "notEqual", "131073", "true"),
                                          equal("nativeId", "NE=2")})),
            storedElements("NOT (main_type = 2 AND sub_type = 1) OR dev_id = 2"));
}

TEST_F(InstancesTest, GroupsAreCombinedByTheirOwnWord) {
  const std::string one = expression("nativeId", "in", R"(["NE=3","NE=4","NE=5"])", "true");
  const std::string other = expression("nativeId", "in", R"(["NE=5","NE=6"])", "true");
  const auto complex = [&](const char* outer, const std::string& groups) {
    return std::string(R"({"filter":{"logOp":")") + outer + R"(","complex":[)" + groups + "]}}";
  };
  const std::string both = R"({"logOp":"and","simple":[)" + one + "," + other + "]}";
  const std::string single =
      R"({"simple":[)" + expression("nativeId", "equal", "\"NE=9\"", "true") + "]}";
  EXPECT_THAT(elementsWith(complex("or", both + "," + single)), ElementsAre("NE=5", "NE=9"));
  EXPECT_THAT(elementsWith(complex("and", both + "," + single)), IsEmpty());
  EXPECT_THAT(elementsWith(complex("and", R"({"logOp":"or","simple":[)" + one + "," + other +
                                              "]}," + R"({"simple":[)" + other + "]}")),
              ElementsAre("NE=5", "NE=6"));
}

TEST_F(InstancesTest, FramesAndCardsAreFoundByName) {
  const auto named = [](const std::string& name) {
    return expression("nativeId", "equal", "\"" + name + "\"", "\"false\"");
  };
  const auto body = [](const std::string& condition) {
    return R"({"content-selector":["nativeId","name"],"limit":1000,"condition":)" + condition + "}";
  };
  const Json::Value frames =
      posted(kFrames, body(condition("or", {named("ne=3,fr=0"), named("NE=2,FR=0"),
                                            named("NE=99,FR=0"), named("NE=2,FR=0,S=1,CP=1")})));
  ASSERT_EQ(frames["objList"].size(), 2u);
  EXPECT_EQ(frames["objList"][0]["nativeId"], "NE=2,FR=0");
  EXPECT_EQ(frames["objList"][1]["nativeId"], "NE=3,FR=0");
  EXPECT_EQ(frames["isTruncated"], Json::Value(false));

  const std::vector<std::string> card =
      rows("SELECT native_id, name FROM resource WHERE main_type = 21 LIMIT 1");
  const std::string name = card.at(0).substr(0, card[0].find('|'));
  const Json::Value cards =
      posted(kCards, body(condition("or", {named(name), named("NE=2,FR=0")})));
  ASSERT_EQ(cards["objList"].size(), 1u);
  EXPECT_EQ(
      cards["objList"][0]["nativeId"].asString() + "|" + cards["objList"][0]["name"].asString(),
      card[0]);
}

TEST_F(InstancesTest, FramesAndCardsOfTheWholeNetworkComeInPages) {
  std::size_t pages = 0;
  const auto names = [&](const char* path) {
    std::vector<std::string> found;
    for (const Json::Value& object : walk(path, R"("limit":50)", pages)) {
      found.push_back(object["nativeId"].asString());
    }
    EXPECT_GT(pages, 1u);
    return found;
  };
  EXPECT_EQ(names(kFrames),
            rows("SELECT native_id FROM resource WHERE main_type = 3 ORDER BY dev_id, seq"));
  EXPECT_EQ(
      names(kCards),
      rows("SELECT native_id FROM resource WHERE main_type IN (20, 21) ORDER BY dev_id, seq"));
}

TEST_F(InstancesTest, ThousandsOfNamesAreOneCondition) {
  std::vector<std::string> expressions;
  for (int i = 0; i < 5000; ++i) {
    expressions.push_back(
        expression("nativeId", "equal", "\"NE=" + std::to_string(i) + ",FR=0\"", "\"false\""));
  }
  const Json::Value answer =
      posted(kFrames, R"({"limit":1000,"condition":)" + condition("or", expressions) + "}");
  EXPECT_EQ(answer["objList"].size(), 30u);
}

class CataloguesTest : public ResourceTest {};

TEST_F(CataloguesTest, MainTypesComeOnceInOrderInPagesOfEverySize) {
  serveNetwork(0);
  const std::vector<std::string> expected =
      rows("SELECT type_id, name FROM main_type ORDER BY type_id");
  ASSERT_EQ(expected.size(), 13u);
  for (const int limit : {1, 5, 13, 200}) {
    std::size_t pages = 0;
    std::vector<std::string> found;
    for (const Json::Value& type :
         walk(kMainTypesPath, R"("limit":)" + std::to_string(limit), pages, "mainResTypes")) {
      found.push_back(type["id"].asString() + "|" + type["name"].asString());
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(pages, (13 + static_cast<unsigned>(limit) - 1) / static_cast<unsigned>(limit));
  }
}

TEST_F(CataloguesTest, MainTypesOfNumbersAreFound) {
  serveNetwork(0);
  EXPECT_EQ(posted(kMainTypesPath, R"({"ids":[6,3,99]})"),
            json(R"({"mainResTypes":[{"id":3,"name":"机框"},{"id":6,"name":"端口"}],)"
                 R"("isTruncated":false,"marker":""})"));
}

TEST_F(CataloguesTest, PlaceAndKeepersAreThoseOfTheInventory) {
  serveNetwork(20);
  for (const std::string& row : rows("SELECT dev_id, country, province, city, address FROM "
                                     "device_place")) {
    const std::string id = row.substr(0, row.find('|'));
    const Json::Value answer =
        posted(kLocation, R"({"nativeIds":["NE=)" + id + R"("],"needMaintenanceInfo":true})");
    ASSERT_EQ(answer["locationInfo"].size(), 1u);
    EXPECT_EQ(answer["locationInfo"][0]["nativeId"], "NE=" + id);
    const Json::Value& place = answer["locationInfo"][0]["devMTInfo"];
    EXPECT_EQ(id + "|" + place["country"].asString() + "|" + place["province"].asString() + "|" +
                  place["city"].asString() + "|" + place["address"].asString(),
              row);
    std::vector<std::string> keepers;
    for (const Json::Value& keeper : answer["maintenanceInfo"]) {
      EXPECT_TRUE(keeper["iID"].isString());
      keepers.push_back(keeper["iID"].asString() + "|" + keeper["name"].asString() + "|" +
                        keeper["dept"].asString() + "|" + keeper["phoneNo"].asString() + "|" +
                        keeper["email"].asString());
    }
    EXPECT_EQ(keepers, rows("SELECT k.keeper_id, name, dept, phone_no, email FROM device_keeper "
                            "JOIN keeper k USING (keeper_id) WHERE dev_id = " +
                            id + " ORDER BY seq"));
  }
}

TEST_F(CataloguesTest, KeepersAreLeftOutUnlessAskedFor) {
  serveNetwork(5);
  EXPECT_EQ(
      posted(kLocation, R"({"nativeIds":["NE=2"],"needMaintenanceInfo":false})").getMemberNames(),
      std::vector<std::string>{"locationInfo"});
}

TEST_F(CataloguesTest, WhatAnElementHoldsStandsWhereTheElementStands) {
  serveNetwork(5);
  const std::string id = std::to_string(resourceIdOf("NE=3,FR=0,S=1"));
  const auto place = [&](const std::string& number) {
    return posted(kLocation, R"({"nativeIds":["NE=)" + number +
                                 R"("],"needMaintenanceInfo":false})")["locationInfo"][0];
  };
  EXPECT_EQ(place(id)["devMTInfo"], place("3")["devMTInfo"]);
  EXPECT_EQ(place(id)["nativeId"], "NE=" + id);
}

TEST_F(CataloguesTest, UnknownNamesHaveNoPlace) {
  serveNetwork(5);
  EXPECT_EQ(posted(kLocation, R"({"nativeIds":["NE=99","OS=1","NE=","NE=2x","NE=-1","x"],)"
                              R"("needMaintenanceInfo":true})"),
            json(R"({"locationInfo":[],"maintenanceInfo":[]})"));
}

// The inventory of the examples in the document: one element with one of everything.
void fillExample(InventoryWriter& writer) {
  writer.add(physicalRoot());
  for (const std::int64_t id : {2, 3}) {
    DeviceRow device;
    device.id = id;
    device.subnetId = "102";
    device.mainType = 2;
    device.subType = 5;
    device.name = id == 2 ? "Zürich-AGG-0002" : "other";
    writer.add(device);
  }
  const struct {
    const char* segments;
    std::int64_t mainType;
    std::int64_t subType;
    const char* name;
  } kResources[] = {{",FR=0", 3, 5008, "Frame 0"},
                    {",FR=0,S=1", 4, 1102, "槽位1"},
                    {",FR=0,S=1,CP=1", 20, 1102, "业务处理板 1"},
                    {",FR=0,S=1,SS=0,PP=1", 6, 65538, "GE0/1/1"},
                    {",FR=0,S=1,SS=1", 5, 2002, "子槽位1"},
                    {",FR=0,S=1,SS=1,SC=1", 21, 2002, "光子卡 1"}};
  writer.addMainType(1, "Network element");
  for (const auto& resource : kResources) {
    if (resource.mainType != 1) writer.addMainType(resource.mainType, "a type");
  }
  std::int64_t sequence = 0;
  for (const auto& resource : kResources) {
    ResourceRow row;
    row.nativeId = std::string("NE=2") + resource.segments;
    row.id = resourceIdOf(row.nativeId);
    row.deviceId = 2;
    row.sequence = ++sequence;
    row.parentId = 2;
    row.mainType = resource.mainType;
    row.subType = resource.subType;
    row.name = resource.name;
    writer.add(row);
  }
  writer.add(PlaceRow{2, "Schweiz", "Europe", "Zürich", "Rue de l'Hôpital 17"});
  writer.add(
      KeeperRow{1, "Anna Müller", "Netzbetrieb", "+41 44 555 01 01", "anna.mueller@example.net"});
  writer.addDeviceKeeper(2, 0, 1);
}

TEST_F(CataloguesTest, ExamplesOfTheDocumentAreAnsweredAsItSays) {
  settings_.databaseFile = directory_.path("net.db");
  NewDatabaseFile made(settings_.databaseFile);
  {
    InventoryWriter writer(made.database());
    fillExample(writer);
  }
  made.publish();
  serveNetwork(0);

  const std::string document = contentOf(ORMASIM_FORMATS_DOCUMENT);
  const std::size_t begin = document.find("### Resource properties");
  const std::string part = document.substr(begin, document.find("### Alarm catalogue") - begin);
  const std::regex form("\n`POST ([^`\n]*)`\n```json\n([^\n]*)\n```\n```json\n([^\n]*\n)```");
  std::size_t examples = 0;
  for (std::sregex_iterator example(part.begin(), part.end(), form), end; example != end;
       ++example, ++examples) {
    EXPECT_EQ(post((*example)[1], (*example)[2])->body, (*example)[3]) << (*example)[2];
  }
  EXPECT_EQ(examples, 9u);
}

}  // namespace
}  // namespace ormasim::testing
