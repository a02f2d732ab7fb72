// What the alarm services' questions and answers have in common.
//
// Thread-safety: thread-safe on distinct objects.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>

namespace emf {

// The member, or the null value when there is none or `value` is no object.
const Json::Value& memberOf(const Json::Value& value, const char* key);

// The decimal number that a JSON text begins with, cut to 32 bits; 0 when there is none. Throws
// Json::LogicError when the value is no text.
std::int32_t textNumber(const Json::Value& value);

// The body of a query for `limit` elements from `offset` on.
std::string pageRequest(std::uint64_t offset, std::uint32_t limit);

}  // namespace emf
