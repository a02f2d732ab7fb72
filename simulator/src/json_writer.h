// JSON by appending: pages are written straight into the answer's text.
//
//   std::string out = "{";
//   appendMember(out, "name", "Zürich");   // "name":"Zürich"
//
// Texts are UTF-8 and stay so; only quotes, backslashes and control characters are escaped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ormasim {

// With the quotes around it.
void appendJsonText(std::string& out, std::string_view text);
void appendJsonNumber(std::string& out, std::int64_t number);

// `key` is written as it stands.
void appendMember(std::string& out, std::string_view key, std::string_view text);
void appendMember(std::string& out, std::string_view key, std::int64_t number);

}  // namespace ormasim
