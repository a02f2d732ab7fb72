// The failures that leave an operation as exceptions.
//
//   try { EMFAlarmI::getAllAlarms(records); }
//   catch (ProcessException& failure) { report(failure.errCode); }
//
// Catch by reference: copying drains the source (see below). Absent texts are empty.
//
// Thread-safety: thread-compatible. Header-only, so that every library of the process throws and
// catches the same type.
#pragma once

#include <exception>
#include <sstream>

#include "emfexport.h"

class EMF_API ProcessException : public std::exception {
 public:
  ProcessException() = default;

  // Meant as it stands: streaming the source's buffers drains its read positions, so a copied-from
  // exception reads as empty, and a text that was empty leaves the new stream's fail bit set.
  ProcessException(ProcessException& other)
      : std::exception(other), errCode(other.errCode), line(other.line) {
    file << other.file.rdbuf();
    function << other.function.rdbuf();
    reserved << other.reserved.rdbuf();
    detail << other.detail.rdbuf();
  }

  int errCode = 0;             // the error code, 0 when none was given
  int line = 0;                // source line of the throw
  std::stringstream file;      // source file name of the throw
  std::stringstream function;  // "unknown" from every thrower of this system
  std::stringstream reserved;  // written by no thrower, copied all the same
  std::stringstream detail;    // the text of the failure
};

// A service interface that is not there.
class EMF_API InterfaceNotExistException : public ProcessException {
 public:
  InterfaceNotExistException() { errCode = kErrorCode; }

 private:
  enum { kErrorCode = 0x41180004 };
};
