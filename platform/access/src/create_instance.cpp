#include <new>

#include "orma/access/prdu_res_info_convert.h"

// What the library is loaded for: a new converter, owned by the caller; null when there is no
// memory for one.
extern "C" ORMA_API PRDU_ORMA::PrduResInfoConvert* createInstanceLib() {
  return new (std::nothrow) PRDU_ORMA::PrduResInfoConvert;
}
