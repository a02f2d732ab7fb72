// Checks what a configuration document says against the key table and collects its values.
//
// Thread-safety: thread-compatible. Failures are problems with "file: key.path".
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "orma/bundle/configuration.h"

namespace orma {

struct ConfigurationContent {
  Json::Value values;  // every key of the table by its whole path, defaults where none is given
  Json::Value items;   // the "items" object
  std::vector<ConfiguredService> services;
};

// What an empty document says.
ConfigurationContent defaultContent();

// Every problem is appended; the content is of use only when there was none.
ConfigurationContent readContent(const Json::Value& document, const std::string& name,
                                 std::vector<ConfigProblem>& problems);

}  // namespace orma
