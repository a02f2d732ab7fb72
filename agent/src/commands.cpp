#include "command.h"
#include "operations.h"

namespace ormaagent {

namespace {

using Type = ArgumentType;

constexpr CommandGroup kGroups[] = {
    {"topo", "Devices, nodes, submaps and links of the network"},
    {"alarm", "Alarms of the network, their definitions and reasons"},
    {"cache", "Devices from the plug-in's cache, which one lookup fills"},
    {"res", "Resources: names, labels, contents, places, types"},
    {"db", "The configured database, read only"},
    {"config", "The configuration file"},
};

constexpr char kNoSuchDevice[] = "no such device, or the devices could not be read";
constexpr char kNoSuchNode[] = "no such node, or it could not be read";
constexpr char kNoName[] = "the name could not be formed";
constexpr char kNoDevices[] =
    "no devices: the network has none, or it could not be read; in that case the log above says "
    "why";

constexpr char kNoNodes[] =
    "no nodes: none lies directly below the root, or they could not be read; in that case the log "
    "above says why";
constexpr char kNoRoot[] = "no root submap: the platform has none";
constexpr char kNoSubMaps[] = "no submaps: there are none below, or no such submap";
constexpr char kNoSubMap[] = "no such submap";
constexpr char kNoLinks[] =
    "no links: the network has none, or they could not be read; in that case the log above says "
    "why";
constexpr char kNoSubnetName[] =
    "a device without a subnet name: unknown, no origin element, or not read yet (--wait SECONDS)";

constexpr char kRowsCut[] = "reading ended early, for the reason above: there may be more rows";

constexpr char kNoLabels[] =
    "no labels: there are no such resources, or they could not be read; in that case the log above "
    "says why";
constexpr char kNotRead[] = "not all could be read; the log above says why";
constexpr char kNoContents[] = "no resources: the element is unknown or contains none of that type";
constexpr char kNoElement[] = "no such element";
constexpr char kNoPlace[] =
    "no such resource, or its place is not known or could not be read; in that case the log above "
    "says why";
constexpr char kNoResource[] = "no such resource, or it could not be read";
constexpr char kNoAccessTypes[] =
    "no types: the installation (installation.root) has no devicetype.cfg, or it lists none";

constexpr Parameter kIid = {"IID", Type::kInt64, "compatible id of the resource"};

constexpr Option kFrom = {"--from",        "FILE",
                          Type::kNonEmpty, "a file with one name a line; - for standard input",
                          nullptr,         true};
constexpr Option kMainTypeOption = {"--main-type", "N", Type::kInt64,
                                    "3 frame, 4 slot, 5 slot of a daughter card, 6 port, 20 card, "
                                    "21 daughter card"};
constexpr Option kSubTypeOption = {"--sub-type", "N",
                                   Type::kInt64, "only of that sub type, wherever in the element",
                                   nullptr,      true};

constexpr Option kWait = {"--wait", "SECONDS", Type::kSeconds,
                          "how long to wait for the first reading of the subnet names", "5"};

constexpr char kNoAlarms[] = "no alarms: the network has none";
constexpr char kCatalogueFailed[] =
    "the catalogue could not be read, or not to its end; the log above says why";
constexpr char kNoDefinitions[] = "the catalogue of alarms is empty";
constexpr char kNoRedefined[] =
    "no redefined severities: there are none, or they could not be read; in that case the log "
    "above says why";

constexpr Option kSeverity = {
    "--severity", "N", Type::kInt32, "only those of this severity; may be given again for more",
    nullptr,      true};
constexpr Option kAlarmDevice = {
    "--device", "ID", Type::kInt64, "only those of this device; may be given again for more",
    nullptr,    true};
constexpr Option kLimit = {"--limit", "N", Type::kUint64, "only the first so many; 0: all", "0"};

constexpr Command kCommands[] = {
    {"topo devices",
     "Every device of the network, over REST",
     "",
     ResultRule::kZeroSucceeds,
     topoDevices,
     {},
     nullptr,
     kNoDevices},
    {"topo device",
     "One device from the database",
     "12",
     ResultRule::kZeroSucceeds,
     topoDevice,
     {{"ID", Type::kInt64, "device id, cut to 32 bits"}}},
    {"topo version",
     "The version name of a device from the database",
     "12",
     ResultRule::kZeroSucceeds,
     topoVersion,
     {{"ID", Type::kInt32, "device id"}}},
    {"topo location",
     "The location of a device from the database",
     "12",
     ResultRule::kZeroSucceeds,
     topoLocation,
     {{"ID", Type::kInt64, "device id, cut to 32 bits"}}},
    {"topo device-of-node",
     "The device id of a topology node from the database",
     "12",
     ResultRule::kZeroSucceeds,
     topoDeviceOfNode,
     {{"NODE", Type::kText, "node id"}},
     kNoSuchNode},
    {"topo nodes",
     "Every node directly below the root of the topology map",
     "",
     ResultRule::kZeroSucceeds,
     topoNodes,
     {{"SUBMAP", Type::kText, "passed on to the operation, which does not look at it",
       Presence::kOptional}},
     nullptr,
     kNoNodes},
    {"topo node",
     "One node of the topology map",
     "12",
     ResultRule::kZeroSucceeds,
     topoNode,
     {{"NODE", Type::kText, "node id; 1 is the management system"}},
     nullptr,
     kNoSuchNode},
    {"topo root-submaps",
     "The root of the submaps",
     "",
     ResultRule::kZeroSucceeds,
     topoRootSubMaps,
     {},
     nullptr,
     kNoRoot},
    {"topo submaps",
     "The submaps directly below one",
     "S1000",
     ResultRule::kZeroSucceeds,
     topoSubMaps,
     {{"KEY", Type::kNonEmpty, "key of a submap; / for the root's"}},
     nullptr,
     kNoSubMaps},
    {"topo submap",
     "One submap",
     "S1000",
     ResultRule::kZeroSucceeds,
     topoSubMap,
     {{"KEY", Type::kNonEmpty, "key of the submap"}},
     nullptr,
     kNoSubMap},
    {"topo submap-name",
     "The subnets that devices lie in, outermost first",
     "12 13 --wait 10",
     ResultRule::kZeroSucceeds,
     topoSubMapName,
     {{"DEVICE", Type::kUint64, "device ids", Presence::kOneOrMore}},
     kNoSubnetName,
     nullptr,
     {kWait}},
    {"topo links",
     "Every link, with the status of both ends",
     "",
     ResultRule::kZeroSucceeds,
     topoLinks,
     {},
     nullptr,
     kNoLinks},
    {"topo link",
     "One link, with the status of both ends",
     "204:77",
     ResultRule::kZeroSucceeds,
     topoLink,
     {{"LINK", Type::kText, "link id: kind (105 layer 2, 0 virtual, 204 IP), colon, number"}}},
    {"topo tree",
     "The submaps from the root down, with how many submaps and devices each holds",
     "--wait 10",
     ResultRule::kZeroSucceeds,
     topoTree,
     {},
     nullptr,
     kNoRoot,
     {kWait}},
    {"topo draw",
     "A picture of the network: nodes at their positions, links by status, submaps as boxes",
     "--out network.svg",
     ResultRule::kZeroSucceeds,
     topoDraw,
     {},
     nullptr,
     nullptr,
     {{"--out", "FILE", Type::kPicture, "FILE.svg, drawn by Graphviz, or FILE.dot, its input"}}},
    {"alarm current",
     "The current alarms, from the fault server",
     "--severity 1 --severity 2 --limit 20",
     ResultRule::kZeroSucceeds,
     alarmCurrent,
     {},
     nullptr,
     kNoAlarms,
     {kSeverity, kAlarmDevice, kLimit}},
    {"alarm events",
     "Events; in this release the current alarms, whatever the seconds",
     "3600 --device 12",
     ResultRule::kZeroSucceeds,
     alarmEvents,
     {{"SECONDS", Type::kUint32, "passed on to the operation, which does not look at it"}},
     nullptr,
     kNoAlarms,
     {kSeverity, kAlarmDevice, kLimit}},
    {"alarm definitions",
     "What alarms there are, over REST",
     "--severity 1",
     ResultRule::kZeroSucceeds,
     alarmDefinitions,
     {},
     kCatalogueFailed,
     kNoDefinitions,
     {kSeverity, kLimit}},
    {"alarm reasons",
     "Why alarms are raised and what to do about them, over REST",
     "--limit 20",
     ResultRule::kZeroSucceeds,
     alarmReasons,
     {},
     kCatalogueFailed,
     kNoDefinitions,
     {kLimit}},
    {"alarm redefined",
     "Alarms that an operator has given another severity, over REST: at most 500",
     "",
     ResultRule::kZeroSucceeds,
     alarmRedefined,
     {},
     kNoRedefined,
     kNoRedefined,
     {kSeverity, kLimit}},
    {"cache device",
     "The device with an id",
     "12",
     ResultRule::kOneIsFound,
     cacheDevice,
     {{"ID", Type::kInt64, "device id"}},
     kNoSuchDevice},
    {"cache name",
     "Every device of a name",
     "core-1",
     ResultRule::kOneIsFound,
     cacheName,
     {{"NAME", Type::kText, "device name, in the agent's character set"}},
     kNoSuchDevice},
    {"res fdn",
     "The distinguished name of a device id",
     "12",
     ResultRule::kNegativeFails,
     resFdn,
     {{"ID", Type::kUint32, "device id"}},
     kNoName},
    {"res labels",
     "Label and type of resources, grouped by kind",
     "NE=12 NE=12,FR=1 --from names.txt",
     ResultRule::kZeroSucceeds,
     resLabels,
     {{"DN", Type::kNonEmpty, "names of resources", Presence::kAnyNumber}},
     nullptr,
     kNoLabels,
     {kFrom}},
    {"res ne-labels",
     "The label of every network element",
     "",
     ResultRule::kZeroSucceeds,
     resNeLabels,
     {},
     nullptr,
     kNoLabels},
    {"res elements", "Every network element, the management system first", "",
     ResultRule::kZeroSucceeds, resElements},
    {"res contained",
     "What a network element contains, of one type",
     "12 --main-type 6",
     ResultRule::kZeroSucceeds,
     resContained,
     {{"ID", Type::kInt64, "resource ids from the element down", Presence::kOneOrMore}},
     kNotRead,
     kNoContents,
     {kMainTypeOption, kSubTypeOption}},
    {"res tree",
     "A network element with everything below it",
     "12",
     ResultRule::kZeroSucceeds,
     resTree,
     {{"NE", Type::kInt64, "resource id of the element"}},
     kNotRead,
     kNoElement},
    {"res access-labels",
     "Labels of access network resources",
     "NE=12,FR=1,S=2,CP=1",
     ResultRule::kZeroSucceeds,
     resAccessLabels,
     {{"FDN", Type::kNonEmpty, "names of frames, cards and ports", Presence::kOneOrMore}}},
    {"res location",
     "Where a resource stands",
     "1152921504606846988",
     ResultRule::kZeroSucceeds,
     resLocation,
     {kIid},
     kNoPlace},
    {"res maintenance",
     "Who keeps a resource",
     "1152921504606846988",
     ResultRule::kZeroSucceeds,
     resMaintenance,
     {kIid},
     kNoResource},
    {"res attributes",
     "The stored attributes of a resource, from the database",
     "1152921504606846988",
     ResultRule::kZeroSucceeds,
     resAttributes,
     {kIid},
     kNoResource},
    {"res main-types",
     "The main types of resources",
     "",
     ResultRule::kZeroSucceeds,
     resMainTypes,
     {},
     kNotRead},
    {"res access-types",
     "The device types that count as access network elements",
     "",
     ResultRule::kZeroSucceeds,
     resAccessTypes,
     {},
     nullptr,
     kNoAccessTypes},
    {"db query",
     "The rows that an SQL statement gives; one that writes is refused by the database",
     "'SELECT name FROM device WHERE dev_id = :id' --param 12",
     ResultRule::kZeroSucceeds,
     dbQuery,
     {{"SQL", Type::kNonEmpty, "one statement"}},
     kRowsCut,
     nullptr,
     {{"--param", "VALUE", Type::kSqlValue,
       "value of the next placeholder (:name): a text, integer:N, real:N, text:T, bytes:HEX, null:",
       nullptr, true}}},
    {"error-text",
     "The text of an error code",
     "0x411800CC",
     ResultRule::kZeroSucceeds,
     errorText,
     {{"CODE", Type::kErrorCode, "decimal, 0x hexadecimal or 0 octal"}}},
};

}  // namespace

bool succeeded(ResultRule rule, std::int64_t result) {
  switch (rule) {
    case ResultRule::kOneIsFound:
      return result == 1;
    case ResultRule::kNegativeFails:
      return result >= 0;
    default:
      return result == 0;
  }
}

const std::vector<Command>& commands() {
  static const std::vector<Command> all(std::begin(kCommands), std::end(kCommands));
  return all;
}

const std::vector<CommandGroup>& commandGroups() {
  static const std::vector<CommandGroup> all(std::begin(kGroups), std::end(kGroups));
  return all;
}

}  // namespace ormaagent
