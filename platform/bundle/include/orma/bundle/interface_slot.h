// Interfaces by name: one shared slot for each name, in filing order.
//
//   NS_BUNDLEMGR1::SetIFBuf("ErrorCodeBufIf", &errors);
//   if (auto* slot = NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf")) use(slot->front());
//
// Thread-safety: thread-safe. A slot may be read by any thread, without a lock, while another
// fills it; a slot lives until the process ends.
#pragma once

#include <ace/Thread_Mutex.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <vector>

#include "orma/bundle/service_interface.h"

namespace NS_BUNDLEMGR1 {

class ORMA_API InterfaceSlot {
 public:
  InterfaceSlot();
  InterfaceSlot(const InterfaceSlot&) = delete;
  InterfaceSlot& operator=(const InterfaceSlot&) = delete;
  ~InterfaceSlot();

  bool empty() const { return front() == nullptr; }
  // The interface that was filed first and is still filed; null when there is none.
  ServiceInterface* front() const;
  // Every interface that is filed at this moment, in filing order.
  std::vector<ServiceInterface*> snapshot() const;
  // Appends; the slot borrows the interface.
  void push_back(ServiceInterface* interface);
  // Takes an interface out of the slot; unknown ones are ignored.
  void remove(ServiceInterface* interface);

 private:
  struct Entry;
  // The first cleared entry behind every one that is filled; null when the last is filled.
  Entry* trailingSpare() const;

  std::atomic<Entry*> first_{nullptr};
};

// Files an interface under its name. The slot borrows it: it must outlive its filing. Filings
// made while the bundle manager runs a service's factory or init are taken back when that
// service is unloaded.
ORMA_API void SetIFBuf(const std::string& name, ServiceInterface* interface);

// The shared slot of that name, made at the first question; null only for an empty name.
ORMA_API InterfaceSlot* CheckIFBuf(const std::string& name);

// Guards the filling of slots and the creation of the placeholder, across all libraries.
extern ORMA_API ACE_Thread_Mutex _g_actualmutex;

}  // namespace NS_BUNDLEMGR1
