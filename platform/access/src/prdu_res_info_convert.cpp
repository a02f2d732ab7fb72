#include "orma/access/prdu_res_info_convert.h"

namespace PRDU_ORMA {

PrduResInfoConvert::~PrduResInfoConvert() = default;

int PrduResInfoConvert::Init() { return 0; }

}  // namespace PRDU_ORMA
