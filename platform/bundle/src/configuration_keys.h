// The key table by path.
//
// Thread-safety: immutable.
#pragma once

#include <string_view>

#include "orma/bundle/configuration.h"

namespace orma {

// The row of that path, or null.
const ConfigKey* findConfigKey(std::string_view path);

// The words of a choice, in the order of the table.
std::vector<std::string> choiceWords(const ConfigKey& key);

}  // namespace orma
