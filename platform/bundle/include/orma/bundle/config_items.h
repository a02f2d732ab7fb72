// The agent's configuration items and installation paths.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>

#include "orma/bundle/export.h"

namespace NS_BUNDLEMGR1 {

class ORMA_API CorbaConfigItems {
 public:
  static CorbaConfigItems* Instance();
  // Stores the named item of the configuration's "items" and returns true; without such an item,
  // or when it is no 32-bit integer, leaves `value` untouched and returns false.
  bool GetIntItemInfo(const std::string& name, int& value);

 private:
  CorbaConfigItems() = default;
};

// The installation's base directory ("installation.environment"); suffixes such as
// "/../etc/nbires/en_US/" are appended directly.
ORMA_API std::string GetORMAEnvironment();
// The installation root ("installation.root").
ORMA_API std::string GetORMARootPath();

}  // namespace NS_BUNDLEMGR1
