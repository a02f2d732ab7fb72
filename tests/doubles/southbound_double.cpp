#include "southbound_double.h"

#include <stdexcept>

#include "outage.h"
#include "platform.h"

namespace emf::doubles {
namespace {

// The script of this call: the next one of those for single calls, or the standing one.
template <typename Script>
Script takeScript(std::deque<Script>& next, const Script& standing) {
  if (next.empty()) return standing;
  Script script = std::move(next.front());
  next.pop_front();
  return script;
}

// Out of reach, with the code of that, or failing in a way that has none.
void failIfOut(const char* kind) {
  const int way = outage(kind, 2);
  if (way == 0) failsWith(kOutageCode).raise();
  if (way == 1) failsOtherwise().raise();
}

}  // namespace

void Failure::raise() const {
  if (!isProcessException) throw std::runtime_error("the southbound interface refuses");
  ProcessException failure;
  failure.errCode = code;
  throw failure;
}

void SouthboundDouble::links(const std::vector<std::string>& ids) {
  linkIds([ids](UniResIds& out) {
    for (const std::string& text : ids) {
      TEUniResID id;
      id.uniResId = text;
      id.resType = text.substr(0, text.find('='));
      out.push_back(std::move(id));
    }
  });
}

void SouthboundDouble::linkIds(LinkIdScript script) {
  std::lock_guard lock(mutex_);
  linkIdScript_ = std::move(script);
}

void SouthboundDouble::linkInfos(LinkInfoScript script) {
  std::lock_guard lock(mutex_);
  linkInfoScript_ = std::move(script);
}

void SouthboundDouble::linkInfosThen(LinkInfoScript script) {
  std::lock_guard lock(mutex_);
  nextLinkInfos_.push_back(std::move(script));
}

void SouthboundDouble::portStates(PortStatusScript script) {
  std::lock_guard lock(mutex_);
  portStatusScript_ = std::move(script);
}

void SouthboundDouble::portStatesThen(PortStatusScript script) {
  std::lock_guard lock(mutex_);
  nextPortStates_.push_back(std::move(script));
}

std::vector<LinkIdCall> SouthboundDouble::linkIdCalls() const {
  std::lock_guard lock(mutex_);
  return linkIdCalls_;
}

std::vector<LinkInfoCall> SouthboundDouble::linkInfoCalls() const {
  std::lock_guard lock(mutex_);
  return linkInfoCalls_;
}

std::vector<PortStatusCall> SouthboundDouble::portStatusCalls() const {
  std::lock_guard lock(mutex_);
  return portStatusCalls_;
}

void SouthboundDouble::reset() {
  std::lock_guard lock(mutex_);
  linkIdScript_ = nullptr;
  linkInfoScript_ = nullptr;
  portStatusScript_ = nullptr;
  nextLinkInfos_.clear();
  nextPortStates_.clear();
  linkIdCalls_.clear();
  linkInfoCalls_.clear();
  portStatusCalls_.clear();
}

void SouthboundDouble::getLinkIds(LinkIdCall call, UniResIds& out) {
  platform().journal.note("link ids");
  failIfOut("link ids");
  LinkIdScript script;
  {
    std::lock_guard lock(mutex_);
    linkIdCalls_.push_back(std::move(call));
    script = linkIdScript_;
  }
  if (script) script(out);
}

void SouthboundDouble::getLinkInfos(LinkInfoCall call, std::vector<TELinkInfo>& out) {
  platform().journal.note("link infos: " + std::to_string(call.ids.size()));
  failIfOut("link infos");
  const UniResIds ids = call.ids;
  LinkInfoScript script;
  {
    std::lock_guard lock(mutex_);
    linkInfoCalls_.push_back(std::move(call));
    script = takeScript(nextLinkInfos_, linkInfoScript_);
  }
  if (script) script(ids, out);
}

void SouthboundDouble::getPortStatus(PortStatusCall call, TEErrInfoReturn& errors,
                                     std::vector<TEPortOAMStatus>& out) {
  const UniResIds ids = call.ids;
  platform().journal.note("port status: " + (ids.empty() ? "" : ids.front().uniResId));
  failIfOut("port status");
  PortStatusScript script;
  {
    std::lock_guard lock(mutex_);
    portStatusCalls_.push_back(std::move(call));
    script = takeScript(nextPortStates_, portStatusScript_);
  }
  if (script) script(ids, errors, out);
}

SouthboundDouble::PortStatusScript state(std::int32_t first, std::int32_t second) {
  return
      [first, second](const UniResIds& ids, TEErrInfoReturn&, std::vector<TEPortOAMStatus>& out) {
        for (const TEUniResID& id : ids) out.push_back({id.uniResId, first, second});
      };
}

SouthboundDouble::PortStatusScript answer(std::vector<TEPortOAMStatus> answers) {
  return [answers = std::move(answers)](const UniResIds&, TEErrInfoReturn&,
                                        std::vector<TEPortOAMStatus>& out) { out = answers; };
}

}  // namespace emf::doubles

using emf::doubles::platform;

namespace NS_DOMAIN_SOUTHAPISET {

void GetLinkID(const std::vector<int>& elements, const std::vector<int>& kinds,
               std::vector<TEUniResID>& out) {
  platform().southbound.getLinkIds({elements, kinds, out.size()}, out);
}

void GetLinkInfo(const std::vector<TEUniResID>& ids, const int& mask,
                 std::vector<TELinkInfo>& out) {
  platform().southbound.getLinkInfos({ids, mask, out.size()}, out);
}

void GetPortStatus(const std::vector<TEUniResID>& ids, TEErrInfoReturn& errors,
                   std::vector<TEPortOAMStatus>& out) {
  platform().southbound.getPortStatus({ids, errors.number, errors.entries.size(), out.size()},
                                      errors, out);
}

}  // namespace NS_DOMAIN_SOUTHAPISET
