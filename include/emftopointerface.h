// Queries over the platform's topology: devices, nodes, submaps and links.
//
//   std::list<Device> devices;
//   EMFTopoI::getAllDevices(devices);
//   for (const Device& device : devices) std::cout << device.id << ' ' << device.name << '\n';
//
// Every operation is class-level and returns 0 for success or an error number. Output lists are
// appended to, never cleared. All but getSubmapName block: an exchange over REST for at most
// rest.totalTimeoutMs, a read of the database or over the southbound interface for at most
// database.statementTimeoutMs. A member of an answer that is of another JSON type than its field
// needs raises Json::LogicError; records before it stay appended, fields before it stay filled.
//
// Thread-safety: thread-safe on distinct outputs; no state.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "emfexport.h"
#include "emftoporecords.h"

class EMF_API EMFTopoI {
 public:
  // Appends every device of the network, in the service's order, from one paged REST read that is
  // held whole meanwhile. Objects inside a device (a comma in their native id) and ids below 2 are
  // left out. Always 0: a failed read appends nothing. Throws std::invalid_argument when a native
  // id holds no number, std::out_of_range when the number is too large; devices before the bad one
  // stay appended.
  static std::int64_t getAllDevices(std::list<Device>& out);

  // One device, from one read of the database; `id` is cut to 32 bits. 0; 0x411800BA when the read
  // failed (logged); 0x411800CC unless exactly one device answers. `out` changes on success only;
  // texts are as stored.
  static std::int64_t getDevice(long id, Device& out);

  // Replaces `out` by the version name of a device, as stored, from one read of the database. 0, or
  // 0x411800CC, and `out` does not count, when there is no such device or the read failed.
  static std::int64_t getVersionOfDev(int id, std::string& out);

  // Replaces `out` by the location of a device, from one read of the database: every part as
  // stored, outermost first, each followed by two blanks; empty when none is known. `id` is cut to
  // 32 bits. 0, or 0x411800CC with `out` untouched when there is no such device or the read failed.
  static std::int64_t getLocationOfDev(long id, std::string& out);

  // Replaces `out` by the device id of a topology node, from one read of the database. 0, or -1
  // with `out` untouched when there is no such node or the read failed.
  static std::int64_t getDeviceIDbyNodeID(const std::string& nodeId, long& out);

  // Appends every node directly below the physical root, from the topology view, of which all
  // elements and containers are read, page by page. `subMapId` is not looked at. Always 0: a failed
  // read (logged) appends nothing or only its first pages. Throws std::out_of_range when the
  // "exInfo" of an object ends with "ProcID" or "NodeType"; nodes before the bad one stay appended.
  static std::int64_t getAllNodes(const std::string& subMapId, std::list<Node>& out);

  // Fills `out` with the node whose id is `key.nodeId` ("1": the management system), from the
  // topology view. Always 0: `out` stays as it was when there is none or the read failed (logged).
  // Fields without a source keep what they held: spareCode, deviceId of an id without "=", nodeType
  // unless "exInfo" has both its words. Throws std::out_of_range as above; iconName and the fields
  // before it, and procId behind a number, are filled then.
  static std::int64_t getNode(const SimNode& key, Node& out);

  // Appends the physical root, from the topology service, page by page up to the one that holds it.
  // 0, also when there is none (logged) or a page is no list; -1 with nothing appended when a page
  // could not be read (logged).
  static std::int64_t getAllRootSubMaps(std::list<SubMap>& out);

  // Appends the submaps below a submap, one request for each 200. `subMapId` is its key: "S" and
  // the object id; "/" asks the service for the root's id first, and one that could not be had
  // (logged) counts as empty. 0; 0x411800D4 when a page could not be read (logged), -1 when a page
  // is no list, both with the records of earlier pages appended. Throws std::out_of_range for an
  // empty key.
  static std::int64_t getAllSubMaps(const std::string& subMapId, std::list<SubMap>& out);

  // Fills `out` with the submap of that key, as above, from one request. 0; 0x411800D4 when the
  // read failed (logged), -1 when the answer holds no list, both with `out` untouched. An empty
  // list reads as a submap without members: 0, and "S" for both keys. The spare fields keep what
  // they held, and so does procId where "exInfo" has none. Throws std::out_of_range for an empty
  // key.
  static std::int64_t getSubMap(const std::string& subMapId, SubMap& out);

  // Replaces `out` by the subnet names above a device, root first, joined by "/"; empty when the
  // device is unknown, before the first refresh, and with "IsReportSubnet" off. One tree search: it
  // waits at most for a refresh to rebuild the names from what has been read.
  static void getSubmapName(std::string& out, const unsigned long& deviceId);

  // Fills `out` with one link, with the status of both ends, from three reads over the southbound
  // interface. `linkId` is kind, ":" and number; kind 105 is layer 2, 0 or no number virtual, any
  // other, or none and no ":", IP. 0; 0x411800D4 when there is no such link; the southbound
  // interface's own code, or 0x41180035 without one, when it failed (logged). `out` stays as it was
  // when no link came.
  static std::int64_t getPhyLink(const std::string& linkId, PhysicalLink& out);

  // Appends every link of every kind, with the status of both ends: one read for all ids, one for
  // each 2000 links, and two for each link, one after the other. 0, even when a part of the links
  // could not be read (logged); when no ids could be had (logged), the southbound interface's own
  // code or 0x41180035, and nothing is appended.
  static std::int64_t getAllPhyLinks(std::list<PhysicalLink>& out);
};
