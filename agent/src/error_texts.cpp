#include "error_texts.h"

#include "errorcodebufif.h"
#include "orma/bundle/interface_slot.h"

namespace ormaagent {

std::string findErrorText(unsigned long code) {
  const auto* slot = NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf");
  auto* texts = slot == nullptr ? nullptr : dynamic_cast<ErrorCodeBufIf*>(slot->front());
  if (texts == nullptr) {
    throw ServiceMissing("no running service offers the interface \"ErrorCodeBufIf\"");
  }
  std::string text;
  texts->GetErrorInfo(text, code);
  return text;
}

}  // namespace ormaagent
