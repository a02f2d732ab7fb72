// The JSON objects of resources, as the property reads and the graph query give them: one form for
// each main type.
//
//   Statement rows(database, std::string("SELECT ") + kResourceColumns + " FROM resource");
//   while (rows.step()) appendResource(rows, json);
//
// Thread-safety: thread-compatible.
#pragma once

#include <string>

#include "sqlite.h"

namespace ormasim {

// What appendResource takes, from the first column on.
constexpr char kResourceColumns[] = "native_id, main_type, sub_type, name";

// A device's type as one number. On the wire it is a signed one of 32 bits: main types above 32767
// come out negative.
constexpr char kDeviceTypeColumn[] =
    "((main_type * 65536 + sub_type + 2147483648) % 4294967296 - 2147483648)";

// Appends the object, behind a comma unless it is the first of its array.
void appendResource(const Statement& row, std::string& out);

}  // namespace ormasim
