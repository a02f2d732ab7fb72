// The shell of an update interface: every operation succeeds and changes nothing, meant so.
//
//   const int result = EMFMOMgrI::setUserLabel();  // 0
//
// Nothing is asked of the platform, nothing is logged or thrown, and nothing blocks.
//
// Thread-safety: thread-safe; no state.
#pragma once

#include "emfexport.h"

class EMF_API EMFMOMgrI {
 public:
  // Returns 0, success, however often it is called. So does each of the others.
  static int setUserLabel();
  // Returns 0.
  static int setOwner();
  // Returns 0.
  static int insertRecord();
  // Returns 0.
  static int deleteRecord();
};
