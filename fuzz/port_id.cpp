// A port's coordinates from any id. What is read is written as an id that reads as the same.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "orma/ident/port_index.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  NS_DOMAIN::PortIndex port;
  NS_UTIL::ResIDUtil::ResID2PortIndex({reinterpret_cast<const char*>(data), size}, port);

  std::string id;
  NS_UTIL::ResIDUtil::PortIndex2ResID(port, id, port.logicalFlag != 0);
  NS_DOMAIN::PortIndex again;
  NS_UTIL::ResIDUtil::ResID2PortIndex(id, again);
  std::string same;
  NS_UTIL::ResIDUtil::PortIndex2ResID(again, same, again.logicalFlag != 0);
  if (same != id || again.portName != port.portName) std::abort();
  return 0;
}
