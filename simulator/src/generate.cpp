#include "generate.h"

#include "alarms.h"
#include "error.h"
#include "files.h"
#include "generate_links.h"
#include "generate_tables.h"
#include "generate_tree.h"
#include "inventory_schema.h"
#include "inventory_writer.h"
#include "progress.h"
#include "random.h"

namespace ormasim {
namespace {

constexpr std::int64_t kFirstDeviceId = 2;
// Every so many elements one is of a special sort.
constexpr std::uint64_t kRootElementEvery = 40;
constexpr std::uint64_t kContainerEvery = 50;
constexpr std::uint64_t kForeignEvery = 25;
constexpr std::int64_t kFramesEvery = 20;

std::string padded(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return digits.size() < 4 ? std::string(4 - digits.size(), '0') + digits : digits;
}

std::string ipAddressOf(std::int64_t id) {
  return "10." + std::to_string(id >> 16 & 0xFF) + "." + std::to_string(id >> 8 & 0xFF) + "." +
         std::to_string(id & 0xFF);
}

class Generator {
 public:
  Generator(Database& database, const GenerateOptions& options)
      : options_(options),
        random_(options.seed),
        database_(database),
        writer_(database),
        tree_(writer_, random_, options.elements),
        progress_("Generating", options.elements) {}

  void run() {
    LinkMaker links(writer_, random_);
    for (std::uint64_t index = 0; index < options_.elements; ++index) {
      addElement(index, links);
      progress_.advance();
    }
    links.addCrossLinks();
    equipInventory(database_, writer_, {options_.equipped, options_.seed});
  }

 private:
  void addElement(std::uint64_t index, LinkMaker& links) {
    const bool siteHead = leftInSite_ == 0;
    if (siteHead) {
      site_ = tree_.openSite();
      leftInSite_ = 4 + random_.below(21);
    }
    --leftInSite_;
    const std::int64_t id = kFirstDeviceId + static_cast<std::int64_t>(index);
    const bool atRoot = index % kRootElementEvery == 0;
    addDevice(id, index, atRoot || siteHead ? kRoles[random_.below(2)] : kRoles[random_.below(6)],
              atRoot);
    addLocation(id);
    addFrames(id);
    links.addDevice(id, siteHead);
  }

  void addDevice(std::int64_t id, std::uint64_t index, const Role& role, bool atRoot) {
    const bool chinese = site_.city->script == Script::Chinese;
    DeviceRow row;
    row.id = id;
    row.nodeClass = index % kContainerEvery == 17 ? "container" : "ne";
    row.subnetId = atRoot ? kRootObjectId : site_.subnetId;
    row.mainType = role.mainType;
    row.subType = role.subType;
    row.ipAddress = ipAddressOf(id);
    row.name = std::string(site_.city->name) + "-" + (chinese ? role.chinese : role.code) + "-" +
               padded(id);
    // One draw a statement: the order of operands is the compiler's own.
    row.versionName = role.versionPrefix + std::to_string(1 + random_.below(4));
    row.versionName += "." + std::to_string(random_.below(20));
    row.origin = index % kForeignEvery == 11 ? 0 : 1;
    row.iconFile = role.iconFile;
    row.exInfo = std::string("NodeType=") + role.nodeType +
                 ";ProcID=" + std::to_string(1 + random_.below(64)) + (atRoot ? ";MainNode=1" : "");
    row.remark = random_.percent(10) ? kRemarks[random_.below(std::size(kRemarks))] : "";
    row.posX = site_.posX + random_.around(12);
    row.posY = site_.posY + random_.around(12);
    writer_.add(row);
  }

  void addLocation(std::int64_t id) {
    const std::uint32_t parts = 2 + random_.below(3);
    const Words& words = kWords[static_cast<int>(site_.city->script)];
    const std::string all[] = {site_.city->country, site_.city->name, site_.label,
                               words.rack + std::to_string(1 + random_.below(40))};
    for (std::uint32_t part = 0; part < parts; ++part) writer_.addLocation(id, part, all[part]);
  }

  void addFrames(std::int64_t id) {
    const bool certain = id % kFramesEvery == 0;
    if (!certain && !random_.percent(10)) return;
    const std::uint32_t frames = 1 + random_.below(4);
    const Words& words = kWords[static_cast<int>(site_.city->script)];
    for (std::uint32_t frame = 0; frame < frames; ++frame) {
      writer_.add(FrameRow{id, frame, words.frame + std::to_string(frame)});
    }
  }

  const GenerateOptions options_;
  Random random_;
  Database& database_;
  InventoryWriter writer_;
  SubnetTree tree_;
  Progress progress_;
  Site site_;
  std::uint32_t leftInSite_ = 0;
};

}  // namespace

void generateInventory(Database& database, const GenerateOptions& options) {
  if (options.elements > kMaxElements) {
    throw SimError("cannot generate " + std::to_string(options.elements) +
                   " elements: the limit is " + std::to_string(kMaxElements));
  }
  Generator(database, options).run();
  writeAlarmCatalogue(database, options.definitions);
  generateAlarms(database, options.alarms.value_or(usualAlarms(options.elements)), options.seed);
}

void generateFile(const std::string& file, const GenerateOptions& options, bool replace) {
  if (!replace && fileExists(file)) {
    throw SimError("will not overwrite " + file + ": give --force, or another file");
  }
  NewDatabaseFile made(file);
  generateInventory(made.database(), options);
  made.publish();
}

}  // namespace ormasim
