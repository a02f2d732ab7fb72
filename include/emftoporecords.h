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
