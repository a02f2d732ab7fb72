// The records that EMFTopoI and DeviceInfo hand out: plain values, every field public, the copy
// field by field. Names, order and widths of the fields are part of the binary interface.
//
//   Device device;  // every text empty, every number 0
//   if (EMFTopoI::getDevice(12, device) == 0) std::cout << device.name << '\n';
//
// Texts are bytes in the agent's character set where marked 'converted', else as the source gave
// them. Names in quotes are the members of the REST answer that a field comes from. Absent texts
// are empty, absent numbers 0. Nothing fails.
//
// Thread-safety: thread-compatible.
#pragma once

#include <cstdint>
#include <string>

#include "emfexport.h"

// One managed device.
class EMF_API Device {
 public:
  Device();
  Device(const Device&) = default;
  Device(Device&&) = default;
  Device& operator=(const Device&) = default;
  Device& operator=(Device&&) = default;
  virtual ~Device();

  std::int64_t id;        // REST: the number behind the "=" of "nativeId"; database: device number
  std::int32_t mainType;  // REST: the high 16 bits of "typeId"; database: the device type
  std::int32_t subType;   // REST: the low 16 bits of "typeId"; database: the sub type
  std::string ipAddress;  // REST: "ipAddress", not converted; database: as stored
  std::string name;       // REST: "name", converted; database: as stored
};

// One object on the topology view.
class EMF_API Node {
 public:
  Node();
  Node(const Node&) = default;
  Node(Node&&) = default;
  Node& operator=(const Node&) = default;
  Node& operator=(Node&&) = default;
  virtual ~Node();

  std::string parentSubMapId;  // "S" and the "parentId", converted: the key of its submap
  std::string nodeId;          // behind the first "=" of "nativeId", not converted; without one
                               // the whole "nativeId", converted
  std::int64_t deviceId;       // the number in nodeId, cut to 32 bits; 0 without "="
  std::string iconName;        // "iconFile", converted: of getNode whole, of getAllNodes the bare
                               // file name where it has path and extension
  std::string nodeType;        // from "exInfo", behind "NodeType", converted; empty if "ProcID" is
                               // absent
  std::string label;           // "label", converted
  std::string ipAddr;          // "ipAddr", converted
  std::string remark;          // "remark", converted
  std::int32_t procId;         // from "exInfo", behind "ProcID"; 0 if absent
  std::int32_t fixedCode;      // 2011 on a filled record
  std::int32_t zeroCode;       // always 0
  std::int32_t spareCode;      // never written
  std::int32_t nodeKind;       // by "nodeClass": 255 subnet or container, 254 main network element,
                               // otherwise 0
  std::int32_t posX;           // "posX", in units of the topology view
  std::int32_t posY;           // "posY"
  std::int32_t topoId;         // "topoId"
};

// One submap, a subnet view.
class EMF_API SubMap {
 public:
  SubMap();
  SubMap(const SubMap&) = default;
  SubMap(SubMap&&) = default;
  SubMap& operator=(const SubMap&) = default;
  SubMap& operator=(SubMap&&) = default;
  virtual ~SubMap();

  std::string parentSubMapId;  // "ORMAP_PHY_SUBMAP" for the root and below it, otherwise "S" and
                               // the "parentId", not converted
  std::string subMapId;        // "ORMAP_PHY_SUBMAP" for the root, otherwise "S" and the "objId",
                               // converted
  std::int32_t spareNumber;    // never written
  std::string label;           // "label", converted
  std::string iconName;        // "iconFile", whole, converted
  std::int32_t mapType;        // "typeId", 200 as 1; for the root "topoId"
  std::int32_t zeroField1;     // always 0
  std::int32_t topoClassId;    // "topoClassId"
  std::int32_t spareField;     // never written
  std::int32_t zeroField2;     // always 0
  std::int32_t procId;         // from "exInfo", behind "ProcID "; 0 if absent
  std::int32_t posX;           // "posX", in units of the topology view
  std::int32_t posY;           // "posY"
  std::string spareText1;      // never written
  std::string spareText2;      // never written
};

// One link between two ports. No virtual operation; texts as the southbound interface gives them.
// The status of a port: 1, 9 or 8 where its two states are 1 and 1, 1 and 0, 0 and 0; 2 for other
// states; -1 for a negative one and where the link names no port; 0 when it could not be had.
class EMF_API PhysicalLink {
 public:
  PhysicalLink();
  PhysicalLink(const PhysicalLink&) = default;
  PhysicalLink(PhysicalLink&&) = default;
  PhysicalLink& operator=(const PhysicalLink&) = default;
  PhysicalLink& operator=(PhysicalLink&&) = default;
  ~PhysicalLink();

  std::string linkId;          // behind the first "=" of the link's resource id, such as "204:77"
  std::string linkName;        // the link's name
  std::string srcDeviceId;     // decimal, "-1" when the port names no element
  std::string srcPortName;     // the port's name
  std::string dstDeviceId;     // as srcDeviceId
  std::string dstPortName;     // the port's name
  std::string spareText;       // never written
  std::int32_t linkAttribute;  // the southbound interface's own number
  std::int32_t linkStatus;     // the larger of the two port statuses
  std::int32_t srcZero;        // always 0
  std::int32_t srcPortType;    // the platform's port type, 0 when the port names none
  std::int32_t srcPortStatus;  // -1, 0, 1, 2, 8 or 9
  std::int32_t dstZero;        // always 0
  std::int32_t dstPortType;    // as srcPortType
  std::int32_t dstPortStatus;  // -1, 0, 1, 2, 8 or 9
  std::int32_t spareInt;       // never written
};

// A display link; filled and read by the agent alone: the fields have places and no meaning here.
class EMF_API DispLink {
 public:
  DispLink();
  DispLink(const DispLink&) = default;
  DispLink(DispLink&&) = default;
  DispLink& operator=(const DispLink&) = default;
  DispLink& operator=(DispLink&&) = default;
  virtual ~DispLink();

  std::string text1;
  std::string text2;
  std::string text3;
  std::int32_t number1;
  std::string text4;
  std::int32_t number2;
  std::string text5;
  std::int32_t number3;
};

// A device update; filled and read by the agent alone, as a display link.
class EMF_API UpdateDevice {
 public:
  UpdateDevice();
  UpdateDevice(const UpdateDevice&) = default;
  UpdateDevice(UpdateDevice&&) = default;
  UpdateDevice& operator=(const UpdateDevice&) = default;
  UpdateDevice& operator=(UpdateDevice&&) = default;
  virtual ~UpdateDevice();

  std::int64_t id;
  std::string text1;
  std::string text2;
  std::string text3;
  std::string text4;
};

// The short key of a node, filled by the caller.
class EMF_API SimNode {
 public:
  SimNode();
  SimNode(const SimNode&) = default;
  SimNode(SimNode&&) = default;
  SimNode& operator=(const SimNode&) = default;
  SimNode& operator=(SimNode&&) = default;
  virtual ~SimNode();

  std::string parentSubMapId;  // not looked at
  std::string nodeId;          // as Node::nodeId; "1" is the management system
};
