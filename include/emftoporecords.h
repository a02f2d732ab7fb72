// The records that EMFTopoI and DeviceInfo hand out: plain values, every field public, the copy
// field by field. Names, order and widths of the fields are part of the binary interface.
//
// Texts are bytes in the agent's character set where marked 'converted', else as the source gave
// them. Absent texts are empty, absent numbers 0.
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

  std::int64_t id;        // the number in the "NE=" form of its id
  std::int32_t mainType;  // REST: the high 16 bits of "typeId"; database: the device type
  std::int32_t subType;   // REST: the low 16 bits of "typeId"; database: the sub type
  std::string ipAddress;  // as the source gave it
  std::string name;       // converted when it comes over REST, as stored when from the database
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

  std::string parentSubMapId;  // "S" and the "parentId": the key of the submap that holds it
  std::string nodeId;          // behind the first "=" of "nativeId", not converted; without one
                               // the whole "nativeId", converted
  std::int64_t deviceId;       // the number in nodeId, cut to 32 bits; 0 without "="
  std::string iconName;        // "iconFile", converted
  std::string nodeType;        // from "exInfo", behind "NodeType", converted
  std::string label;           // converted
  std::string ipAddr;          // converted
  std::string remark;          // converted
  std::int32_t procId;         // from "exInfo", behind "ProcID"; 0 if absent
  std::int32_t fixedCode;      // 2011 on a filled record
  std::int32_t zeroCode;       // always 0
  std::int32_t spareCode;      // never written
  std::int32_t nodeKind;       // 255 subnet or container, 254 main network element, otherwise 0
  std::int32_t posX;           // map units
  std::int32_t posY;
  std::int32_t topoId;
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

  std::string parentSubMapId;  // "ORMAP_PHY_SUBMAP" below the root, otherwise "S" and "parentId"
  std::string subMapId;        // "ORMAP_PHY_SUBMAP" for the root, otherwise "S" and "objId"
  std::int32_t spareNumber;    // never written
  std::string label;           // converted
  std::string iconName;        // "iconFile", whole, converted
  std::int32_t mapType;        // "typeId", 200 as 1; for the root "topoId"
  std::int32_t zeroField1;     // always 0
  std::int32_t topoClassId;
  std::int32_t spareField;  // never written
  std::int32_t zeroField2;  // always 0
  std::int32_t procId;      // from "exInfo", behind "ProcID "; 0 if absent
  std::int32_t posX;        // map units
  std::int32_t posY;
  std::string spareText1;  // never written
  std::string spareText2;  // never written
};

// One link between two ports. No virtual operation; texts as the southbound interface gives them.
class EMF_API PhysicalLink {
 public:
  PhysicalLink();
  PhysicalLink(const PhysicalLink&) = default;
  PhysicalLink(PhysicalLink&&) = default;
  PhysicalLink& operator=(const PhysicalLink&) = default;
  PhysicalLink& operator=(PhysicalLink&&) = default;
  ~PhysicalLink();

  std::string linkId;  // behind the first "=" of the link's resource id
  std::string linkName;
  std::string srcDeviceId;  // decimal, "-1" when the port names no element
  std::string srcPortName;
  std::string dstDeviceId;
  std::string dstPortName;
  std::string spareText;       // never written
  std::int32_t linkAttribute;  // as the southbound interface gives it
  std::int32_t linkStatus;     // the larger of the two port statuses
  std::int32_t srcZero;        // always 0
  std::int32_t srcPortType;
  std::int32_t srcPortStatus;  // -1, 0, 1, 2, 8 or 9
  std::int32_t dstZero;        // always 0
  std::int32_t dstPortType;
  std::int32_t dstPortStatus;  // -1, 0, 1, 2, 8 or 9
  std::int32_t spareInt;       // never written
};

// A display link; filled and read by the agent alone.
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

// A device update; filled and read by the agent alone.
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

// The short key of a node.
class EMF_API SimNode {
 public:
  SimNode();
  SimNode(const SimNode&) = default;
  SimNode(SimNode&&) = default;
  SimNode& operator=(const SimNode&) = default;
  SimNode& operator=(SimNode&&) = default;
  virtual ~SimNode();

  std::string parentSubMapId;
  std::string nodeId;
};
