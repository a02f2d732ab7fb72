#include "database_operations.h"

#include "dbrowreader.h"
#include "emfresinterface.h"
#include "emftopointerface.h"
#include "inventory_fixture.h"
#include "orma/dao/exec_status.h"
#include "orma/refl/value.h"

namespace emf::faults {
namespace {

// Reads one row in each of the three ways. The result is that of the statement.
Outcome readRows() {
  Outcome outcome;
  DbRowReader reader(0, nullptr);
  reader.open("SELECT dev_id, name FROM device ORDER BY dev_id", {});
  DbRowMap row = {{"1", {"dev_id", "device", {}}}, {"2", {"name", "device", {}}}};
  if (reader.fetchRowByMap(row) == DbRowReader::kRowRead) {
    outcome.records.push_back(row["1"].value.asText() + ' ' + row["2"].value.asText());
  }
  std::vector<refl::CValue> values;
  if (reader.fetchRowByNames(values, {"name"}) == DbRowReader::kRowRead) {
    outcome.records.push_back(values.back().asText());
  }
  while (reader.fetchRowByIndex(values, 2) == DbRowReader::kRowRead) {
    outcome.records.push_back(values.back().asText());
  }
  outcome.result = reader.lastStatus().IsOk() ? "read" : "failed";
  return outcome;
}

Outcome deviceOfNode() {
  return written(std::string("7"), [](std::string& out) {
    long id = 7;
    const std::int64_t result = EMFTopoI::getDeviceIDbyNodeID("2", id);
    out = std::to_string(id);
    return result;
  });
}

void addDeviceReads(std::vector<DatabaseOperation>& all) {
  all.push_back(
      {"EMFTopoI::getDevice",
       [] { return written(Device(), [](Device& out) { return EMFTopoI::getDevice(2, out); }); },
       {"0", {"2|2|5|10.0.0.1|core-2"}},
       {"1092092090", {text(Device())}},
       "[EMFTopoI::getDevice] Get device property failed."});
  all.push_back({"EMFTopoI::getVersionOfDev",
                 [] {
                   return written(std::string("earlier"), [](std::string& out) {
                     return EMFTopoI::getVersionOfDev(2, out);
                   });
                 },
                 {"0", {"V1 2"}},
                 {"1092092108", {"earlier"}},
                 "[CEmfCommDBEngine::GetDevVersionName] "});
  all.push_back({"EMFTopoI::getLocationOfDev",
                 [] {
                   return written(std::string("earlier"), [](std::string& out) {
                     return EMFTopoI::getLocationOfDev(2, out);
                   });
                 },
                 {"0", {"A  B  "}},
                 {"1092092108", {"earlier"}},
                 "[CEmfCommDBEngine::GetDevLocationByDevID] "});
  all.push_back({"EMFTopoI::getDeviceIDbyNodeID",
                 deviceOfNode,
                 {"0", {"2"}},
                 {"-1", {"7"}},
                 "[CEmfCommDBEngine::GetBaseNode] "});
  const std::string earlier = text(ResourceAttribute());
  all.push_back({"EMFResMgrI::getResourceAttributes",
                 [] {
                   return appended(std::list<ResourceAttribute>(1),
                                   [](std::list<ResourceAttribute>& out) {
                                     return EMFResMgrI::getResourceAttributes(2, out);
                                   });
                 },
                 {"0", {earlier, "1|RX-7", "4|H2"}},
                 {"-1", {earlier}},
                 "[CEmfCommDBEngine::GetResByIID] "});
}

void addLinks(std::vector<DatabaseOperation>& all) {
  const std::string earlier = text(PhysicalLink());
  const std::string link = "204:77|link 77|6|9|2|GE-1|1|3|GE-2|9";
  const std::string other = "0:5|link 5|6|9|3|GE-2|9|2|GE-1|1";
  all.push_back({"EMFTopoI::getPhyLink",
                 [] {
                   return written(PhysicalLink(), [](PhysicalLink& out) {
                     return EMFTopoI::getPhyLink("204:77", out);
                   });
                 },
                 {"0", {link}},
                 {"1092092090", {earlier}},
                 "[EMFTopoI::getPhyLink] GetLinkInfo. Error: 1092092090 "});
  all.push_back({"EMFTopoI::getAllPhyLinks",
                 [] { return appended(std::list<PhysicalLink>(1), EMFTopoI::getAllPhyLinks); },
                 {"0", {earlier, other, link}},
                 {"1092092090", {earlier}},
                 "[EMFTopoI::getAllPhyLinks] GetLinkID. Error: 1092092090 "});
}

}  // namespace

const std::vector<DatabaseOperation>& databaseOperations() {
  static const std::vector<DatabaseOperation> operations = [] {
    std::vector<DatabaseOperation> all;
    addDeviceReads(all);
    addLinks(all);
    all.push_back(
        {"DbRowReader", readRows, {"read", {"2 core-2", "core-3", "core-4"}}, {"failed", {}}, ""});
    return all;
  }();
  return operations;
}

void fillInventory(dao::test::TestDatabase& database) {
  using dao::test::deviceRow;
  dao::test::layOutInventory(database);
  database.run(deviceRow("2", "core-2") + deviceRow("3", "core-3") + deviceRow("4", "core-4"));
  database.run(
      "INSERT INTO device_location (dev_id, seq, part) VALUES (2, 1, 'B'), (2, 0, 'A');"
      "INSERT INTO resource_attribute VALUES (2, 2, 1, 'RX-7'), (2, 2, 4, 'H2');"
      "INSERT INTO port VALUES (1, 2, 0, 1, 0, 1, 'GE-1', 65538, 1, 1),"
      " (2, 3, 0, 2, 0, 5, 'GE-2', 65538, 1, 0);"
      "INSERT INTO link VALUES (77, 'link 77', 204, 6, 1, 2), (5, 'link 5', 0, 6, 2, 1)");
}

}  // namespace emf::faults
