#include "command.h"
#include "operations.h"

namespace ormaagent {

namespace {

using Type = ArgumentType;

constexpr CommandGroup kGroups[] = {
    {"topo", "Devices of the network, asked from the platform"},
    {"cache", "Devices from the plug-in's cache, which one lookup fills"},
    {"res", "Names of resources"},
    {"config", "The configuration file"},
};

constexpr char kNoSuchDevice[] = "no such device, or the devices could not be read";
constexpr char kNoSuchNode[] = "no such node, or it could not be read";
constexpr char kNoName[] = "the name could not be formed";
constexpr char kNoDevices[] =
    "no devices: the network has none, or it could not be read; in that case the log above says "
    "why";

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
