#include "records.h"

namespace soak {

namespace {

// "2025-03-01T10:00:00Z", as SQLite writes it.
std::string textOfTime(const std::tm& time) {
  char text[64] = {};
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &time);
  return text;
}

}  // namespace

std::string rowOf(const Device& device) {
  return joined(device.id, device.mainType, device.subType, device.ipAddress, device.name);
}

std::string rowOf(const Node& node) {
  return joined(node.parentSubMapId, node.nodeId, node.deviceId, node.iconName, node.nodeType,
                node.label, node.ipAddr, node.remark, node.procId, node.fixedCode, node.zeroCode,
                node.nodeKind, node.posX, node.posY, node.topoId);
}

std::string rowOf(const SubMap& subMap) {
  return joined(subMap.parentSubMapId, subMap.subMapId, subMap.label, subMap.iconName,
                subMap.mapType, subMap.zeroField1, subMap.topoClassId, subMap.zeroField2,
                subMap.procId, subMap.posX, subMap.posY);
}

std::string rowOf(const ResourceDn& resource) {
  return joined(resource.resDN, resource.label, resource.type.resMainTypeID,
                resource.type.resSubTypeID);
}

std::string rowOf(const Resource& resource) {
  std::string path;
  for (const std::int64_t id : resource.resIDs) {
    path += (path.empty() ? "" : "/") + std::to_string(id);
  }
  return joined(path, resource.iid, resource.name, resource.type.resMainTypeID,
                resource.type.resSubTypeID);
}

std::string rowOf(const LocationInfo_& place) {
  return joined(place.country, place.province, place.city, place.address);
}

std::string rowOf(const MaintenanceInfo& keeper) {
  return joined(keeper.iID, keeper.name, keeper.dept, keeper.phoneNo, keeper.email);
}

std::string rowOf(const ResourceAttribute& attribute) {
  return joined(attribute.id, attribute.value);
}

std::string rowOf(const NbiResMainType& type) { return joined(type.id, type.name); }

std::string rowOf(const AlarmCfg& definition) {
  return joined(definition.alarmGroupId, definition.alarmId, definition.eventType,
                definition.severity, definition.oldSeverity, definition.alarmName,
                definition.description);
}

std::string rowOf(const AlarmReason& reason) {
  return joined(reason.alarmGroupId, reason.alarmId, reason.reasonId, reason.causes,
                reason.repairAction);
}

std::string rowOf(const FaultRecord& alarm) {
  return joined(alarm.devSerialNo, alarm.nodeType, alarm.devType, alarm.eventType, alarm.severity,
                alarm.functionType, alarm.faultId, alarm.reasonId, textOfTime(alarm.faultTime),
                alarm.fdn, alarm.para, alarm.faultFlag);
}

std::string rowOf(const PhysicalLink& link) {
  return joined(link.linkId, link.linkName, link.srcDeviceId, link.srcPortName, link.dstDeviceId,
                link.dstPortName, link.linkAttribute, link.srcZero, link.srcPortType, link.dstZero,
                link.dstPortType);
}

}  // namespace soak
