// The main resource types that the platform's metadata service knows.
//
// Thread-safety: thread-safe on distinct results. Blocks in REST exchanges.
#pragma once

#include <string>
#include <utility>
#include <vector>

// Appends id and name, not converted, of every main type. False when a page could not be read, with
// the types of earlier pages appended.
bool QueryMainResTypes(std::vector<std::pair<int, std::string>>& out);
