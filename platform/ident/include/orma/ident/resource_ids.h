// Identifiers of resources: resource ids, compatible integer ids and the parts of an FDN.
//
// An element's resource id is the number in its name, such as "NE=12". Ids below an element are
// derived from the FDN text alone (see docs/ident.md), so they are the same in every run and never
// meet an element's.
//
// Thread-safety: thread-safe. A name that cannot be read gives 0 or an empty result.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "orma/bundle/export.h"

namespace NS_UTIL {

namespace compat {
// The compatible integer id of a resource id, and the inverse.
ORMA_API std::int64_t ResID2IID(std::int64_t resourceId);
ORMA_API std::int64_t IID2ResID(std::int64_t iid);
}  // namespace compat

class ORMA_API UtilCommon {
 public:
  // The key of the FDN's last segment, such as "FR", "CP" or "PP"; empty when there is none.
  static std::string GetMoc(const std::string& fdn);
  // Splits a port segment's value into parts numbered from 0; `parts` is replaced.
  static void GetSplitePPDataByLine(std::map<int, std::string>& parts, const std::string& value);
  // The part of that number; `part` is left as it is when there is none.
  static void GetDataFromMap(const std::map<int, std::string>& parts, int number,
                             std::string& part);
};

}  // namespace NS_UTIL

namespace resid_compat {
// The resource id of a DN or FDN; 0 when it has no number.
ORMA_API std::int64_t ResDN2ResID(const std::string& dn);
// The ids along the FDN's path, outermost first: one a segment, of the FDN up to it.
ORMA_API std::vector<std::int64_t> ExtractResIdsFromFDN(std::string fdn);
}  // namespace resid_compat
