// What the plug-in makes of answers of any JSON: an operation ends, with a result or an exception
// that it may let out. The first byte of an input chooses the operation; its lines are the answers
// to one exchange after the other. Where a line is no JSON, or none is left, the exchange fails.
#include <json/value.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "emfalminterface.h"
#include "emfresinterface.h"
#include "emftopointerface.h"
#include "json_reader.h"
#include "platform.h"
#include "submapbufmgr.h"

namespace {

using emf::doubles::platform;

constexpr std::size_t kNesting = 20;

// The answers that are left.
class Script {
 public:
  explicit Script(std::string_view lines) : lines_(lines) {}

  bool next(Json::Value& answer) {
    const std::size_t end = lines_.find('\n');
    std::string line(lines_.substr(0, end));
    lines_ = end == std::string_view::npos ? std::string_view() : lines_.substr(end + 1);
    std::string reason;
    return orma::rest::JsonReader(kNesting).read(line, answer, reason) !=
           orma::rest::JsonOutcome::Refused;
  }

 private:
  std::string_view lines_;
};

template <typename List, typename Query>
void fill(Query query) {
  List list;
  query(list);
}

using Labels = std::list<ResourceDn>;
const std::vector<std::string> kNames(250, "NE=2,FR=0");
constexpr std::int64_t kIid = (std::int64_t{1} << 60) + 2;

void accessLabels() {
  std::map<int, ResourceEightLoc> locations;
  int position = 0;
  for (const char* fdn : {"NE=2,FR=0", "NE=2,FR=0,S=1,SS=1,SC=1", "NE=2,FR=0,S=1,CP=1"}) {
    locations[position++].fdn = fdn;
  }
  EMFResMgrI::getAccessResourceLabels(locations);
}

void refreshSubnetLinks() {
  SubmapBufMgr::Instance()->QuerySubnetAndNodesInfo();
  SubmapBufMgr::Destroy();
}

using Operation = void (*)();
constexpr Operation kOperations[] = {
    [] { fill<Labels>([](auto& out) { EMFResMgrI::getPortResourceLabelsByRest(out, kNames); }); },
    [] { fill<Labels>([](auto& out) { EMFResMgrI::getSlotResourceLabelsByRest(out, kNames); }); },
    [] { fill<Labels>([](auto& out) { EMFResMgrI::getCardResourceLabelsByRest(out, kNames); }); },
    [] { fill<Labels>([](auto& out) { EMFResMgrI::getFrameResourceLabelsByRest(out, kNames); }); },
    [] { fill<Labels>([](auto& out) { EMFResMgrI::getNEResourceLabelsByRest(out, kNames); }); },
    [] { fill<std::map<std::string, std::string>>(EMFResMgrI::getAllNeResLabel); },
    [] { fill<std::list<Resource>>(EMFResMgrI::getAllManagedElements); },
    [] {
      fill<std::list<Resource>>([](auto& out) {
        EMFResMgrI::getContainedResourceByMainType({2}, Nimbola::MAIN_TYPE_UNKNOWN, out);
      });
    },
    accessLabels,
    [] { fill<LocationInfo_>([](auto& out) { EMFResMgrI::getResourceLocation(kIid, out); }); },
    [] {
      fill<std::list<MaintenanceInfo>>(
          [](auto& out) { EMFResMgrI::getResourceMaintenances(kIid, out); });
    },
    [] { fill<std::list<NbiResMainType>>(EMFResMgrI::getResMainType); },
    [] { fill<std::list<Device>>(EMFTopoI::getAllDevices); },
    [] { fill<std::list<Node>>([](auto& out) { EMFTopoI::getAllNodes("102", out); }); },
    [] { fill<std::list<SubMap>>(EMFTopoI::getAllRootSubMaps); },
    [] { fill<std::list<SubMap>>([](auto& out) { EMFTopoI::getAllSubMaps("102", out); }); },
    [] { fill<SubMap>([](auto& out) { EMFTopoI::getSubMap("102", out); }); },
    refreshSubnetLinks,
    [] { fill<std::vector<AlarmCfg>>(EMFAlarmI::getAllAlarmCfg); },
    [] { fill<std::vector<AlarmReason>>(EMFAlarmI::getAllAlarmReason); },
    [] { fill<std::vector<AlarmCfg>>(EMFAlarmI::getRedefineAlarmInfo); },
};

void answerBy(Script& script) {
  const auto answer = [&script](const auto&, Json::Value& value) { return script.next(value); };
  platform().rest.answersBy(answer);
  platform().resources.answersBy(answer);
  platform().alarms.answersBy(answer);
  // The two that are scripted beforehand take a copy.
  Script copy = script;
  Json::Value value;
  std::vector<Json::Value> devices;
  while (devices.size() < 1000 && copy.next(value)) {
    platform().rest.topoViewAnswers(value);
    devices.push_back(std::move(value));
  }
  platform().rest.devices(std::move(devices));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Script script(std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  platform().reset();
  platform().text.convertsTruly();
  answerBy(script);
  try {
    kOperations[data[0] % std::size(kOperations)]();
  } catch (const Json::Exception&) {
    // A member of a wrong type.
  } catch (const std::invalid_argument&) {
    // A native id without a number.
  } catch (const std::out_of_range&) {
    // A number beyond its range, or a text that ends where more was meant to be.
  }
  platform().reset();  // the script ends with this call
  return 0;
}
