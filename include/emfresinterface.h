// Queries over the platform's resources: names.
//
//   std::string fdn;
//   EMFResMgrI::AdpDevID2FDN(12, fdn);  // "NE=12"
//
// Thread-safety: thread-safe; no state.
#pragma once

#include <cstdint>
#include <string>

#include "emfexport.h"

class EMF_API EMFResMgrI {
 public:
  // The FDN of a device id: "NE=", "ONE=", "EMS=" or "OS=" by the id's range, and the id in
  // decimal. Replaces `fdn`. Returns the length of the text, or a negative number when formatting
  // failed. Every id has a form.
  static std::int32_t AdpDevID2FDN(std::uint32_t deviceId, std::string& fdn);

  // Does nothing and returns 0.
  static int getResType();
};
