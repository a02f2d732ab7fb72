// The REST request value, and the two enumerations that the REST client's operations take. The one
// header that the plug-in and the REST client library share.
//
// Thread-safety: thread-compatible values.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>

namespace Nimbola {

// Comparison of a filter expression; ToString gives its word.
enum OperatorType : std::int32_t {
  OPERATOR_EQUAL = 0,
  OPERATOR_NOT_EQUAL = 1,
  OPERATOR_GREATER = 2,
  OPERATOR_LESS = 3,
  OPERATOR_IN = 4,
  OPERATOR_LIKE = 5,
};

// Main resource types.
enum MainType : std::int32_t {
  MAIN_TYPE_UNKNOWN = 0,
  MAIN_TYPE_NETWORK_ELEMENT = 1,
  MAIN_TYPE_FRAME = 3,
  MAIN_TYPE_SLOT = 4,
  MAIN_TYPE_DAUGHTER_SLOT = 5,
  MAIN_TYPE_PORT = 6,
  MAIN_TYPE_CARD = 20,
  MAIN_TYPE_DAUGHTER_CARD = 21,
};

// RestReq::method.
constexpr std::uint32_t kMethodParams = 1;  // no post data, parameters go in `params`
constexpr std::uint32_t kMethodBody = 2;    // post data in `body`

struct RestReq {
  std::string target;        // filled by MakeRestReq
  std::string url;           // path of the resource
  Json::Value body;          // post data, when method is 2
  Json::Value params;        // query parameters, otherwise
  Json::Value extra;         // filled by MakeRestReq, reaches the transport unchanged
  std::uint64_t option = 0;  // filled by MakeRestReq, reaches the transport unchanged
  std::uint32_t method = kMethodParams;
  std::uint8_t mode = 0;  // as made; 4 on the resource instance requests
};

}  // namespace Nimbola
