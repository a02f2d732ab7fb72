// The device cache: every device of the network in memory, read anew when a lookup misses.
//
//   Device device;
//   if (DeviceInfo::Instance()->getDeviceByID(12, device) == 1) use(device);
//
// The cache starts empty; misses and setDeviceMap alone fill it, there is no timer. A lookup that
// finds nothing costs one complete read of all devices, every time: misses are not remembered. It
// blocks then as EMFTopoI::getAllDevices does; a lookup that finds something waits at most for a
// finished read to be put in place. A read that fails empties the cache.
//
// Thread-safety: thread-safe but for Destroy. Lookups run side by side; no lock is held during a
// read. Of threads that miss at once each reads.
#pragma once

#include <ace/RW_Mutex.h>

#include <list>
#include <map>
#include <string>

#include "emfexport.h"
#include "emftoporecords.h"

class EMF_API DeviceInfo {
 public:
  // The singleton, made at the first call; null only when the process-wide lock fails.
  static DeviceInfo* Instance();
  // The same.
  static DeviceInfo* getInstance();
  // Deletes the singleton with what it holds, if there is one; the next Instance makes an empty
  // one. No lookup may be running. Does nothing when the process-wide lock fails. The plug-in
  // itself never calls it: the cache lives on after fini.
  static void Destroy();

  // Reads every device and replaces the cache; of two devices with one id the first stays. 1, or 0
  // when the list could not be had and the cache stays. Lets the exceptions of
  // EMFTopoI::getAllDevices pass; the cache stays then, too.
  int setDeviceMap();

  // 1 and a copy in `out`, or 0 with `out` untouched. On a miss reads all devices once. Throws as
  // setDeviceMap does. A hit is one tree search.
  int getDeviceByID(long id, Device& out);

  // 1 and every device of that name in ascending id, or 0; `out` is replaced. Names are compared
  // byte for byte, in the agent's character set, up to the first NUL of `name`. On a miss reads all
  // devices once. Throws as setDeviceMap does; `out` is empty then. Walks all devices each time.
  int getDeviceByName(const std::string& name, std::list<Device>& out);

 private:
  DeviceInfo();
  DeviceInfo(const DeviceInfo&) = delete;
  DeviceInfo& operator=(const DeviceInfo&) = delete;
  ~DeviceInfo();

  bool findById(long id, Device& out);
  void findByName(const std::string& name, std::list<Device>& out);

  std::map<long, Device> deviceMap;  // guarded by rwLock, keyed by Device::id
  ACE_RW_Mutex rwLock;

  static DeviceInfo* m_pInstance;
};
