#include "linkportstatus.h"

#include <ace/RW_Mutex.h>
#include <ace/Thread_Mutex.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "emfglobal.h"
#include "orma/southbound/southbound.h"
#include "orma/text/secure_text.h"
#include "processexception.h"
#include "rwlockguard.h"

namespace {

using NS_DOMAIN::PortIndex;
using NS_DOMAIN_SOUTHAPISET::TEErrInfoReturn;
using NS_DOMAIN_SOUTHAPISET::TEPortOAMStatus;
using NS_DOMAIN_SOUTHAPISET::TEUniResID;

constexpr char kSourceName[] = "emftopointerface";

// The ports of the latest answer, of whichever thread, each with its status.
std::vector<PortIndex> linkPortStatusList;
ACE_RW_Mutex linkPortLock;
// Stands beside the list and is taken by nothing, meant so.
[[maybe_unused]] ACE_Thread_Mutex linkPortMutex;

constexpr std::int32_t kLogicalTypes[] = {0x10001, 0x10003, 0x10004, 0x10005, 0x10006,
                                          0x10007, 0x10008, 0x1000B, 0x1000D, 0x1000E};

bool isLogical(std::int32_t type) {
  return std::find(std::begin(kLogicalTypes), std::end(kLogicalTypes), type) !=
         std::end(kLogicalTypes);
}

TEUniResID resourceIdOf(const PortIndex& port) {
  const bool logical = isLogical(port.type);
  std::string id;
  NS_UTIL::ResIDUtil::PortIndex2ResID(port, id, logical);
  return {std::move(id), logical ? "LP" : "PP", port.neID};
}

std::int32_t statusOf(const TEPortOAMStatus& answer) {
  const std::int32_t a = answer.firstState;
  const std::int32_t b = answer.secondState;
  if (a < 0 || b < 0) return -1;
  if (a == 1 && b == 1) return 1;
  if (a == 1 && b == 0) return 9;
  if (a == 0 && b == 0) return 8;
  return 2;
}

void reportProcessException(std::int32_t code, const std::vector<TEUniResID>& ids) {
  std::ostringstream text;
  text << "[emftopointerface:adapterlinkPortstatus]get port status failed. Error: " << code << ' ';
  for (const TEUniResID& id : ids) text << id.uniResId << "; ";
  EMF_LOG(GetEmfLog(), kSourceName, LogText, 1, text.str());
}

void reportOtherException(std::size_t ports) {
  std::ostringstream text;
  // The "%d" is part of the text, meant so.
  text << "[emftopointerface:adapterlinkPortstatus]Other Ex. linkport size =%d" << ports;
  EMF_LOG(GetEmfLog(), kSourceName, LogText, 1, text.str());
}

// One southbound call; what went wrong is logged and leaves the answer empty.
std::vector<TEPortOAMStatus> askPortStatus(const std::vector<TEUniResID>& ids) {
  std::vector<TEPortOAMStatus> answers;
  TEErrInfoReturn errors;
  errors.number = -1;
  try {
    NS_DOMAIN_SOUTHAPISET::GetPortStatus(ids, errors, answers);
    return answers;
  } catch (const ProcessException& failure) {
    reportProcessException(failure.errCode, ids);
  } catch (...) {
    reportOtherException(ids.size());
  }
  return {};
}

void adapterlinkPortstatus(const std::vector<PortIndex>& ports) {
  std::vector<TEUniResID> ids;
  ids.reserve(ports.size());
  for (const PortIndex& port : ports) ids.push_back(resourceIdOf(port));
  std::vector<PortIndex> answered;
  for (const TEPortOAMStatus& answer : askPortStatus(ids)) {
    PortIndex port;
    NS_UTIL::ResIDUtil::ResID2PortIndex(answer.portResId, port);
    port.cachedStatus = statusOf(answer);
    answered.push_back(std::move(port));
  }
  emf::WriteGuard guard(linkPortLock);
  linkPortStatusList.swap(answered);
}

void tracePort(const PortIndex& port) {
  constexpr std::size_t kTextBytes = 1024;
  char text[kTextBytes] = {};
  const int length = snprintf_s(
      text, sizeof text, sizeof text - 1,
      "portIndex neID: %d,  shelfID: %d, slotID:%d, subSlotID:%d, portID:%d, portName:%s, "
      "domainType:%d, type:%d",
      port.neID, port.shelfID, port.slotID, port.subSlotID, port.portID, port.portName.c_str(),
      port.domainType, port.type);
  if (length < 0) EMF_TRACE(kSourceName, TaDebug(1, "snprintf_s failed."));
  EMF_TRACE(kSourceName, TaDebug(3, text));
}

std::int32_t listedStatus(const PortIndex& port) {
  emf::ReadGuard guard(linkPortLock);
  const auto match = std::find_if(linkPortStatusList.begin(), linkPortStatusList.end(),
                                  LinkPortIndexComparer(&port));
  return match == linkPortStatusList.end() ? 0 : match->cachedStatus;
}

}  // namespace

bool LinkPortIndexComparer::operator()(const PortIndex& candidate) const {
  return candidate.neID == wanted_->neID && candidate.shelfID == wanted_->shelfID &&
         candidate.slotID == wanted_->slotID && candidate.subSlotID == wanted_->subSlotID &&
         candidate.portID == wanted_->portID;
}

std::int32_t findPortstatusByportidx(const PortIndex& port) {
  if (port.neID == -1) return -1;
  EMF_TRACE(kSourceName, TaDebug(1, "[findPortstatusByportidx] entering"));
  tracePort(port);
  adapterlinkPortstatus(std::vector<PortIndex>(1, port));
  const std::int32_t status = listedStatus(port);
  EMF_TRACE(kSourceName, TaDebug(1, "[findPortstatusByportidx] leaving"));
  return status;
}
