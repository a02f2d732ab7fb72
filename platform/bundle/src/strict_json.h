// Reads JSON to the letter: no comments, no trailing commas, no member twice, nothing after the
// value, UTF-8 only, bounded in nesting.
//
// Thread-safety: thread-safe. Failures are problems with line and column, counted from 1 in bytes.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "orma/bundle/configuration.h"

namespace orma {

inline constexpr std::size_t kMaxConfigurationNesting = 32;

// True when `document` holds the whole text; otherwise every problem found is appended, each with
// "name:line:column".
bool parseStrictJson(const std::string& text, const std::string& name, Json::Value& document,
                     std::vector<ConfigProblem>& problems);

}  // namespace orma
