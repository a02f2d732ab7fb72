#include "generate_links.h"

#include <algorithm>
#include <iterator>

#include "generate_tables.h"

namespace ormasim {
namespace {

// A head links to one of the last so many, which keeps the graph long rather than a star.
constexpr std::size_t kHeadsInReach = 12;
constexpr std::uint32_t kDevicesForACrossLink = 5;

struct LinkSort {
  LinkKind kind;
  std::int64_t portType;
};

constexpr LinkSort kIp = {LinkKind::Ip, 0x10002};
constexpr LinkSort kLayer2 = {LinkKind::Layer2, 0x10003};
constexpr LinkSort kVirtual = {LinkKind::Virtual, 0x10008};

}  // namespace

void LinkMaker::addDevice(std::int64_t id, bool siteHead) {
  if (devices_++ == 0) firstDevice_ = id;
  if (!siteHead) {
    link(id, heads_.back());
    return;
  }
  if (!heads_.empty()) {
    const auto reach = static_cast<std::uint32_t>(std::min(kHeadsInReach, heads_.size()));
    link(id, heads_[heads_.size() - 1 - random_.below(reach)]);
  }
  heads_.push_back(id);
}

void LinkMaker::addCrossLinks() {
  for (std::uint32_t n = 0; n < devices_ / kDevicesForACrossLink; ++n) {
    const std::uint32_t a = random_.below(devices_);
    const std::uint32_t z = random_.below(devices_);
    if (a != z) link(firstDevice_ + a, firstDevice_ + z);
  }
}

void LinkMaker::link(std::int64_t a, std::int64_t z) {
  const LinkSort& sort = random_.percent(80) ? kIp : random_.percent(60) ? kLayer2 : kVirtual;
  LinkRow row;
  row.kind = sort.kind;
  row.portA = addPort(a, sort.portType);
  row.portZ = addPort(z, sort.portType);
  row.id = ++lastLinkId_;
  row.name = "NE" + std::to_string(a) + " - NE" + std::to_string(z);
  row.attribute = random_.below(8);
  writer_.add(row);
}

std::int64_t LinkMaker::addPort(std::int64_t deviceId, std::int64_t type) {
  std::uint32_t chance = random_.below(100);
  const PortState* state = std::begin(kPortStates);
  while (chance >= state->share) {
    chance -= state->share;
    ++state;
  }
  return ports_.add(deviceId, type, state->first, state->second);
}

}  // namespace ormasim
