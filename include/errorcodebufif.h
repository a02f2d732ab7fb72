// The text of an error code, for every bundle of the process. Found under the interface name
// "ErrorCodeBufIf":
//
//   auto* slot = NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf");
//   auto* errors = slot ? dynamic_cast<ErrorCodeBufIf*>(slot->front()) : nullptr;
//   std::string text;
//   if (errors) errors->GetErrorInfo(text, 0x411800BA);
//
// Needs the bundle manager's headers beside those of this directory. The order of the virtual
// operations is part of the binary interface.
//
// Nothing fails and nothing blocks; nothing is thrown but std::bad_alloc. The plug-in's own object
// lives from its factory on, until the bundle manager removes it.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>

#include "emfexport.h"
#include "orma/bundle/service_interface.h"

class EMF_API ErrorCodeBufIf : public NS_BUNDLEMGR1::ServiceInterface {
 public:
  // Replaces `text` by the code's text, as its resource file has it, or by "unknown" when there is
  // none; "unknown" for every code until the service has been initialised. One tree search.
  virtual void GetErrorInfo(std::string& text, const unsigned long& code) = 0;
};
