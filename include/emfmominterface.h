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
  // Each returns 0, success, however often it is called.
  static int setUserLabel();
  static int setOwner();
  static int insertRecord();
  static int deleteRecord();
};
