#include "equip.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "equipment_tables.h"
#include "generate_tables.h"
#include "progress.h"
#include "random.h"
#include "shelf.h"

namespace ormasim {
namespace {

// Keeps an element's chances apart from those of its neighbours.
constexpr std::uint64_t kSeedStep = 0xD1B54A32D192ED03u;
constexpr std::uint32_t kMostKeepers = 3;
constexpr auto kKeeperCount = static_cast<std::uint32_t>(std::size(kKeepers));

const City* cityNamed(const std::string& name) {
  const City* const city = std::find_if(std::begin(kCities), std::end(kCities),
                                        [&name](const City& one) { return name == one.name; });
  return city == std::end(kCities) ? nullptr : city;
}

struct Device {
  std::int64_t id;
  bool lineTerminal;
};

class Equipper {
 public:
  Equipper(Database& database, InventoryWriter& writer, const EquipOptions& options)
      : writer_(writer),
        options_(options),
        devices_(database, "SELECT dev_id, main_type FROM device ORDER BY dev_id LIMIT ?"),
        frames_(database, "SELECT label FROM frame WHERE dev_id = ? ORDER BY frame_no"),
        ports_(database,
               "SELECT slot, port, type, name FROM port WHERE dev_id = ? "
               "ORDER BY slot, port"),
        location_(database, "SELECT part FROM device_location WHERE dev_id = ? ORDER BY seq") {}

  void run() {
    for (const MainTypeName& type : kMainTypes) writer_.addMainType(type.id, type.name);
    addKeepers();
    const std::vector<Device> devices = firstDevices();
    Progress progress("Equipping", devices.size());
    for (const Device& device : devices) {
      equip(device);
      progress.advance();
    }
  }

 private:
  void addKeepers() {
    std::int64_t id = 0;
    for (const Keeper& keeper : kKeepers) {
      writer_.add(KeeperRow{++id, keeper.name, keeper.dept, keeper.phoneNo, keeper.email});
    }
  }

  std::vector<Device> firstDevices() {
    std::vector<Device> devices;
    devices_.bindAll(static_cast<std::int64_t>(options_.elements));
    while (devices_.step()) {
      devices.push_back({devices_.integer(0), devices_.integer(1) == kLineTerminalMainType});
    }
    devices_.reset();
    return devices;
  }

  void equip(const Device& device) {
    Random random(options_.seed ^ kSeedStep * static_cast<std::uint64_t>(device.id));
    ShelfElement element;
    element.id = device.id;
    element.lineTerminal = device.lineTerminal;
    const std::vector<std::string> location = texts(location_, element.id);
    const City* const city = location.size() < 2 ? nullptr : cityNamed(location[1]);
    if (city != nullptr) element.script = city->script;
    addFrames(element, random);
    readLinkPorts(element);
    Shelf(writer_, random, element).make();
    addAttributes(element, random);
    addPlace(element, location, city, random);
    addDeviceKeepers(element, random);
  }

  // Those that the element has; one without gets some, which are listed like the others.
  void addFrames(ShelfElement& element, Random& random) {
    element.frames = texts(frames_, element.id);
    if (!element.frames.empty()) return;
    const char* const word = kEquipmentWords[static_cast<int>(element.script)].frame;
    const std::int64_t count = random.pick(kFramesOfAnElement);
    for (std::int64_t frame = 0; frame < count; ++frame) {
      element.frames.push_back(word + std::to_string(frame));
      writer_.add(FrameRow{element.id, frame, element.frames.back()});
    }
  }

  void readLinkPorts(ShelfElement& element) {
    ports_.bindAll(element.id);
    while (ports_.step()) {
      element.linkPorts.push_back(
          {ports_.integer(0), ports_.integer(1), ports_.integer(2), std::string(ports_.text(3))});
    }
    ports_.reset();
  }

  void addAttributes(const ShelfElement& element, Random& random) {
    const auto add = [&](std::int64_t number, const std::string& value) {
      writer_.addAttribute(element.id, number, value);
    };
    add(kModelAttribute, (element.lineTerminal ? "LT-" : "RX-") + std::to_string(random.below(9)));
    add(kSerialNumberAttribute, "20" + std::to_string(1'000'000'000 + element.id));
    const std::string year = std::to_string(2005 + random.below(20));
    add(kInstalledAttribute, year + "-0" + std::to_string(1 + random.below(9)));
    add(kOwnerAttribute, random.pick(kOwners));
    add(kContractAttribute, "K-" + std::to_string(random.below(1000)));
    for (const std::int64_t number : kPlatformAttributes) add(number, "internal");
  }

  void addPlace(const ShelfElement& element, const std::vector<std::string>& location,
                const City* city, Random& random) {
    const EquipmentWords& words = kEquipmentWords[static_cast<int>(element.script)];
    PlaceRow row;
    row.deviceId = element.id;
    if (!location.empty()) row.country = location[0];
    if (city != nullptr) {
      row.city = city->name;
      row.province = city->region;
    }
    row.address = words.street + std::to_string(1 + random.below(200)) + words.houseNumber;
    writer_.add(row);
  }

  // One element in four has none.
  void addDeviceKeepers(const ShelfElement& element, Random& random) {
    const std::uint32_t count = random.below(kMostKeepers + 1);
    const std::uint32_t first = random.below(kKeeperCount);
    for (std::uint32_t n = 0; n < count; ++n) {
      writer_.addDeviceKeeper(element.id, n, 1 + (first + n) % kKeeperCount);
    }
  }

  static std::vector<std::string> texts(Statement& statement, std::int64_t deviceId) {
    std::vector<std::string> result;
    statement.bindAll(deviceId);
    while (statement.step()) result.emplace_back(statement.text(0));
    statement.reset();
    return result;
  }

  InventoryWriter& writer_;
  const EquipOptions options_;
  Statement devices_;
  Statement frames_;
  Statement ports_;
  Statement location_;
};

}  // namespace

void equipInventory(Database& database, InventoryWriter& writer, const EquipOptions& options) {
  Equipper(database, writer, options).run();
}

}  // namespace ormasim
