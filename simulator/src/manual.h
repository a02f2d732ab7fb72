// What ormasim's manual page and the end of its --help say beside the command line.
//
// Thread-safety: immutable.
#pragma once

#include "usage/manual.h"

namespace ormasim {

const usage::Manual& manual();

}  // namespace ormasim
