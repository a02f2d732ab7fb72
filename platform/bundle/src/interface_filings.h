// Which interfaces a service filed, so that they can be taken back before it goes.
//
// Thread-safety: a scope belongs to its thread; takeBack is thread-safe.
#pragma once

#include <vector>

#include "orma/bundle/interface_slot.h"

namespace NS_BUNDLEMGR1 {

struct Filing {
  InterfaceSlot* slot;
  ServiceInterface* interface;
};

// While it lives, every SetIFBuf of this thread is noted in `filings`.
class FilingScope {
 public:
  explicit FilingScope(std::vector<Filing>& filings);
  FilingScope(const FilingScope&) = delete;
  FilingScope& operator=(const FilingScope&) = delete;
  ~FilingScope();

 private:
  std::vector<Filing>* previous_;
};

// Removes the noted filings and, from every slot, each of the interfaces (nulls are ignored).
void takeBack(const std::vector<Filing>& filings, const std::vector<ServiceInterface*>& interfaces);

}  // namespace NS_BUNDLEMGR1
