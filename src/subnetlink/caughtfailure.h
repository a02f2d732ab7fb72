// Telling of an exception where nothing may leave the catch clause.
//
//   } catch (...) {
//     emf::tellOfCaught([](int errCode) { … }, [] { … });
//   }
//
// Thread-safety: thread-safe.
#pragma once

#include "processexception.h"

namespace emf {

// Calls tellCode with the code of a ProcessException, tellOther for anything else. A message that
// there is no memory for is dropped.
template <class TellCode, class TellOther>
void tellOfCaught(TellCode tellCode, TellOther tellOther) noexcept {
  try {
    try {
      throw;
    } catch (const ProcessException& failure) {
      tellCode(failure.errCode);
    } catch (...) {
      tellOther();
    }
  } catch (...) {
  }
}

}  // namespace emf
