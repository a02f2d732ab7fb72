// What can be said of the configured database without asking it.
//
//   if (dao::connectionHoldsPassword(*orma::Configuration::current())) hideTheFile();
//
// Thread-safety: thread-safe. Nothing is thrown but std::bad_alloc.
#pragma once

#include "orma/bundle/export.h"

namespace orma {
class Configuration;
}

namespace dao {

// Whether "database.connection" itself holds a password. A text that libpq cannot read counts as
// one: it may hold what was meant to be a password.
ORMA_API bool connectionHoldsPassword(const orma::Configuration& configuration);

}  // namespace dao
