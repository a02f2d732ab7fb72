#include "device_listing.h"

#include <algorithm>
#include <charconv>

#include "json_writer.h"

namespace ormasim {
namespace {

constexpr std::int64_t kManagementSystem = 1;
constexpr std::int64_t kFrameMainType = 3;

// On the wire a type is a signed 32-bit number: main types above 32767 come out negative.
std::int64_t typeId(std::int64_t mainType, std::int64_t subType) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(mainType << 16 | (subType & 0xFFFF)));
}

void appendRow(std::string& out, std::string_view nativeId, std::int64_t type,
               std::string_view ipAddress, std::string_view name) {
  out += out.back() != '[' ? ",{" : "{";
  appendMember(out, "nativeId", nativeId);
  out += ',';
  appendMember(out, "typeId", type);
  out += ',';
  appendMember(out, "ipAddress", ipAddress);
  out += ',';
  appendMember(out, "name", name);
  out += '}';
}

// Takes a number off the front of the text.
bool readNumber(std::string_view& text, std::int64_t& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || number < 0) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return true;
}

}  // namespace

std::string markerFor(const DevicePosition& position) {
  std::string marker = "d" + std::to_string(position.device);
  if (position.frame >= 0) marker += "-" + std::to_string(position.frame);
  return marker;
}

std::optional<DevicePosition> positionOf(const std::string& marker) {
  std::string_view rest = marker;
  DevicePosition position;
  if (rest.empty() || rest[0] != 'd') return std::nullopt;
  rest.remove_prefix(1);
  if (rest.empty() || !readNumber(rest, position.device)) return std::nullopt;
  if (!rest.empty()) {
    if (rest[0] != '-') return std::nullopt;
    rest.remove_prefix(1);
    if (rest.empty() || !readNumber(rest, position.frame)) return std::nullopt;
  }
  // Leading zeros and trailing text do not come from here.
  if (markerFor(position) != marker) return std::nullopt;
  return position;
}

DeviceListing::DeviceListing(Database& database)
    : database_(database),
      devices_(database,
               "SELECT dev_id, native_id, main_type, sub_type, ip_address, name FROM device "
               "WHERE dev_id > ? ORDER BY dev_id"),
      frames_(database,
              "SELECT dev_id, frame_no, label FROM frame WHERE (dev_id, frame_no) > (?, ?) "
              "ORDER BY dev_id, frame_no") {}

DevicePage DeviceListing::appendPage(const DevicePosition& after, std::int64_t limit,
                                     std::string& out) {
  DevicePage page;
  page.last = after;
  out += '[';
  std::int64_t left = limit;
  if (after.device < kManagementSystem) {
    appendRow(out, "OS=1", 0, "", "OS");
    page.last = {kManagementSystem, -1};
    --left;
  }

  // Both reads see the same state of the database.
  Transaction transaction(database_);
  devices_.bindAll(std::max(page.last.device, kManagementSystem));
  frames_.bindAll(page.last.device, page.last.frame);
  bool device = devices_.step();
  bool frame = frames_.step();
  for (; left > 0 && (device || frame); --left) {
    // A frame that belongs to the device just listed comes before the next device.
    const bool takeFrame = frame && (!device || frames_.integer(0) < devices_.integer(0));
    if (takeFrame) {
      page.last = {frames_.integer(0), frames_.integer(1)};
      const std::string nativeId =
          "NE=" + std::to_string(page.last.device) + ",FR=" + std::to_string(page.last.frame);
      appendRow(out, nativeId, typeId(kFrameMainType, 0), "", frames_.text(2));
      frame = frames_.step();
    } else {
      page.last = {devices_.integer(0), -1};
      appendRow(out, devices_.text(1), typeId(devices_.integer(2), devices_.integer(3)),
                devices_.text(4), devices_.text(5));
      device = devices_.step();
    }
  }
  out += ']';
  page.more = device || frame;
  devices_.reset();
  frames_.reset();
  transaction.commit();
  return page;
}

}  // namespace ormasim
