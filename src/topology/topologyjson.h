// Reading members of topology objects.
//
// Thread-safety: thread-safe on distinct objects.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>

// The member as text; empty if the object lacks it. A member that has no text form raises
// Json::LogicError.
std::string getStringOrEmpty(const Json::Value& object, const char* key);

// False, with `out` alone, if the object lacks the member; otherwise `out` is its text, and the
// result says whether that is not empty.
bool getStringMember(const Json::Value& object, const char* key, std::string& out);

// The text behind "ProcID " up to the next blank or the end; empty if "ProcID " is absent.
std::string getProcIdText(const std::string& exInfo);

namespace emf {

// A decimal number at the start of the text, cut to 32 bits; 0 when there is none.
std::int32_t leadingNumber(const std::string& text);

}  // namespace emf
