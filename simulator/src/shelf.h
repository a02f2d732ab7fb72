// The shelf of one element: its frames, with slots, cards, daughter cards and ports in them.
//
//   Shelf shelf(writer, random, element);
//   shelf.make();
//
// Names on the platform: a frame is "NE=2,FR=0", a slot "…,S=3", its card "…,S=3,CP=1" and the
// card's ports "…,S=3,SS=0,PP=5". A daughter slot is "…,S=3,SS=1", its card "…,S=3,SS=1,SC=1" and
// that card's ports "…,S=3,SS=1,PP=5". Ports to customers have their place in their number:
// "…,S=3,SS=0,PP=0-3-5".
//
// Thread-safety: thread-compatible. Failure: SimError.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "equipment_tables.h"
#include "generate_tables.h"
#include "inventory_writer.h"
#include "random.h"

namespace ormasim {

// A port that the links have made: on the first frame, on the card of its slot.
struct LinkPort {
  std::int64_t slot = 0;
  std::int64_t port = 0;
  std::int64_t type = 0;
  std::string name;
};

struct ShelfElement {
  std::int64_t id = 0;
  Script script = Script::Latin;
  bool lineTerminal = false;
  std::vector<std::string> frames;  // their names, by number from 0
  std::vector<LinkPort> linkPorts;  // by slot and port
};

class Shelf {
 public:
  Shelf(InventoryWriter& writer, Random& random, const ShelfElement& element);

  void make();

 private:
  // Something that holds others: its name on the platform and its id.
  struct Holder {
    std::string nativeId;
    std::int64_t id = 0;
  };
  // Where ports stand: the holder, the numbers in their names, and the links' own ports by number.
  struct PortPlace {
    const Holder& holder;
    std::int64_t frame;
    std::int64_t slot;
    std::int64_t daughterSlot;  // 0: on the card itself
  };

  void makeFrame(std::int64_t number);
  void makeSlot(const Holder& frame, std::int64_t frameNumber, std::int64_t number);
  void makeDaughterSlot(const Holder& slot, const PortPlace& place);
  void makePorts(const Board& board, const PortPlace& place);
  void makePort(const PortPlace& place, std::int64_t number, bool toCustomers);
  Holder add(const Holder& parent, const std::string& segments, std::int64_t mainType,
             std::int64_t subType, const std::string& name);
  void addHardware(const Holder& holder);

  // What a slot holds; null: nothing.
  const Board* boardFor(std::int64_t frame, std::int64_t slot);
  const LinkPort* linkPort(const PortPlace& place, std::int64_t number) const;
  std::int64_t portsOfLinks(std::int64_t frame, std::int64_t slot) const;
  std::string nameOf(const Board& board, std::int64_t slot) const;
  std::string portName(const PortPlace& place, std::int64_t number, bool toCustomers);

  InventoryWriter& writer_;
  Random& random_;
  const ShelfElement& element_;
  const EquipmentWords& words_;
  std::int64_t sequence_ = 0;
};

}  // namespace ormasim
