#include "inventory_writer.h"

#include "inventory_schema.h"
#include "resource_ids.h"

namespace ormasim {
namespace {

// Topology ids of subnets and devices share one number space.
constexpr std::int64_t kFirstSubnetNumber = 1000;
constexpr std::int64_t kDeviceTopoOffset = 100'000'000;

std::string insertInto(const std::string& table, const std::string& columns) {
  std::string sql = "INSERT INTO " + table + " (" + columns + ") VALUES (?";
  for (const char character : columns) sql += character == ',' ? ",?" : "";
  return sql + ")";
}

}  // namespace

SubnetRow physicalRoot() {
  SubnetRow root;
  root.objId = kRootObjectId;
  root.parentId = kRootObjectId;
  root.topoId = kRootTopoId;
  root.nativeId = "/";
  root.label = "Physical Root";
  root.exInfo = "ProcID 1";
  return root;
}

SubnetRow numberedSubnet(std::int64_t n) {
  SubnetRow subnet;
  subnet.topoId = kFirstSubnetNumber + n;
  subnet.objId = std::to_string(subnet.topoId);
  subnet.nativeId = "SUBNET=" + subnet.objId;
  return subnet;
}

InventoryWriter::InventoryWriter(Database& database)
    : database_(database),
      subnet_(database, insertInto("subnet",
                                   "obj_id,parent_id,topo_id,native_id,label,type_id,"
                                   "topo_class_id,icon_file,ex_info,pos_x,pos_y")),
      device_(database, insertInto("device",
                                   "dev_id,native_id,node_id,node_class,subnet_id,topo_id,"
                                   "main_type,sub_type,ip_address,name,version_name,origin,"
                                   "icon_file,ex_info,remark,pos_x,pos_y")),
      location_(database, insertInto("device_location", "dev_id,seq,part")),
      frame_(database, insertInto("frame", "dev_id,frame_no,label")),
      port_(database,
            insertInto("port", "port_id,dev_id,frame,slot,card,port,name,type,state_a,state_b")),
      link_(database, insertInto("link", "link_id,name,kind,attribute,a_port,z_port")),
      mainType_(database, insertInto("main_type", "type_id,name")),
      resource_(
          database,
          insertInto("resource", "res_id,dev_id,seq,parent_id,native_id,main_type,sub_type,name")),
      attribute_(database, insertInto("resource_attribute", "res_id,short_id,number,value")),
      place_(database, insertInto("device_place", "dev_id,country,province,city,address")),
      keeper_(database, insertInto("keeper", "keeper_id,name,dept,phone_no,email")),
      deviceKeeper_(database, insertInto("device_keeper", "dev_id,seq,keeper_id")) {}

void InventoryWriter::clear() {
  for (const char* table :
       {"device_keeper", "keeper", "device_place", "resource_attribute", "resource", "main_type",
        "link", "port", "frame", "device_location", "device", "subnet"}) {
    database_.execute(std::string("DELETE FROM ") + table);
  }
}

void InventoryWriter::add(const SubnetRow& row) {
  subnet_.run(row.objId, row.parentId, row.topoId, row.nativeId, row.label, row.typeId,
              row.topoClassId, row.iconFile, row.exInfo, row.posX, row.posY);
}

void InventoryWriter::add(const DeviceRow& row) {
  const std::string nodeId = std::to_string(row.id);
  const std::string nativeId = "NE=" + nodeId;
  device_.run(row.id, nativeId, nodeId, row.nodeClass, row.subnetId, kDeviceTopoOffset + row.id,
              row.mainType, row.subType, row.ipAddress, row.name, row.versionName, row.origin,
              row.iconFile, row.exInfo, row.remark, row.posX, row.posY);
}

void InventoryWriter::addLocation(std::int64_t deviceId, std::int64_t sequence,
                                  const std::string& part) {
  location_.run(deviceId, sequence, part);
}

void InventoryWriter::add(const FrameRow& row) { frame_.run(row.deviceId, row.number, row.label); }

void InventoryWriter::add(const PortRow& row) {
  port_.run(row.id, row.deviceId, row.frame, row.slot, row.card, row.port, row.name, row.type,
            row.stateA, row.stateB);
}

void InventoryWriter::add(const LinkRow& row) {
  link_.run(row.id, row.name, static_cast<std::int64_t>(row.kind), row.attribute, row.portA,
            row.portZ);
}

void InventoryWriter::addMainType(std::int64_t id, const std::string& name) {
  mainType_.run(id, name);
}

void InventoryWriter::add(const ResourceRow& row) {
  resource_.run(row.id, row.deviceId, row.sequence, row.parentId, row.nativeId, row.mainType,
                row.subType, row.name);
}

void InventoryWriter::addAttribute(std::int64_t resourceId, std::int64_t number,
                                   const std::string& value) {
  attribute_.run(resourceId, shortIdOf(resourceId), number, value);
}

void InventoryWriter::add(const PlaceRow& row) {
  place_.run(row.deviceId, row.country, row.province, row.city, row.address);
}

void InventoryWriter::add(const KeeperRow& row) {
  keeper_.run(row.id, row.name, row.dept, row.phoneNo, row.email);
}

void InventoryWriter::addDeviceKeeper(std::int64_t deviceId, std::int64_t sequence,
                                      std::int64_t keeperId) {
  deviceKeeper_.run(deviceId, sequence, keeperId);
}

}  // namespace ormasim
