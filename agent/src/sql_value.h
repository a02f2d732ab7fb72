// Parameters of SQL statements as they stand on the command line: a text, or a word for the type, a
// colon and the value: integer:-5, real:0.5, text:integer:5, bytes:00ff and null:.
//
//   std::optional<refl::CValue> value = parseSqlValue("integer:12");
//
// Thread-safety: immutable. Nothing when it is none: the text is empty, or no value of the type
// that its word names.
#pragma once

#include <optional>
#include <string_view>

#include "orma/refl/value.h"

namespace ormaagent {

std::optional<refl::CValue> parseSqlValue(std::string_view text);

}  // namespace ormaagent
