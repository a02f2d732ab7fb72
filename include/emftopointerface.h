// Queries over the platform's topology: devices.
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
};
