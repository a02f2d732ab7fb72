// Documents as text, for the queries that take text.
//
// Thread-safety: thread-safe on distinct values. Throws std::bad_alloc; the text is never cut.
#pragma once

#include <json/value.h>

#include <string>

namespace emf {

// What Json::Value::toStyledString gives while there is memory. That one gives the start of the
// text, without a word, when there is none.
std::string styledText(const Json::Value& value);

}  // namespace emf
