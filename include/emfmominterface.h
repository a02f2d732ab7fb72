// The shell of an update interface: every operation succeeds and changes nothing, meant so.
//
// Thread-safety: thread-safe; no state.
#pragma once

#include "emfexport.h"

class EMF_API EMFMOMgrI {
 public:
  // Each returns 0.
  static int setUserLabel();
  static int setOwner();
  static int insertRecord();
  static int deleteRecord();
};
