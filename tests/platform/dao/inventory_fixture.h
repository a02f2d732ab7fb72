// An inventory in a real database, for tests of the engine's reads.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "engine_fixture.h"
#include "test_database.h"

namespace dao::test {

// An engine test with an inventory in a database of its own. Devices: 2 "core-1" with type 2/5 in
// "A" and "B", 3 "Größe 框" without location, and 4294967295, the last id there is.
class InventoryTest : public EngineTest {
 protected:
  void SetUp() override;
  TestDatabase& database() { return *database_; }

 private:
  std::unique_ptr<TestDatabase> database_;
};

// Makes the tables of the inventory and its root subnet.
void layOutInventory(TestDatabase& database);
// The statement that adds a device; the numbers are given as SQL.
std::string deviceRow(const std::string& id, const std::string& name,
                      const std::string& mainType = "2", const std::string& subType = "5");

// Records as text, to compare and to print them whole.
std::vector<std::string> textsOf(const std::list<stDevProperty>& devices);
std::vector<std::string> textsOf(const std::list<NodeStruct>& nodes);

}  // namespace dao::test
