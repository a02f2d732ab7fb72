#include "inventory_fixture.h"

#include <fstream>
#include <sstream>

namespace dao::test {
namespace {

std::string contentOf(const std::string& file) {
  std::ifstream in(file);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

}  // namespace

void InventoryTest::SetUp() {
  std::string whyNot;
  database_ = makeTestDatabase(whyNot);
  if (!database_) GTEST_SKIP() << whyNot;
  layOutInventory(*database_);
  database_->run(deviceRow("2", "core-1") + deviceRow("3", "Größe 框", "65535", "0") +
                 deviceRow("4294967295", "last"));
  database_->run("INSERT INTO device_location (dev_id, seq, part) VALUES (2, 1, 'B'), (2, 0, 'A')");
  configure(database_->connection());
}

void layOutInventory(TestDatabase& database) {
  database.run(contentOf(INVENTORY_LAYOUT));
  database.run(
      "INSERT INTO subnet VALUES ('102', '102', 101, '', 'Physical Root', 0, 0, '', '', 0, 0)");
}

std::string deviceRow(const std::string& id, const std::string& name, const std::string& mainType,
                      const std::string& subType) {
  return "INSERT INTO device VALUES (" + id + ", 'NE=" + id + "', '" + id + "', 'ne', '102', 1, " +
         mainType + ", " + subType + ", '10.0.0.1', '" + name + "', 'V1 " + id +
         "', 1, '', '', '', 0, 0);";
}

std::vector<std::string> textsOf(const std::list<stDevProperty>& devices) {
  std::vector<std::string> texts;
  for (const stDevProperty& device : devices) {
    texts.push_back(std::to_string(device.devId) + " " + std::to_string(device.devType) + "/" +
                    std::to_string(device.subType) + " " + device.ipAddress + " " + device.devName);
  }
  return texts;
}

std::vector<std::string> textsOf(const std::list<NodeStruct>& nodes) {
  std::vector<std::string> texts;
  for (const NodeStruct& node : nodes) {
    texts.push_back(std::to_string(node.devId) + " " + node.nodeId + " " + node.label);
  }
  return texts;
}

}  // namespace dao::test
