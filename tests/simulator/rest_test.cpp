#include <gmock/gmock.h>

#include <set>

#include "files.h"
#include "inventory_writer.h"
#include "server_fixture.h"
#include "services.h"

namespace ormasim::testing {
namespace {

using ::testing::HasSubstr;

class RestTest : public ServerTest {
 protected:
  // The native ids of all pages, each page of at most `limit`.
  std::vector<std::string> walk(int limit) {
    httplib::Client client("127.0.0.1", port_);
    client.set_keep_alive(true);
    std::vector<std::string> ids;
    std::string target = std::string(kDevices) + "?limit=" + std::to_string(limit);
    std::string marker;
    for (bool more = true; more;) {
      const httplib::Result result =
          client.Get((target + (marker.empty() ? "" : "&marker=" + marker)).c_str());
      if (!result || result->status != 200) {
        ADD_FAILURE() << "a page is missing";
        return ids;
      }
      const Json::Value page = json(result->body);
      EXPECT_LE(page["objList"].size(), static_cast<unsigned>(limit));
      EXPECT_GT(page["objList"].size(), 0u);
      for (const Json::Value& row : page["objList"]) ids.push_back(row["nativeId"].asString());
      more = page["isTruncated"].asBool();
      marker = page["marker"].asString();
      EXPECT_EQ(marker.empty(), !more);
    }
    return ids;
  }

  std::vector<std::string> expectedIds() {
    return query(directory_.path("net.db"),
                 "SELECT id FROM (SELECT 1 AS dev, -1 AS no, 'OS=1' AS id UNION ALL "
                 "SELECT dev_id, -1, native_id FROM device UNION ALL "
                 "SELECT dev_id, frame_no, 'NE=' || dev_id || ',FR=' || frame_no FROM frame) "
                 "ORDER BY dev, no");
  }
};

TEST_F(RestTest, PagesOfEverySizeGiveEveryRowOnceInOrder) {
  serveNetwork(300);
  const std::vector<std::string> expected = expectedIds();
  ASSERT_GT(expected.size(), 301u);  // there are frames
  for (const int limit : {1, 7, 1000}) EXPECT_EQ(walk(limit), expected) << limit;
}

TEST_F(RestTest, LimitIsTwoHundredWhereNoneIsAsked) {
  serveNetwork(300);
  const Json::Value page = json(get(kDevices)->body);
  EXPECT_EQ(page["objList"].size(), 200u);
  EXPECT_TRUE(page["isTruncated"].asBool());
}

TEST_F(RestTest, LimitIsHonouredUpToItsMaximum) {
  serveNetwork(300);
  EXPECT_EQ(json(get(std::string(kDevices) + "?limit=299")->body)["objList"].size(), 299u);
  EXPECT_EQ(json(get(std::string(kDevices) + "?limit=100000")->body)["objList"].size(),
            expectedIds().size());
}

TEST_F(RestTest, AnswerIsTheDocumentedOne) {
  settings_.databaseFile = directory_.path("doc.db");
  NewDatabaseFile made(settings_.databaseFile);
  InventoryWriter writer(made.database());
  writer.add(physicalRoot());
  for (const char* name : {"Zürich-AGG-0002", "北京-核心路由器-0003", "core \"4\""}) {
    DeviceRow row;
    row.id = std::string(name)[0] == 'Z' ? 2 : name[0] == 'c' ? 4 : 3;
    row.subnetId = "102";
    row.mainType = 2;
    row.subType = 5;
    row.ipAddress = "10.0.0." + std::to_string(row.id);
    row.name = name;
    writer.add(row);
  }
  writer.add(FrameRow{2, 0, "Frame 0"});
  made.publish();
  serveNetwork(0);

  const std::string document = contentOf(ORMASIM_FORMATS_DOCUMENT);
  const std::string first = get(std::string(kDevices) + "?limit=4")->body;
  EXPECT_EQ(
      first,
      R"({"objList":[{"nativeId":"OS=1","typeId":0,"ipAddress":"","name":"OS"},)"
      R"({"nativeId":"NE=2","typeId":131077,"ipAddress":"10.0.0.2","name":"Zürich-AGG-0002"},)"
      R"({"nativeId":"NE=2,FR=0","typeId":196608,"ipAddress":"","name":"Frame 0"},)"
      R"({"nativeId":"NE=3","typeId":131077,"ipAddress":"10.0.0.3",)"
      R"("name":"北京-核心路由器-0003"}],"isTruncated":true,"marker":"d3"})"
      "\n");
  EXPECT_THAT(document, HasSubstr(first));
  const std::string second = get(std::string(kDevices) + "?limit=4&marker=d3")->body;
  EXPECT_EQ(second, R"({"objList":[{"nativeId":"NE=4","typeId":131077,"ipAddress":"10.0.0.4",)"
                    R"("name":"core \"4\""}],"isTruncated":false,"marker":""})"
                    "\n");
  EXPECT_THAT(document, HasSubstr(second));
}

struct ParameterRefusal {
  std::string target;
  std::string reason;
};

TEST_F(RestTest, WrongParametersAreRefusedWithTheReason) {
  serveNetwork(10);
  const std::string path = kDevices;
  const ParameterRefusal refusals[] = {
      {path + "?limit=0", "parameter \"limit\" is \"0\", not a number from 1 to 100000"},
      {path + "?limit=100001", "parameter \"limit\" is \"100001\", not a number from 1 to 100000"},
      {path + "?limit=-1", "parameter \"limit\" is \"-1\", not a number from 1 to 100000"},
      {path + "?limit=%2B1", "parameter \"limit\" is \"+1\", not a number from 1 to 100000"},
      {path + "?limit=", "parameter \"limit\" is \"\", not a number from 1 to 100000"},
      {path + "?limit=99999999999999999999",
       "parameter \"limit\" is \"99999999999999999999\", not a number from 1 to 100000"},
      {path + "?limit=1&limit=2", "parameter \"limit\" is given more than once"},
      {path + "?Limit=1", "unknown parameter \"Limit\""},
      {path + "?limit=1&page=2", "unknown parameter \"page\""},
      {path + "?marker=garbage",
       "parameter \"marker\" is \"garbage\", which no page has handed out"},
      {path + "?marker=", "parameter \"marker\" is \"\", which no page has handed out"},
      {path + "?marker=%FF%22",
       "parameter \"marker\" is \"\xEF\xBF\xBD\"\", which no page has "
       "handed out"},
  };
  for (const ParameterRefusal& refusal : refusals) {
    const httplib::Result result = get(refusal.target);
    ASSERT_TRUE(result) << refusal.target;
    EXPECT_EQ(result->status, 400) << refusal.target;
    EXPECT_EQ(reasonOf(result), refusal.reason);
  }
}

TEST_F(RestTest, UnknownPathIsNotFound) {
  serveNetwork(10);
  std::string services;
  for (const std::string& path : servicePaths()) services += (services.empty() ? "" : ", ") + path;
  EXPECT_THAT(services, HasSubstr(std::string(kDevices) + ", " + kTsNodes + ", " + kSubnetView));
  for (const char* path : {"/", "/rest", "/rest/resource/v2/dev-properties/", "/REST"}) {
    const httplib::Result result = get(path);
    EXPECT_EQ(result->status, 404) << path;
    EXPECT_EQ(reasonOf(result), std::string("no service at ") + path + "; there are " + services);
  }
}

TEST_F(RestTest, OtherMethodsAreNotAllowed) {
  serveNetwork(10);
  httplib::Client client("127.0.0.1", port_);
  client.set_keep_alive(true);
  for (int round = 0; round < 2; ++round) {  // the connection stays usable
    for (const httplib::Result& result :
         {client.Post(kDevices, "{}", "application/json"), client.Put(kDevices, "{}", "text/plain"),
          client.Patch(kDevices, "{}", "text/plain"), client.Delete(kDevices),
          client.Options(kDevices)}) {
      ASSERT_TRUE(result);
      EXPECT_EQ(result->status, 405);
      EXPECT_EQ(result->get_header_value("Allow"), "GET");
      EXPECT_EQ(reasonOf(result), std::string(kDevices) + " takes GET only");
    }
  }
  EXPECT_EQ(reasonOf(post(kTsNodes, "{}")), std::string(kTsNodes) + " takes GET only");
  EXPECT_EQ(reasonOf(get(kSubnetView)), std::string(kSubnetView) + " takes POST only");
}

TEST_F(RestTest, TokenIsAskedForWhenThereIsOne) {
  useToken("sesame");
  serveNetwork(10);
  EXPECT_EQ(get(kDevices, {{"X-Auth-Token", "sesame"}})->status, 200);
  for (const char* wrong : {"", "sesam", "sesamee", "Sesame"}) {
    const httplib::Result result = get(kDevices, {{"X-Auth-Token", wrong}});
    EXPECT_EQ(result->status, 401) << wrong;
    EXPECT_EQ(reasonOf(result), "header X-Auth-Token is missing or wrong");
  }
  EXPECT_EQ(get(kDevices)->status, 401);
}

TEST_F(RestTest, TokenIsNotLookedAtWhenThereIsNone) {
  serveNetwork(10);
  EXPECT_EQ(get(kDevices, {{"X-Auth-Token", "any"}})->status, 200);
}

TEST_F(RestTest, HeadersOfThePlatformAreChecked) {
  serveNetwork(10);
  EXPECT_EQ(get(kDevices, {{"X-Orma-Target", "nbi"},
                           {"X-Orma-Mode", "255"},
                           {"X-Orma-Option", "18446744073709551615"},
                           {"X-Orma-Extra", R"({"a":[1,null]})"}})
                ->status,
            200);
  const std::pair<const char*, const char*> wrong[] = {
      {"X-Orma-Mode", "256"},  {"X-Orma-Mode", "0x4"},
      {"X-Orma-Mode", "-1"},   {"X-Orma-Option", "18446744073709551616"},
      {"X-Orma-Option", "x"},  {"X-Orma-Extra", "{"},
      {"X-Orma-Extra", "{} x"}};
  for (const auto& [name, value] : wrong) {
    const httplib::Result result = get(kDevices, {{name, value}});
    EXPECT_EQ(result->status, 400) << name << ": " << value;
    EXPECT_THAT(reasonOf(result), HasSubstr(std::string("header ") + name + " is not "));
  }
}

TEST_F(RestTest, InventoryThatGoesAwayIsToldWithA500) {
  serveNetwork(10);
  EXPECT_EQ(get(kDevices)->status, 200);
  {
    Database database(directory_.path("net.db"), Database::Mode::ReadWrite);
    database.execute("DROP TABLE device");
  }
  const httplib::Result result = get(kDevices);
  EXPECT_EQ(result->status, 500);
  EXPECT_THAT(reasonOf(result), HasSubstr("no such table: device"));
}

TEST_F(RestTest, NewContentsAreServedAtOnce) {
  serveNetwork(10);
  EXPECT_EQ(walk(1000), expectedIds());
  {
    Database database(directory_.path("net.db"), Database::Mode::ReadWrite);
    database.execute("DELETE FROM device WHERE dev_id > 5; DELETE FROM frame");
  }
  EXPECT_EQ(walk(1000).size(), 5u);
  EXPECT_EQ(walk(1000), expectedIds());
}

TEST_F(RestTest, BadDatabasesAreNamedBeforeAnythingIsServed) {
  const auto open = [](const std::string& file) {
    RestSettings settings;
    settings.databaseFile = file;
    RestHandler handler(std::move(settings));
  };
  EXPECT_THAT(errorOf([&] { open(directory_.path("no.db")); }),
              ::testing::AllOf(HasSubstr(directory_.path("no.db")),
                               HasSubstr("unable to open database file"), HasSubstr("generate")));
  const std::string text = directory_.write("text.db", std::string(5000, 'x'));
  EXPECT_THAT(errorOf([&] { open(text); }),
              ::testing::AllOf(HasSubstr(text), HasSubstr("file is not a database")));
  const std::string empty = directory_.write("empty.db", "");
  EXPECT_THAT(errorOf([&] { open(empty); }),
              ::testing::AllOf(HasSubstr(empty), HasSubstr("it is no inventory")));
}

TEST_F(RestTest, DatabaseOfAnotherLayoutIsRefused) {
  const std::string file = directory_.path("net.db");
  { NewDatabaseFile(file).publish(); }
  {
    Database database(file, Database::Mode::ReadWrite);
    database.execute("UPDATE inventory_version SET version = 99");
  }
  settings_.databaseFile = file;
  EXPECT_THAT(errorOf([&] { serveNetwork(0); }), HasSubstr("its layout is not version 2"));
}

TEST_F(RestTest, DatabaseThatLacksATableIsRefused) {
  const std::string file = directory_.path("net.db");
  { NewDatabaseFile(file).publish(); }
  {
    Database database(file, Database::Mode::ReadWrite);
    database.execute("DROP TABLE frame");
  }
  settings_.databaseFile = file;
  EXPECT_THAT(errorOf([&] { serveNetwork(0); }), HasSubstr("no such table: frame"));
}

}  // namespace
}  // namespace ormasim::testing
