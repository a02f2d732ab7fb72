#include "port_maker.h"

namespace ormasim {
namespace {

constexpr std::int64_t kPortsOfASlot = 24;

}  // namespace

std::int64_t PortMaker::add(std::int64_t deviceId, std::int64_t type, std::int64_t stateA,
                            std::int64_t stateB) {
  const auto device = static_cast<std::size_t>(deviceId);
  if (portsOf_.size() <= device) portsOf_.resize(device + 1);
  const std::int64_t place = portsOf_[device]++;

  PortRow row;
  row.id = ++lastPortId_;
  row.deviceId = deviceId;
  row.frame = 0;
  row.slot = 1 + place / kPortsOfASlot;
  row.card = 0;
  row.port = 1 + place % kPortsOfASlot;
  row.name = "GE0/" + std::to_string(row.slot) + "/" + std::to_string(row.port);
  row.type = type;
  row.stateA = stateA;
  row.stateB = stateB;
  writer_.add(row);
  return row.id;
}

}  // namespace ormasim
