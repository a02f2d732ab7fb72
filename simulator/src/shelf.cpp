#include "shelf.h"

#include <algorithm>
#include <iterator>

#include "resource_ids.h"

namespace ormasim {
namespace {

constexpr std::uint32_t kFilledSlotsPercent = 50;
constexpr std::uint32_t kFilledDaughterSlotsPercent = 60;
constexpr std::uint32_t kRemarkedPortsPercent = 4;

}  // namespace

Shelf::Shelf(InventoryWriter& writer, Random& random, const ShelfElement& element)
    : writer_(writer),
      random_(random),
      element_(element),
      words_(kEquipmentWords[static_cast<int>(element.script)]) {}

void Shelf::make() {
  const auto frames = static_cast<std::int64_t>(element_.frames.size());
  for (std::int64_t frame = 0; frame < frames; ++frame) makeFrame(frame);
}

void Shelf::makeFrame(std::int64_t number) {
  std::int64_t slots = random_.pick(kSlotsOfAFrame);
  // A hub can have more links than the largest shelf would hold.
  if (number == 0 && !element_.linkPorts.empty()) {
    slots = std::max(slots, element_.linkPorts.back().slot);
  }
  const Holder element{"NE=" + std::to_string(element_.id), element_.id};
  const Holder frame = add(element, ",FR=" + std::to_string(number), kFrameType,
                           kFrameTypes + slots, element_.frames[static_cast<std::size_t>(number)]);
  addHardware(frame);
  for (std::int64_t slot = 1; slot <= slots; ++slot) makeSlot(frame, number, slot);
}

void Shelf::makeSlot(const Holder& frame, std::int64_t frameNumber, std::int64_t number) {
  const Board* const board = boardFor(frameNumber, number);
  const Holder slot = add(frame, ",S=" + std::to_string(number), kSlotType,
                          board != nullptr ? board->type : 0, words_.slot + std::to_string(number));
  writer_.addAttribute(slot.id, kWidthAttribute, board != nullptr ? "2" : "1");
  if (board == nullptr) return;
  addHardware(add(slot, ",CP=1", kCardType, board->type, nameOf(*board, number)));
  makePorts(*board, {slot, frameNumber, number, 0});
  for (std::int64_t daughter = 1; daughter <= board->daughterSlots; ++daughter) {
    makeDaughterSlot(slot, {slot, frameNumber, number, daughter});
  }
}

void Shelf::makeDaughterSlot(const Holder& slot, const PortPlace& place) {
  const Board* const board =
      random_.percent(kFilledDaughterSlotsPercent) ? &random_.pick(kDaughterBoards) : nullptr;
  const std::string number = std::to_string(place.daughterSlot);
  const Holder daughterSlot = add(slot, ",SS=" + number, kDaughterSlotType,
                                  board != nullptr ? board->type : 0, words_.daughterSlot + number);
  writer_.addAttribute(daughterSlot.id, kWidthAttribute, "1");
  if (board == nullptr) return;
  addHardware(add(daughterSlot, ",SC=1", kDaughterCardType, board->type,
                  nameOf(*board, place.daughterSlot)));
  makePorts(*board, {daughterSlot, place.frame, place.slot, place.daughterSlot});
}

void Shelf::makePorts(const Board& board, const PortPlace& place) {
  const bool toCustomers = std::any_of(std::begin(kAccessBoards), std::end(kAccessBoards),
                                       [&board](const Board& one) { return &one == &board; });
  for (std::int64_t port = 1; port <= board.ports; ++port) makePort(place, port, toCustomers);
}

void Shelf::makePort(const PortPlace& place, std::int64_t number, bool toCustomers) {
  const LinkPort* const link = linkPort(place, number);
  const std::string value = toCustomers
                                ? std::to_string(place.frame) + "-" + std::to_string(place.slot) +
                                      "-" + std::to_string(number)
                                : std::to_string(number);
  // The daughter slot is in its ports' names already.
  const std::string segments = (place.daughterSlot == 0 ? ",SS=0,PP=" : ",PP=") + value;
  const std::int64_t type = toCustomers ? kCustomerPort : kEthernetPort;
  const Holder port = add(place.holder, segments, kPortType, link != nullptr ? link->type : type,
                          link != nullptr ? link->name : portName(place, number, toCustomers));
  writer_.addAttribute(port.id, kRateAttribute, toCustomers ? "2.5 Gbit/s" : "1 Gbit/s");
}

Shelf::Holder Shelf::add(const Holder& parent, const std::string& segments, std::int64_t mainType,
                         std::int64_t subType, const std::string& name) {
  ResourceRow row;
  row.nativeId = parent.nativeId + segments;
  row.id = resourceIdOf(row.nativeId);
  row.deviceId = element_.id;
  row.sequence = ++sequence_;
  row.parentId = parent.id;
  row.mainType = mainType;
  row.subType = subType;
  row.name = name;
  writer_.add(row);
  return {row.nativeId, row.id};
}

void Shelf::addHardware(const Holder& holder) {
  writer_.addAttribute(holder.id, kSerialNumberAttribute,
                       "21" + std::to_string(1'000'000'000 + random_.below(1'000'000'000)));
  writer_.addAttribute(holder.id, kHardwareAttribute,
                       "VER." + std::string(1, static_cast<char>('A' + random_.below(5))));
  writer_.addAttribute(holder.id, kPlatformAttributes[0], "managed");
}

const Board* Shelf::boardFor(std::int64_t frame, std::int64_t slot) {
  if (portsOfLinks(frame, slot) > 0) return &kLinkBoard;
  if (!random_.percent(kFilledSlotsPercent)) return nullptr;
  return element_.lineTerminal ? &random_.pick(kAccessBoards) : &random_.pick(kBoards);
}

std::int64_t Shelf::portsOfLinks(std::int64_t frame, std::int64_t slot) const {
  if (frame != 0) return 0;
  return std::count_if(element_.linkPorts.begin(), element_.linkPorts.end(),
                       [slot](const LinkPort& port) { return port.slot == slot; });
}

const LinkPort* Shelf::linkPort(const PortPlace& place, std::int64_t number) const {
  if (place.frame != 0 || place.daughterSlot != 0) return nullptr;
  const auto& ports = element_.linkPorts;
  const auto found = std::find_if(ports.begin(), ports.end(), [&](const LinkPort& port) {
    return port.slot == place.slot && port.port == number;
  });
  return found == ports.end() ? nullptr : &*found;
}

std::string Shelf::nameOf(const Board& board, std::int64_t slot) const {
  const char* const name = element_.script == Script::Chinese ? board.chinese : board.name;
  return std::string(name) + " " + std::to_string(slot);
}

std::string Shelf::portName(const PortPlace& place, std::int64_t number, bool toCustomers) {
  std::string name = toCustomers ? "PON" : "GE";
  name += std::to_string(place.frame) + "/" + std::to_string(place.slot) + "/";
  if (place.daughterSlot != 0) name += std::to_string(place.daughterSlot) + "/";
  name += std::to_string(number);
  if (random_.percent(kRemarkedPortsPercent)) name += random_.pick(kPortRemarks);
  return name;
}

}  // namespace ormasim
