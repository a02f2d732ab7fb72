// Texts of configuration files that hold several values.
//
//   std::list<int> types;
//   NS_UTIL::SDXMLInterpreterMgr::Instance()->ParseIntList("1,85,86", types);
//
// Thread-safety: thread-safe on distinct results; no state.
#pragma once

#include <list>

#include "orma/bundle/export.h"

namespace NS_UTIL {

class ORMA_API SDXMLInterpreterMgr {
 public:
  static SDXMLInterpreterMgr* Instance();

  // Appends the integers of the text in order. They are separated by "," or ";", with blanks around
  // them allowed; a piece that is no decimal 32-bit integer is passed over. Null counts as empty.
  void ParseIntList(const char* text, std::list<int>& out);

 private:
  SDXMLInterpreterMgr() = default;
};

}  // namespace NS_UTIL
