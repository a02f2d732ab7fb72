// What ormaagent's manual pages and the end of its --help say beside the command table and the
// table of configuration keys.
//
// Thread-safety: immutable.
#pragma once

#include <string>

#include "usage/manual.h"

namespace ormaagent {

const usage::Manual& manual();

// The page ormaagent.json(5), in the macros of man(7).
std::string configurationPage();

}  // namespace ormaagent
