// Turns what simdjson parsed into a Json::Value.
//
// Thread-safety: thread-safe. Failure is told by the result; nothing is thrown but std::bad_alloc
// and Json::Exception, for a text beyond jsoncpp's 2 GiB.
#pragma once

#include <json/value.h>
#include <simdjson.h>

#include <cstddef>

namespace orma::rest {

// Builds the value of `root` in `out`, which is null before. False when arrays and objects are
// nested deeper than `maxNesting`; `out` then is of no use.
bool buildValue(simdjson::dom::element root, std::size_t maxNesting, Json::Value& out);

}  // namespace orma::rest
