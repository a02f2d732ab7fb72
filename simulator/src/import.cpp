#include "import.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "alarms.h"
#include "error.h"
#include "files.h"
#include "graphml.h"
#include "inventory_schema.h"
#include "inventory_writer.h"
#include "port_maker.h"

namespace ormasim {
namespace {

constexpr std::int64_t kFirstDeviceId = 2;
constexpr std::int64_t kNetworkElementType = 1;
constexpr std::int64_t kPhysicalPortType = 0x10002;
constexpr std::uint64_t kSeed = 1;

class Importer {
 public:
  explicit Importer(Database& database) : database_(database), writer_(database), ports_(writer_) {}

  void clear() {
    clearAlarms(database_);
    writer_.clear();
  }

  void add(const std::vector<Network>& networks, std::uint64_t equipped) {
    writer_.add(physicalRoot());
    for (const Network& network : networks) add(network);
    equipInventory(database_, writer_, {equipped, kSeed});
    writeAlarmCatalogue(database_, 0);
    generateAlarms(database_,
                   usualAlarms(static_cast<std::uint64_t>(nextDeviceId_ - kFirstDeviceId)), kSeed);
  }

 private:
  void add(const Network& network) {
    const std::string networkId = addSubnet(kRootObjectId, network.stem, 2);
    const std::int64_t firstId = nextDeviceId_;
    std::map<std::string, std::string> countryIds;
    for (const GraphNode& node : network.nodes) {
      std::string subnetId = networkId;
      if (!node.country.empty()) {
        std::string& countryId = countryIds[node.country];
        if (countryId.empty()) countryId = addSubnet(networkId, node.country, 3);
        subnetId = countryId;
      }
      addDevice(network, node, subnetId);
    }
    for (const GraphEdge& edge : network.edges) {
      addLink(firstId + static_cast<std::int64_t>(edge.source),
              firstId + static_cast<std::int64_t>(edge.target));
    }
  }

  std::string addSubnet(const std::string& parentId, const std::string& label, int level) {
    SubnetRow row = numberedSubnet(subnets_++);
    row.parentId = parentId;
    row.label = label;
    row.topoClassId = level;
    row.exInfo = "Level " + std::to_string(level) + " ProcID " + std::to_string(level) + " import";
    writer_.add(row);
    return row.objId;
  }

  void addDevice(const Network& network, const GraphNode& node, const std::string& subnetId) {
    DeviceRow row;
    row.id = nextDeviceId_++;
    row.subnetId = subnetId;
    row.mainType = kNetworkElementType;
    row.name = node.label.empty() ? network.stem + "-" + node.id : node.label;
    row.iconFile = "/images/topo/router.png";
    row.exInfo = "NodeType=Router;ProcID=1";
    row.posX = node.posX;
    row.posY = node.posY;
    writer_.add(row);
    if (!node.country.empty()) writer_.addLocation(row.id, 0, node.country);
  }

  void addLink(std::int64_t a, std::int64_t z) {
    LinkRow row;
    row.id = ++lastLinkId_;
    row.name = "NE" + std::to_string(a) + " - NE" + std::to_string(z);
    row.portA = ports_.add(a, kPhysicalPortType, 1, 1);
    row.portZ = ports_.add(z, kPhysicalPortType, 1, 1);
    writer_.add(row);
  }

  Database& database_;
  InventoryWriter writer_;
  PortMaker ports_;
  std::int64_t subnets_ = 0;
  std::int64_t nextDeviceId_ = kFirstDeviceId;
  std::int64_t lastLinkId_ = 0;
};

// By the files' own names, whatever directories they lie in.
std::vector<std::string> inOrderOfNames(std::vector<std::string> files) {
  std::sort(files.begin(), files.end(), [](const std::string& left, const std::string& right) {
    const std::string leftName = std::filesystem::path(left).filename().string();
    const std::string rightName = std::filesystem::path(right).filename().string();
    return leftName != rightName ? leftName < rightName : left < right;
  });
  const auto twice = std::adjacent_find(files.begin(), files.end());
  if (twice != files.end()) throw SimError("file " + *twice + " is given twice; name it once");
  return files;
}

void replaceContents(const std::string& file, const std::vector<Network>& networks,
                     std::uint64_t equipped) {
  Database database(file, Database::Mode::ReadWrite);
  database.requireInventory();
  Transaction transaction(database, "BEGIN IMMEDIATE");
  Importer importer(database);
  importer.clear();
  importer.add(networks, equipped);
  transaction.commit();
}

void makeDatabase(const std::string& file, const std::vector<Network>& networks,
                  std::uint64_t equipped) {
  NewDatabaseFile made(file);
  Importer(made.database()).add(networks, equipped);
  made.publish();
}

}  // namespace

ImportSummary importFiles(const std::vector<std::string>& files, const std::string& database,
                          std::uint64_t equipped) {
  // Every file is read and checked before the database is touched.
  std::vector<Network> networks;
  for (const std::string& file : inOrderOfNames(files)) networks.push_back(readGraphml(file));

  ImportSummary summary;
  summary.replaced = fileExists(database);
  if (summary.replaced) {
    replaceContents(database, networks, equipped);
  } else {
    makeDatabase(database, networks, equipped);
  }
  summary.networks = networks.size();
  for (const Network& network : networks) {
    summary.elements += network.nodes.size();
    summary.links += network.edges.size();
  }
  return summary;
}

}  // namespace ormasim
