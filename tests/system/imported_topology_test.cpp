// An imported network: what the agent says about its map, against the file itself.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <pugixml.hpp>
#include <sstream>

#include "documents.h"
#include "graphml_network.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr char kRootKey[] = "ORMAP_PHY_SUBMAP";
constexpr char kNeato[] = "/usr/bin/neato";

// Names that need escaping, a node without a label, one without a country, one without a place,
// two links between the same nodes and one from a node to itself.
constexpr char kGraphml[] = R"(<?xml version="1.0" encoding="utf-8"?>
<graphml xmlns="http://graphml.graphdrawing.org/xmlns">
  <key attr.name="Longitude" attr.type="double" for="node" id="d1"/>
  <key attr.name="Latitude" attr.type="double" for="node" id="d2"/>
  <key attr.name="label" attr.type="string" for="node" id="d3"/>
  <key attr.name="Country" attr.type="string" for="node" id="d4"/>
  <graph edgedefault="undirected">
    <node id="0"><data key="d3">Z&#252;rich</data><data key="d4">Schweiz</data><data key="d1">8.55</data><data key="d2">47.37</data></node>
    <node id="1"><data key="d3">Bern "Wankdorf"</data><data key="d4">Schweiz</data><data key="d1">7.45</data><data key="d2">46.95</data></node>
    <node id="2"><data key="d3">&#21271;&#20140;</data><data key="d4">&#20013;&#22269;</data><data key="d1">116.4</data><data key="d2">39.9</data></node>
    <node id="3"><data key="d4">Brasil</data><data key="d1">-46.63</data><data key="d2">-23.55</data></node>
    <node id="4"><data key="d3">ship &amp;amp; buoy\N</data><data key="d1">-30</data><data key="d2">0</data></node>
    <node id="5"><data key="d3">lost</data><data key="d4">Schweiz</data></node>
    <edge source="0" target="1"/>
    <edge source="1" target="0"/>
    <edge source="0" target="2"/>
    <edge source="2" target="3"/>
    <edge source="3" target="4"/>
    <edge source="5" target="0"/>
    <edge source="4" target="4"/>
  </graph>
</graphml>
)";

// A record of a JSON answer by its fields.
using Record = std::map<std::string, std::string>;

class ImportedTopology : public World {
 protected:
  ImportedTopology() {
    const auto source = directory_.write("Lakes.graphml", kGraphml);
    const Outcome imported =
        Process({ORMASIM, "import", source.string(), "--db", database_.string()}).finish();
    EXPECT_EQ(imported.status, 0) << imported.err;
    network_ = readGraphml(source);
    serve();
    configure([](Json::Value& document) { document["items"]["IsReportSubnet"] = 1; });
  }

  // The records of a command that succeeds.
  std::vector<Record> ask(std::vector<std::string> words) {
    words.insert(words.begin(), {"--format", "json"});
    const Outcome outcome = agent(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::vector<Record> records;
    const Json::Value document = jsonOf(outcome.out);
    for (const Json::Value& record : document["records"]) {
      records.emplace_back();
      for (const std::string& name : record.getMemberNames()) {
        records.back()[name] = record[name].asString();
      }
    }
    return records;
  }

  // The keys of the submaps by their labels.
  std::map<std::string, std::string> keys() {
    std::map<std::string, std::string> keys;
    for (const Record& row : ask({"topo", "tree"})) keys[row.at("label")] = row.at("subMapId");
    return keys;
  }

  std::string subMapOf(const GraphmlDevice& device) const {
    return device.country.empty() ? network_.name : device.country;
  }

  std::string subnetNameOf(const GraphmlDevice& device) const {
    return "Physical Root/" + network_.name + (device.country.empty() ? "" : "/" + device.country);
  }

  int devicesIn(const std::string& subMap) const {
    const auto& devices = network_.devices;
    return static_cast<int>(
        std::count_if(devices.begin(), devices.end(),
                      [&](const GraphmlDevice& device) { return subMapOf(device) == subMap; }));
  }

  void setStates(const std::string& port, const std::string& states) {
    const Outcome changed =
        Process({ORMASIM, "status", "--db", database_.string(), "--port", port, "--states", states})
            .finish();
    EXPECT_EQ(changed.status, 0) << changed.err;
  }

  std::string textOf(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(file(name)).rdbuf();
    return text.str();
  }

  GraphmlNetwork network_;
};

TEST_F(ImportedTopology, TheTreeHoldsTheFileAndItsCountries) {
  const Outcome outcome = agent({"topo", "tree"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const Rows rows = rowsOf("table", outcome.out);
  ASSERT_THAT(rows, SizeIs(3 + network_.countries.size()));
  const std::string fileKey = rows[2][1];
  Rows expected = {{"label", "subMapId", "parentSubMapId", "subMaps", "devices"},
                   {"Physical Root", kRootKey, kRootKey, "1", "0"},
                   {network_.name, fileKey, kRootKey, std::to_string(network_.countries.size()),
                    std::to_string(devicesIn(network_.name))}};
  for (const std::string& country : network_.countries) {
    expected.push_back(
        {country, rows.at(expected.size())[1], fileKey, "0", std::to_string(devicesIn(country))});
    EXPECT_THAT(outcome.out, HasSubstr("\n    " + country + " ")) << "two levels deep";
  }
  EXPECT_EQ(rows, expected);
}

TEST_F(ImportedTopology, WithoutSubnetNamesTheTreeSaysWhyItCountsNoDevices) {
  configure([](Json::Value& document) { document["items"]["IsReportSubnet"] = 0; });
  const Outcome outcome = agent({"topo", "tree"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(rowsOf("table", outcome.out).front(),
            (std::vector<std::string>{"label", "subMapId", "parentSubMapId", "subMaps"}));
  EXPECT_THAT(outcome.err, HasSubstr("devices are not counted: no subnet names are kept"));
}

TEST_F(ImportedTopology, EverySubMapIsFoundByItsKeyAndItsParent) {
  const auto roots = ask({"topo", "root-submaps"});
  ASSERT_THAT(roots, SizeIs(1));
  EXPECT_EQ(roots[0].at("label"), "Physical Root");
  const auto below = ask({"topo", "submaps", "/"});
  ASSERT_THAT(below, SizeIs(1));
  EXPECT_EQ(below[0].at("label"), network_.name);
  EXPECT_EQ(below[0].at("parentSubMapId"), kRootKey);
  const std::string fileKey = below[0].at("subMapId");
  std::vector<std::string> countries;
  for (const Record& record : ask({"topo", "submaps", fileKey})) {
    countries.push_back(record.at("label"));
    EXPECT_EQ(record.at("parentSubMapId"), fileKey);
    EXPECT_THAT(ask({"topo", "submap", record.at("subMapId")}), testing::ElementsAre(record));
  }
  EXPECT_EQ(countries, network_.countries);
}

TEST_F(ImportedTopology, EveryNodeStandsWhereTheFilePutsIt) {
  const auto keyOf = keys();
  for (const GraphmlDevice& device : network_.devices) {
    SCOPED_TRACE(device.name);
    const auto nodes = ask({"topo", "node", std::to_string(device.id)});
    ASSERT_THAT(nodes, SizeIs(1));
    EXPECT_EQ(nodes[0].at("deviceId"), std::to_string(device.id));
    EXPECT_EQ(nodes[0].at("label"), device.name);
    EXPECT_EQ(nodes[0].at("parentSubMapId"), keyOf.at(subMapOf(device)));
    EXPECT_EQ(nodes[0].at("posX"), std::to_string(device.posX));
    EXPECT_EQ(nodes[0].at("posY"), std::to_string(device.posY));
  }
}

TEST_F(ImportedTopology, OnlyTheManagementSystemStandsBelowTheRoot) {
  for (const auto& words : std::vector<std::vector<std::string>>{
           {"topo", "nodes"}, {"topo", "nodes", "S1000"}, {"topo", "nodes", ""}}) {
    const auto nodes = ask(words);
    ASSERT_THAT(nodes, SizeIs(1)) << "the argument is not looked at";
    EXPECT_EQ(nodes[0].at("nodeId"), "1");
  }
}

TEST_F(ImportedTopology, WhatIsNotThereIsAnEmptyAnswerWithAHint) {
  for (const auto& [words, hint] : std::vector<std::pair<std::vector<std::string>, std::string>>{
           {{"topo", "node", "99"}, "no such node"},
           {{"topo", "submap", "S99"}, "no such submap"},
           {{"topo", "submaps", "S99"}, "no submaps"}}) {
    const Outcome outcome = agent(words);
    EXPECT_EQ(outcome.status, 0) << "the operation reports success by contract";
    EXPECT_THAT(rowsOf("table", outcome.out), SizeIs(1));
    EXPECT_THAT(outcome.err, HasSubstr("ormaagent: " + hint));
  }
  EXPECT_EQ(agent({"topo", "link", "204:99"}).status, 1);
}

TEST_F(ImportedTopology, EveryDeviceHasTheNameOfItsSubnet) {
  std::vector<std::string> words = {"topo", "submap-name", "--wait", "60"};
  for (const GraphmlDevice& device : network_.devices) words.push_back(std::to_string(device.id));
  const auto records = ask(words);
  ASSERT_THAT(records, SizeIs(network_.devices.size()));
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(records[i], (Record{{"id", std::to_string(network_.devices[i].id)},
                                  {"name", subnetNameOf(network_.devices[i])}}));
  }
}

TEST_F(ImportedTopology, ADeviceWithoutASubnetNameIsAFailure) {
  const Outcome outcome =
      agent({"--format", "csv", "topo", "submap-name", "--wait", "1", "2", "99"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(rowsOf("csv", outcome.out)[2], (std::vector<std::string>{"99", ""}));
  EXPECT_THAT(outcome.err, HasSubstr("topo submap-name 2 99 failed: a device without"));
}

TEST_F(ImportedTopology, WithoutSubnetNamesNobodyWaitsForThem) {
  configure([](Json::Value& document) { document["items"]["IsReportSubnet"] = 0; });
  const Outcome outcome =
      startAgent({"topo", "submap-name", "--wait", "86400", "2"})->finish(kDeadline);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("\"IsReportSubnet\" is 0 or absent"));
}

TEST_F(ImportedTopology, EveryEdgeIsALinkBetweenPortsOfItsOwn) {
  const auto links = ask({"topo", "links"});
  ASSERT_THAT(links, SizeIs(network_.links.size()));
  std::map<std::string, int> ends;
  for (std::size_t i = 0; i < links.size(); ++i) {
    SCOPED_TRACE(links[i].at("linkId"));
    EXPECT_EQ(links[i].at("srcDeviceId"), std::to_string(network_.links[i].first));
    EXPECT_EQ(links[i].at("dstDeviceId"), std::to_string(network_.links[i].second));
    ++ends[links[i].at("srcDeviceId") + " " + links[i].at("srcPortName")];
    ++ends[links[i].at("dstDeviceId") + " " + links[i].at("dstPortName")];
    EXPECT_THAT(ask({"topo", "link", links[i].at("linkId")}), testing::ElementsAre(links[i]));
  }
  EXPECT_THAT(ends, SizeIs(2 * links.size()));
}

TEST_F(ImportedTopology, ALinkFollowsTheStatesOfItsPorts) {
  const std::string id = ask({"topo", "links"}).at(2).at("linkId");
  struct Case {
    const char* source;
    const char* destination;
    const char* srcStatus;
    const char* dstStatus;
    const char* linkStatus;
  };
  // The third edge ends at the third port of the first node and the first port of the third.
  for (const Case& one :
       {Case{"1,1", "1,1", "1", "1", "1"}, Case{"1,0", "1,1", "9", "1", "9"},
        Case{"0,0", "1,0", "8", "9", "9"}, Case{"0,0", "0,1", "8", "2", "8"},
        Case{"-1,1", "1,1", "-1", "1", "1"}, Case{"1,-5", "-1,-1", "-1", "-1", "-1"}}) {
    SCOPED_TRACE(std::string(one.source) + " and " + one.destination);
    setStates("2/0/1/0/3", one.source);
    setStates("4/0/1/0/1", one.destination);
    const Record link = ask({"topo", "link", id}).at(0);
    EXPECT_EQ(link.at("srcPortStatus"), one.srcStatus);
    EXPECT_EQ(link.at("dstPortStatus"), one.dstStatus);
    EXPECT_EQ(link.at("linkStatus"), one.linkStatus);
  }
}

TEST_F(ImportedTopology, ThePictureHoldsEveryNodeLinkAndSubMap) {
  setStates("2/0/1/0/3", "0,0");
  const auto drawn = ask({"topo", "draw", "--out", file("net.dot").string()});
  EXPECT_EQ(drawn, (std::vector<Record>{{{"file", file("net.dot").string()},
                                         {"nodes", std::to_string(network_.devices.size())},
                                         {"links", std::to_string(network_.links.size())},
                                         {"subMaps", "4"}}}));
  const std::string dot = textOf("net.dot");
  for (const char* label :
       {"label=\"Zürich\"", R"(label="Bern \"Wankdorf\"")", "label=\"北京\"", "label=\"Lakes-3\"",
        R"(label="ship &amp;amp; buoy\\N")", "label=\"lost\"", "label=\"Schweiz\"",
        "label=\"中国\"", "label=\"Brasil\"", "label=\"Lakes\""}) {
    EXPECT_THAT(dot, HasSubstr(label));
  }
  for (const auto& [source, destination] : network_.links) {
    EXPECT_THAT(dot, HasSubstr("\n  \"d" + std::to_string(source) + "\" -- \"d" +
                               std::to_string(destination) + "\" [color="));
  }
  EXPECT_THAT(dot, HasSubstr("\n  \"d2\" -- \"d4\" [color=\"#D02020\"")) << "it is down";
}

TEST_F(ImportedTopology, GraphvizDrawsThePicture) {
  if (!std::filesystem::exists(kNeato)) GTEST_SKIP() << kNeato << " is not installed";
  ask({"topo", "draw", "--out", file("net.svg").string()});
  pugi::xml_document svg;
  ASSERT_TRUE(svg.load_file(file("net.svg").c_str()));
  EXPECT_THAT(svg.select_nodes("//g[@class='node']"), SizeIs(network_.devices.size()));
  EXPECT_THAT(svg.select_nodes("//g[@class='edge']"), SizeIs(network_.links.size()));
  EXPECT_THAT(svg.select_nodes("//g[@class='cluster']"), SizeIs(4));
  for (const GraphmlDevice& device : network_.devices) {
    const auto texts = svg.select_nodes("//g[@class='node']//text");
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [&](const pugi::xpath_node& text) {
      return text.node().child_value() == device.name;
    })) << device.name;
  }
}

TEST_F(ImportedTopology, WithoutGraphvizThePictureIsRefusedWithAWayOut) {
  ProcessSetup setup;
  setup.environment = {"ORMAAGENT_CONFIG=" + configuration_.string(), "PATH=/nowhere"};
  const Outcome outcome = agent({"topo", "draw", "--out", file("net.svg").string()}, setup);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("Debian's package graphviz"));
  EXPECT_FALSE(std::filesystem::exists(file("net.svg")));
}

TEST_F(ImportedTopology, AFileThatCannotBeWrittenIsNamed) {
  const Outcome outcome = agent({"topo", "draw", "--out", "/nowhere/net.dot"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err, HasSubstr("/nowhere/net.dot: No such file or directory"));
}

TEST_F(ImportedTopology, ATreeIsFollowedToItsLimit) {
  Inventory inventory(database_);
  const std::string top = inventory.rows("SELECT max(topo_id) FROM subnet")[0][0];
  inventory.rows(
      "WITH RECURSIVE step(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM step WHERE "
      "n < 250) INSERT INTO subnet SELECT 'x' || n, CASE n WHEN 1 THEN '102' ELSE 'x' "
      "|| (n - 1) END, " +
      top + " + n, 'X=' || n, 'x', 200, 1, '', '', 0, 0 FROM step");
  const Outcome outcome = agent({"--format", "csv", "topo", "tree"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(rowsOf("csv", outcome.out), SizeIs(1 + 1 + 1 + network_.countries.size() + 200));
  EXPECT_THAT(outcome.err, HasSubstr("below 1 submaps at depth 200 was not asked for"));
}

}  // namespace
}  // namespace systemtest
