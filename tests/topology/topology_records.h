// Whole records of the topology, compared and printed.
#pragma once

#include <tuple>

#include "emftoporecords.h"

inline auto fieldsOf(const Node& node) {
  return std::tie(node.parentSubMapId, node.nodeId, node.deviceId, node.iconName, node.nodeType,
                  node.label, node.ipAddr, node.remark, node.procId, node.fixedCode, node.zeroCode,
                  node.spareCode, node.nodeKind, node.posX, node.posY, node.topoId);
}

inline auto fieldsOf(const SubMap& map) {
  return std::tie(map.parentSubMapId, map.subMapId, map.spareNumber, map.label, map.iconName,
                  map.mapType, map.zeroField1, map.topoClassId, map.spareField, map.zeroField2,
                  map.procId, map.posX, map.posY, map.spareText1, map.spareText2);
}

inline auto fieldsOf(const PhysicalLink& link) {
  return std::tie(link.linkId, link.linkName, link.srcDeviceId, link.srcPortName, link.dstDeviceId,
                  link.dstPortName, link.spareText, link.linkAttribute, link.linkStatus,
                  link.srcZero, link.srcPortType, link.srcPortStatus, link.dstZero,
                  link.dstPortType, link.dstPortStatus, link.spareInt);
}

inline auto fieldsOf(const DispLink& link) {
  return std::tie(link.text1, link.text2, link.text3, link.number1, link.text4, link.number2,
                  link.text5, link.number3);
}

inline auto fieldsOf(const UpdateDevice& update) {
  return std::tie(update.id, update.text1, update.text2, update.text3, update.text4);
}

inline auto fieldsOf(const SimNode& key) { return std::tie(key.parentSubMapId, key.nodeId); }

#include "record_fields.h"
