#include "emfresinterface.h"

#include "emfglobal.h"
#include "orma/text/secure_text.h"
#include "threadtextbuffer.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emfresinterface";

enum class FdnForm { NetworkElement, OpticalElement, ElementManager, OperationSystem };

struct DeviceIdRange {
  std::uint32_t first;
  std::uint32_t last;  // inclusive
  FdnForm form;
};

// In the order in which the ranges are tried. The second one ends at 0xEFFFFF0, not at 0xEFFFFFF:
// meant so.
constexpr DeviceIdRange kDeviceIdRanges[] = {
    {0x3E0000, 0x3F7FFF, FdnForm::OpticalElement},  {0xE000000, 0xEFFFFF0, FdnForm::OpticalElement},
    {0xA00000, 0xA0FFFF, FdnForm::ElementManager},  {0xA10000, 0xAFFFFF, FdnForm::OpticalElement},
    {0x3F8000, 0x3FFFFF, FdnForm::OperationSystem}, {1, 1, FdnForm::OperationSystem},
};

FdnForm formOf(std::uint32_t deviceId) {
  for (const DeviceIdRange& range : kDeviceIdRanges) {
    if (deviceId >= range.first && deviceId <= range.last) return range.form;
  }
  return FdnForm::NetworkElement;
}

int formatFdn(char* buffer, FdnForm form, std::uint32_t deviceId) {
  constexpr std::size_t kBytes = emf::ThreadTextBuffer::kBytes;
  switch (form) {
    case FdnForm::OpticalElement:
      return snprintf_s(buffer, kBytes, kBytes - 1, "ONE=%u", deviceId);
    case FdnForm::ElementManager:
      return snprintf_s(buffer, kBytes, kBytes - 1, "EMS=%u", deviceId);
    case FdnForm::OperationSystem:
      return snprintf_s(buffer, kBytes, kBytes - 1, "OS=%u", deviceId);
    case FdnForm::NetworkElement:
      break;
  }
  return snprintf_s(buffer, kBytes, kBytes - 1, "NE=%u", deviceId);
}

}  // namespace

std::int32_t EMFResMgrI::AdpDevID2FDN(std::uint32_t deviceId, std::string& fdn) {
  emf::WatchedCall call("EMFResMgrI::AdpDevID2FDN");
  fdn.clear();
  emf::ThreadTextBuffer& buffer = emf::ThreadTextBuffer::forThisThread();
  char* text = buffer.cleared();
  // Without address space for the buffer, formatting counts as failed.
  const int length = text != nullptr ? formatFdn(text, formOf(deviceId), deviceId) : -1;
  if (length < 0) {
    call.fail();
    EMF_TRACE(
        kSourceName,
        TaDebugWithPara(3, "EMFResMgrI::AdpDevID2FDN snprintf_s failed,iDevID(%u)", deviceId));
  }
  if (text != nullptr) {
    fdn = text;
    buffer.wrote(fdn.size());
  }
  EMF_TRACE(kSourceName, TaDebugWithPara(3, "EMFResMgrI::AdpDevID2FDN, strFdn = %s", fdn.c_str()));
  return length;
}

int EMFResMgrI::getResType() {
  const emf::WatchedCall call("EMFResMgrI::getResType");
  return 0;
}
