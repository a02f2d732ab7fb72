// What scripted services did, in order: one journal for the test and all its libraries.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>
#include <vector>

#include "orma/bundle/export.h"

namespace scripted {

ORMA_API void note(const std::string& entry);

// Everything noted since the last call.
ORMA_API std::vector<std::string> takeJournal();

}  // namespace scripted
