// The operations that read the device listing.
#include "deviceinfo.h"
#include "emfresinterface.h"
#include "emftopointerface.h"
#include "rest_operation_groups.h"

namespace emf::faults {
namespace {

const Exchange kFirstDevices = {
    R"({"objList":[{"nativeId":"OS=1","typeId":0,"ipAddress":"","name":"OS"},)"
    R"({"nativeId":"NE=12","typeId":327683,"ipAddress":"10.0.0.12","name":"core-12"},)"
    R"({"nativeId":"NE=12,FR=0","typeId":196608,"ipAddress":"","name":"Frame 0"}],)"
    R"("isTruncated":true,"marker":"d12"})",
    {"12|5|3|10.0.0.12|core-12"}};
const Exchange kLastDevices = {
    R"({"objList":[{"nativeId":"NE=13","typeId":327684,"ipAddress":"10.0.0.13",)"
    R"("name":"core-13"}],"isTruncated":false,"marker":""})",
    {"13|5|4|10.0.0.13|core-13"}};

RestOperation deviceOperation(const std::string& name, const RestResults& results,
                              std::vector<std::string> first, std::vector<std::string> last,
                              std::function<Outcome()> call) {
  RestOperation operation{name, "objList", results, {kFirstDevices, kLastDevices}, std::move(call)};
  operation.exchanges[0].records = std::move(first);
  operation.exchanges[1].records = std::move(last);
  operation.allOrNone = true;
  operation.isListing = true;
  operation.throws = {kLogicError, "std::invalid_argument", "std::out_of_range"};
  return operation;
}

// An operation of a device cache that is empty.
template <typename Call>
Outcome ofColdCache(Call call) {
  DeviceInfo::Destroy();
  Outcome outcome = call(*DeviceInfo::Instance());
  DeviceInfo::Destroy();
  return outcome;
}

void addDevices(std::vector<RestOperation>& all) {
  RestOperation operation = deviceOperation(
      "EMFTopoI::getAllDevices", {"0", "0", "0", "0"}, kFirstDevices.records, kLastDevices.records,
      [] { return appended(std::list<Device>(1), EMFTopoI::getAllDevices); });
  operation.before = {earlier<Device>()};
  all.push_back(operation);
  // A listing that failed is an empty one: the cache is emptied, and that is success.
  all.push_back(deviceOperation("DeviceInfo::setDeviceMap", {"1", "1", "1", "1"}, {}, {}, [] {
    return ofColdCache([](DeviceInfo& cache) {
      return Outcome{resultOf([&] { return cache.setDeviceMap(); }), {}};
    });
  }));
  operation = deviceOperation(
      "DeviceInfo::getDeviceByID", {"1", "0", "0", "0"}, kFirstDevices.records, {}, [] {
        return ofColdCache([](DeviceInfo& cache) {
          return written(Device(), [&](Device& out) { return cache.getDeviceByID(12, out); });
        });
      });
  operation.before = {earlier<Device>()};
  operation.replaces = true;
  all.push_back(operation);
  all.push_back(deviceOperation(
      "DeviceInfo::getDeviceByName", {"1", "0", "0", "0"}, {}, kLastDevices.records, [] {
        return ofColdCache([](DeviceInfo& cache) {
          return appended(std::list<Device>(1), [&](std::list<Device>& out) {
            return cache.getDeviceByName("core-13", out);
          });
        });
      }));
  operation = deviceOperation("EMFResMgrI::getAllNeResLabel", {"0", "0", "0", "0"}, {}, {}, [] {
    return appended(std::map<std::string, std::string>{{"A", "earlier"}},
                    EMFResMgrI::getAllNeResLabel);
  });
  operation.before = {"A|earlier"};
  operation.exchanges[0].records = {"NE=12|core-12"};
  operation.exchanges[1].records = {"NE=13|core-13", "OS=1|OS"};
  all.push_back(operation);
}

}  // namespace

void addDeviceOperations(std::vector<RestOperation>& all) { addDevices(all); }

}  // namespace emf::faults
