// Rows of the inventory and the prepared statements that store them.
//
//   InventoryWriter writer(database);
//   writer.add(physicalRoot());
//   writer.add(device);
//
// Thread-safety: thread-compatible. Failure: SimError. The caller holds the transaction.
#pragma once

#include <cstdint>
#include <string>

#include "sqlite.h"

namespace ormasim {

// Fields are the columns of docs/inventory.sql.
struct SubnetRow {
  std::string objId;
  std::string parentId;
  std::int64_t topoId = 0;
  std::string nativeId;
  std::string label;
  std::int64_t typeId = 200;
  std::int64_t topoClassId = 1;
  std::string iconFile = "/images/topo/subnet.png";
  std::string exInfo;
  std::int64_t posX = 0;
  std::int64_t posY = 0;
};

// native_id, node_id and topo_id follow from the id.
struct DeviceRow {
  std::int64_t id = 0;
  std::string nodeClass = "ne";
  std::string subnetId;
  std::int64_t mainType = 0;
  std::int64_t subType = 0;
  std::string ipAddress;
  std::string name;
  std::string versionName;
  std::int64_t origin = 1;
  std::string iconFile;
  std::string exInfo;
  std::string remark;
  std::int64_t posX = 0;
  std::int64_t posY = 0;
};

struct FrameRow {
  std::int64_t deviceId = 0;
  std::int64_t number = 0;
  std::string label;
};

struct PortRow {
  std::int64_t id = 0;
  std::int64_t deviceId = 0;
  std::int64_t frame = 0;
  std::int64_t slot = 0;
  std::int64_t card = 0;
  std::int64_t port = 0;
  std::string name;
  std::int64_t type = 0;
  std::int64_t stateA = 1;
  std::int64_t stateB = 1;
};

enum class LinkKind { Virtual = 0, Layer2 = 105, Ip = 204 };

struct LinkRow {
  std::int64_t id = 0;
  std::string name;
  LinkKind kind = LinkKind::Ip;
  std::int64_t attribute = 0;
  std::int64_t portA = 0;
  std::int64_t portZ = 0;
};

struct ResourceRow {
  std::int64_t id = 0;  // resourceIdOf(nativeId)
  std::int64_t deviceId = 0;
  std::int64_t sequence = 0;
  std::int64_t parentId = 0;
  std::string nativeId;
  std::int64_t mainType = 0;
  std::int64_t subType = 0;
  std::string name;
};

struct PlaceRow {
  std::int64_t deviceId = 0;
  std::string country;
  std::string province;
  std::string city;
  std::string address;
};

struct KeeperRow {
  std::int64_t id = 0;
  std::string name;
  std::string dept;
  std::string phoneNo;
  std::string email;
};

// The subnet above all others, which is its own parent.
SubnetRow physicalRoot();
// The nth subnet below it, from 0: ids are given so that they never meet the root's.
SubnetRow numberedSubnet(std::int64_t n);

class InventoryWriter {
 public:
  explicit InventoryWriter(Database& database);

  // Removes every row but the layout's version.
  void clear();
  void add(const SubnetRow& row);
  void add(const DeviceRow& row);
  void addLocation(std::int64_t deviceId, std::int64_t sequence, const std::string& part);
  void add(const FrameRow& row);
  void add(const PortRow& row);
  void add(const LinkRow& row);
  void addMainType(std::int64_t id, const std::string& name);
  void add(const ResourceRow& row);
  // `resourceId` is that of a device or of a resource below one.
  void addAttribute(std::int64_t resourceId, std::int64_t number, const std::string& value);
  void add(const PlaceRow& row);
  void add(const KeeperRow& row);
  void addDeviceKeeper(std::int64_t deviceId, std::int64_t sequence, std::int64_t keeperId);

 private:
  Database& database_;
  Statement subnet_;
  Statement device_;
  Statement location_;
  Statement frame_;
  Statement port_;
  Statement link_;
  Statement mainType_;
  Statement resource_;
  Statement attribute_;
  Statement place_;
  Statement keeper_;
  Statement deviceKeeper_;
};

}  // namespace ormasim
