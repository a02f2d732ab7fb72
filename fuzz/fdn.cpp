// Names of resources from any text: one id a segment, the last of them the resource's own.
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>

#include "orma/ident/resource_ids.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string fdn(reinterpret_cast<const char*>(data), size);
  const auto path = resid_compat::ExtractResIdsFromFDN(fdn);
  const auto id = resid_compat::ResDN2ResID(fdn);
  if (!path.empty() && path.back() != id) std::abort();
  if (NS_UTIL::compat::IID2ResID(NS_UTIL::compat::ResID2IID(id)) != id) std::abort();
  static_cast<void>(NS_UTIL::UtilCommon::GetMoc(fdn));
  std::map<int, std::string> parts;
  NS_UTIL::UtilCommon::GetSplitePPDataByLine(parts, fdn);
  return 0;
}
