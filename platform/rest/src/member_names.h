// Member names that are kept for the life of the process, so that a million objects share one copy
// of "nativeId" in place of a million.
//
// Thread-safety: thread-safe.
#pragma once

#include <string_view>

namespace orma::rest {

// The lasting copy of `name`, ended by a NUL; null for a name that is long or holds a NUL, and
// when the table is full, which bounds what a service with ever new names can cost. Copies are
// never freed: a Json::Value that points to one may outlive everything else.
const char* lastingName(std::string_view name);

}  // namespace orma::rest
