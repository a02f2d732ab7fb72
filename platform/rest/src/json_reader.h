// Reads a JSON text into a Json::Value.
//
// Thread-safety: thread-safe. Failure is told by the result, with the reason in words; nothing is
// thrown but std::bad_alloc.
//
//   Json::Value value;
//   std::string reason;
//   if (!orma::rest::readJson(text, 100, value, reason)) report(reason);
#pragma once

#include <json/value.h>

#include <string>

namespace orma::rest {

// True when the whole of `text` is one JSON document, at most `maxNesting` arrays and objects
// deep; it then is in `value`. Otherwise `value` is null and `reason` says why. `text` may get
// more capacity, its content stays.
bool readJson(std::string& text, std::size_t maxNesting, Json::Value& value, std::string& reason);

}  // namespace orma::rest
