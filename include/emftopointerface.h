// Queries over the platform's topology: devices, nodes, submaps and links.
//
//   std::list<Device> devices;
//   EMFTopoI::getAllDevices(devices);
//   for (const Device& device : devices) std::cout << device.id << ' ' << device.name << '\n';
//
// Every operation is class-level, blocks in REST or database calls, and returns 0 for success or
// an error number. Output lists are appended to, never cleared.
//
// Thread-safety: thread-safe; no state.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "emfexport.h"
#include "emftoporecords.h"

class EMF_API EMFTopoI {
 public:
  // Appends every device of the network, in the service's order, from one paged REST read.
  // Objects inside a device (a comma in their native id) and ids below 2 are left out. Always 0:
  // a failed read appends nothing. Throws std::invalid_argument when a native id holds no number,
  // std::out_of_range when the number is too large, Json::LogicError when a type id is no number;
  // devices before the bad one stay appended.
  static std::int64_t getAllDevices(std::list<Device>& out);

  // One device from the database; `id` is cut to 32 bits. 0; 0x411800BA when the read failed;
  // 0x411800CC unless exactly one device answers. `out` changes on success only; texts are as
  // stored.
  static std::int64_t getDevice(long id, Device& out);

  // The version name of a device from the database. 0, or 0x411800CC when it could not be had.
  static std::int64_t getVersionOfDev(int id, std::string& out);

  // The location of a device from the database: every part, outermost first, each followed by
  // two blanks. Replaces `out`; `id` is cut to 32 bits. 0, or 0x411800CC with `out` untouched.
  static std::int64_t getLocationOfDev(long id, std::string& out);

  // The device id of a topology node from the database. 0, or -1 with `out` untouched when there
  // is no such node or the read failed.
  static std::int64_t getDeviceIDbyNodeID(const std::string& nodeId, long& out);

  // Every node directly below the physical root, from the topology view. `subMapId` is not looked
  // at. Always 0: a failed read appends nothing or only its first pages. Throws std::out_of_range
  // when an object's "exInfo" ends with "ProcID" or "NodeType", Json::LogicError when a number is
  // none; nodes before the bad one stay appended.
  static std::int64_t getAllNodes(const std::string& subMapId, std::list<Node>& out);

  // The node whose id is `key.nodeId` ("1": the management system), from the topology view. Always
  // 0; `out` stays as it was when there is none. Throws as above.
  static std::int64_t getNode(const SimNode& key, Node& out);

  // Appends the physical root, from the topology service. 0, also when there is none; -1 when the
  // read failed.
  static std::int64_t getAllRootSubMaps(std::list<SubMap>& out);

  // Appends the submaps below a submap, given by its key ("S" and the object id; "/" asks the
  // service for the root's). 0; 0x411800D4 when a page could not be read, with the records of
  // earlier pages appended; -1 when a page is no list. Throws std::out_of_range for an empty key.
  static std::int64_t getAllSubMaps(const std::string& subMapId, std::list<SubMap>& out);

  // The submap of that key. 0; 0x411800D4 when the read failed; -1 when the answer holds no list.
  // Throws std::out_of_range for an empty key.
  static std::int64_t getSubMap(const std::string& subMapId, SubMap& out);

  // Replaces `out` by the subnet names above a device, root first, joined by "/"; empty when the
  // device is unknown, before the first refresh, and with "IsReportSubnet" off. Does not block in
  // the network.
  static void getSubmapName(std::string& out, const unsigned long& deviceId);

  // One link, given as kind, ":" and number (105 layer 2, 0 virtual, otherwise IP), from the
  // southbound interface, with the status of both ends. 0; 0x411800D4 when there is none; the
  // southbound interface's own code when it failed; 0x41180035 when it failed otherwise.
  static std::int64_t getPhyLink(const std::string& linkId, PhysicalLink& out);

  // Appends every link of every kind, with the status of both ends. 0, even when a part of the
  // links could not be read (logged); when no ids could be had, the southbound interface's own
  // code or 0x41180035, and nothing is appended.
  static std::int64_t getAllPhyLinks(std::list<PhysicalLink>& out);
};
