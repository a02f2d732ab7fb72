#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "emfglobal.h"
#include "emftopointerface.h"
#include "linkportstatus.h"
#include "orma/southbound/southbound.h"
#include "topologyjson.h"
#include "watchedcall.h"

namespace {

using NS_DOMAIN_SOUTHAPISET::TELinkInfo;
using NS_DOMAIN_SOUTHAPISET::TEUniResID;

constexpr char kSourceName[] = "emftopointerface";
constexpr int kAllAttributes = 0x3FF;
constexpr std::size_t kBatchIds = 2000;
constexpr std::int64_t kNoSuchLink = 0x411800D4;
constexpr std::int64_t kSouthboundFailed = 0x41180035;

struct LinkKind {
  std::int32_t kind;
  const char* idPrefix;
  const char* resType;
};

// A kind that is not listed is asked for as an IP link, meant so.
constexpr LinkKind kIpLink = {204, "IPLINK=", "IPLINK"};
constexpr LinkKind kLinkKinds[] = {{105, "L2LINK=", "L2LINK"}, {0, "VLINK=", "VLINK"}, kIpLink};

// The kind in front of the ":"; a prefix that is no number reads as 0, a virtual link. Meant so.
const LinkKind& kindOf(const std::string& linkId) {
  const std::size_t colon = linkId.find(':');
  const std::int32_t number =
      colon == std::string::npos ? -1 : emf::leadingNumber(linkId.substr(0, colon));
  const auto* kind = std::find_if(std::begin(kLinkKinds), std::end(kLinkKinds),
                                  [number](const LinkKind& row) { return row.kind == number; });
  return kind == std::end(kLinkKinds) ? kIpLink : *kind;
}

void reportCode(const char* text, std::int32_t code) {
  std::ostringstream line;
  line << text << ' ' << code << ' ';
  EMF_LOG(GetEmfLog(), kSourceName, LogText, 1, line.str());
}

void reportOther(const char* text) { EMF_LOG(GetEmfLog(), kSourceName, LogText, 1, text); }

// Both link operations name getPhyLink in these lines, meant so.
void reportLinkInfoCode(std::int32_t code) {
  reportCode("[EMFTopoI::getPhyLink] GetLinkInfo. Error:", code);
}

void reportLinkInfoFailed() { reportOther("[EMFTopoI::getPhyLink] GetLinkInfo failed"); }

NS_DOMAIN::PortIndex portOf(const std::string& portResId) {
  NS_DOMAIN::PortIndex port;
  NS_UTIL::ResIDUtil::ResID2PortIndex(portResId, port);
  return port;
}

void convertLinkInfo(const TELinkInfo& info, PhysicalLink& link) {
  const std::size_t equals = info.linkResId.find('=');
  link.linkId = equals == std::string::npos ? info.linkResId : info.linkResId.substr(equals + 1);
  link.linkName = info.linkName;
  link.linkAttribute = info.linkAttribute;
  const NS_DOMAIN::PortIndex source = portOf(info.srcPortResId);
  link.srcDeviceId = std::to_string(source.neID);
  link.srcZero = 0;
  link.srcPortName = source.portName;
  link.srcPortType = source.type;
  link.srcPortStatus = findPortstatusByportidx(source);
  const NS_DOMAIN::PortIndex destination = portOf(info.dstPortResId);
  link.dstDeviceId = std::to_string(destination.neID);
  link.dstZero = 0;
  link.dstPortName = destination.portName;
  link.dstPortType = destination.type;
  link.dstPortStatus = findPortstatusByportidx(destination);
  link.linkStatus = std::max(link.srcPortStatus, link.dstPortStatus);
}

// A batch that fails is logged and lost; the others still count.
void appendBatch(const std::vector<TEUniResID>& batch, std::list<PhysicalLink>& out) {
  try {
    std::vector<TELinkInfo> infos;
    NS_DOMAIN_SOUTHAPISET::GetLinkInfo(batch, kAllAttributes, infos);
    for (const TELinkInfo& info : infos) {
      PhysicalLink link;
      convertLinkInfo(info, link);
      out.push_back(std::move(link));
    }
  } catch (const ProcessException& failure) {
    reportLinkInfoCode(failure.errCode);
  } catch (...) {
    reportLinkInfoFailed();
  }
}

void appendInBatches(std::vector<TEUniResID> ids, std::list<PhysicalLink>& out) {
  for (std::size_t start = 0; start < ids.size(); start += kBatchIds) {
    const auto first = ids.begin() + static_cast<std::ptrdiff_t>(start);
    const auto last = first + static_cast<std::ptrdiff_t>(std::min(kBatchIds, ids.size() - start));
    appendBatch({std::make_move_iterator(first), std::make_move_iterator(last)}, out);
  }
}

}  // namespace

std::int64_t EMFTopoI::getPhyLink(const std::string& linkId, PhysicalLink& out) {
  emf::WatchedCall call("EMFTopoI::getPhyLink");
  const LinkKind& kind = kindOf(linkId);
  TEUniResID id;
  id.uniResId = kind.idPrefix + linkId;
  id.resType = kind.resType;
  try {
    std::vector<TELinkInfo> infos;
    NS_DOMAIN_SOUTHAPISET::GetLinkInfo({id}, kAllAttributes, infos);
    if (infos.empty()) return call.result(kNoSuchLink);
    convertLinkInfo(infos.front(), out);
    return 0;
  } catch (const ProcessException& failure) {
    reportLinkInfoCode(failure.errCode);
    return call.result(failure.errCode);
  } catch (...) {
    reportLinkInfoFailed();
    return call.result(kSouthboundFailed);
  }
}

std::int64_t EMFTopoI::getAllPhyLinks(std::list<PhysicalLink>& out) {
  emf::WatchedCall call("EMFTopoI::getAllPhyLinks");
  EMF_TRACE(kSourceName, TaDebug(1, "[EMFTopoI::getAllPhyLinks]Entered"));
  std::vector<TEUniResID> ids;
  try {
    NS_DOMAIN_SOUTHAPISET::GetLinkID({}, {}, ids);
  } catch (const ProcessException& failure) {
    reportCode("[EMFTopoI::getAllPhyLinks] GetLinkID. Error:", failure.errCode);
    return call.result(failure.errCode);
  } catch (...) {
    reportOther("[EMFTopoI::getAllPhyLinks] GetLinkID failed");
    return call.result(kSouthboundFailed);
  }
  appendInBatches(std::move(ids), out);
  EMF_TRACE(kSourceName, TaDebug(1, "[EMFTopoI::getAllPhyLinks] Leaving"));
  return 0;
}
