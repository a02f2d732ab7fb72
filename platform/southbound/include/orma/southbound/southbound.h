// The southbound interface set: links and the state of ports.
//
//   std::vector<NS_DOMAIN_SOUTHAPISET::TEUniResID> ids;
//   NS_DOMAIN_SOUTHAPISET::GetLinkID({}, {}, ids);
//
// Thread-safety: thread-safe. Each operation blocks in the inventory database and throws
// ProcessException, with a code in errCode, when it cannot be asked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "orma/bundle/export.h"
#include "processexception.h"

namespace NS_DOMAIN_SOUTHAPISET {

// Fills every text that a caller does not set.
constexpr char kInvalidText[] = "__ONBI_INVALID_STRING__";

// One resource id.
struct TEUniResID {
  std::string uniResId = kInvalidText;  // "IPLINK=…", "VLINK=…", "L2LINK=…" or a port's id
  std::string resType = kInvalidText;   // "IPLINK", "VLINK", "L2LINK", "PP" or "LP"
  std::int32_t neId = -1;
  std::string extId = kInvalidText;
};

// One link.
struct TELinkInfo {
  std::string linkResId;
  std::string linkName;
  std::int32_t linkAttribute = 0;
  std::string srcPortResId;
  std::string dstPortResId;
};

// The state of one port.
struct TEPortOAMStatus {
  std::string portResId;
  std::int32_t firstState = 0;
  std::int32_t secondState = 0;
};

struct TEErrInfo {
  std::string uniResId;
  std::int32_t errCode = 0;
};

struct TEErrInfoReturn {
  std::int32_t number = -1;
  std::vector<TEErrInfo> entries;
};

// The ids of the links between the given elements and of the given kinds; empty: every element,
// every kind. `out` is appended to.
ORMA_API void GetLinkID(const std::vector<int>& elements, const std::vector<int>& kinds,
                        std::vector<TEUniResID>& out);

// The links of those ids that exist, in the order of the ids; `mask` selects the attributes by
// bit, 0x3FF all of them. `out` is appended to.
ORMA_API void GetLinkInfo(const std::vector<TEUniResID>& ids, const int& mask,
                          std::vector<TELinkInfo>& out);

// One state for each port that exists, in the order of the ids; the others are told in `errors`.
// `out` is appended to.
ORMA_API void GetPortStatus(const std::vector<TEUniResID>& ids, TEErrInfoReturn& errors,
                            std::vector<TEPortOAMStatus>& out);

}  // namespace NS_DOMAIN_SOUTHAPISET
