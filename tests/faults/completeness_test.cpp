// The matrix leaves nothing out: each exported operation stands in the tables of the outside things
// that it uses, or has a reason to stand in none.
#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <set>

#include "database_operations.h"
#include "rest_operations.h"

namespace emf::faults {
namespace {

enum class Outside {
  Rest,
  FaultServer,
  Database,  // the southbound set, too, which stands on it
  Disk,
  Service,  // starts and ends the plug-in: error texts from disk
  Nothing,
};

struct Use {
  const char* operation;
  Outside outside;
  const char* reason;  // where it is nothing
};

// What stands in no table of operations. The classes' other members are records, whose functions
// only compute.
constexpr Use kUses[] = {
    {"EMFAlarmI::getAllAlarms", Outside::FaultServer, ""},
    {"EMFAlarmI::getAllEvents", Outside::FaultServer, ""},
    {"EMFResMgrI::getAccessNETypeList", Outside::Disk, ""},
    {"EMFResMgrI::initAccessFdnConvertDll", Outside::Disk, ""},
    {"_make_ii_ormaiac_emf", Outside::Service, ""},
    {"DbRowReader::DbRowReader", Outside::Database, ""},
    {"DbRowReader::open", Outside::Database, ""},
    {"DbRowReader::nextRow", Outside::Database, ""},
    {"DbRowReader::fetchRowByIndex", Outside::Database, ""},
    {"DbRowReader::fetchRowByMap", Outside::Database, ""},
    {"DbRowReader::fetchRowByNames", Outside::Database, ""},
    {"DbRowReader::close", Outside::Nothing, "lets go of what was read"},
    {"DbRowReader::columnNames", Outside::Nothing, "tells what was read"},
    {"DbRowReader::lastStatus", Outside::Nothing, "tells what was read"},
    {"DeviceInfo::DeviceInfo", Outside::Nothing, "makes an empty cache"},
    {"DeviceInfo::Instance", Outside::Nothing, "makes an empty cache"},
    {"DeviceInfo::getInstance", Outside::Nothing, "makes an empty cache"},
    {"DeviceInfo::Destroy", Outside::Nothing, "frees the cache"},
    {"DeviceInfo::findById", Outside::Nothing, "looks into the cache"},
    {"DeviceInfo::findByName", Outside::Nothing, "looks into the cache"},
    {"DeviceInfo::m_pInstance", Outside::Nothing, "a pointer"},
    {"EMFMOMgrI::deleteRecord", Outside::Nothing, "does nothing"},
    {"EMFMOMgrI::insertRecord", Outside::Nothing, "does nothing"},
    {"EMFMOMgrI::setOwner", Outside::Nothing, "does nothing"},
    {"EMFMOMgrI::setUserLabel", Outside::Nothing, "does nothing"},
    {"EMFResMgrI::AdpDevID2FDN", Outside::Nothing, "formats a number"},
    {"EMFResMgrI::getResType", Outside::Nothing, "does nothing"},
    {"TransmitAssistant::Instance", Outside::Nothing, "makes an object without work"},
    {"TransmitAssistant::getInstance", Outside::Nothing, "makes an object without work"},
    {"TransmitAssistant::TransmitAssistant", Outside::Nothing, "makes an object without work"},
    {"TransmitAssistant::Destroy", Outside::Nothing, "frees that object"},
    {"TransmitAssistant::m_pInstance", Outside::Nothing, "a pointer"},
    {"getDbServerType", Outside::Nothing, "reads the installed configuration alone"},
    {"isDbServerType7", Outside::Nothing, "reads the installed configuration alone"},
    {"printDbStatus", Outside::Nothing, "prints a status that the caller has"},
    {"ii_ormaiac_emf_interface_version", Outside::Nothing, "a number"},
};

// The operation that a line of the list names; empty for what is none: records, destructors and
// what the compiler makes.
std::string operationOf(const std::string& line) {
  static const std::set<std::string> records = {
      "AlarmCfg", "AlarmReason",  "Device",  "DispLink", "FaultRecord",
      "Node",     "PhysicalLink", "SimNode", "SubMap",   "UpdateDevice"};
  if (line.find(" for ") != std::string::npos || line.find('~') != std::string::npos) return "";
  const std::string name = line.substr(0, line.find_first_of("([ "));
  return records.count(name.substr(0, name.find("::"))) == 1 ? "" : name;
}

std::set<std::string> exportedOperations() {
  std::ifstream list(EXPORTED_SYMBOLS);
  std::set<std::string> names;
  for (std::string line; std::getline(list, line);) {
    const std::string name = operationOf(line);
    if (!name.empty()) names.insert(name);
  }
  return names;
}

std::set<std::string> operationsOfTheTables() {
  std::set<std::string> names;
  // A table may have an operation in several forms: "EMFTopoI::getSubMap of the root".
  const auto add = [&names](const std::string& name) {
    names.insert(name.substr(0, name.find(' ')));
  };
  for (const RestOperation& operation : restOperations()) add(operation.name);
  for (const DatabaseOperation& operation : databaseOperations()) add(operation.name);
  names.erase("DbRowReader");  // its functions stand below
  for (const Use& use : kUses) {
    EXPECT_TRUE(names.insert(use.operation).second) << use.operation << " stands twice";
  }
  return names;
}

TEST(FaultMatrixCompleteness, EveryExportedOperationIsInATableOrHasAReason) {
  const std::set<std::string> exported = exportedOperations();
  EXPECT_GT(exported.size(), 60u);
  EXPECT_EQ(operationsOfTheTables(), exported);
}

TEST(FaultMatrixCompleteness, WhatUsesNothingOutsideSaysWhy) {
  for (const Use& use : kUses) {
    EXPECT_EQ(use.outside == Outside::Nothing, use.reason[0] != '\0') << use.operation;
  }
}

}  // namespace
}  // namespace emf::faults
