// The agent's documents read back: every format to the same rows, the field names first.
//
//   EXPECT_EQ(rowsOf("csv", outcome.out), expected);
//
// Thread-safety: thread-safe. Failure: std::runtime_error that says what is wrong where.
#pragma once

#include <json/value.h>

#include <string>

#include "inventory.h"

namespace systemtest {

// `format` is table, json or csv.
Rows rowsOf(const std::string& format, const std::string& document);

// The document as strict JSON.
Json::Value jsonOf(const std::string& document);

}  // namespace systemtest
