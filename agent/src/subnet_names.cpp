#include "subnet_names.h"

#include <algorithm>
#include <thread>

#include "emftopointerface.h"
#include "orma/bundle/config_items.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

// The plug-in has nothing to wait on, so it is asked again and again.
constexpr std::chrono::milliseconds kPollInterval{50};

std::vector<std::string> namesOf(const std::vector<unsigned long>& devices) {
  std::vector<std::string> names(devices.size());
  for (std::size_t i = 0; i < devices.size(); ++i) EMFTopoI::getSubmapName(names[i], devices[i]);
  return names;
}

bool arrived(const std::vector<std::string>& names, Await what) {
  const auto isNamed = [](const std::string& name) { return !name.empty(); };
  return what == Await::kAll ? std::all_of(names.begin(), names.end(), isNamed)
                             : std::any_of(names.begin(), names.end(), isNamed);
}

}  // namespace

const char kSubnetNamesOff[] =
    "no subnet names are kept: the configuration's item \"IsReportSubnet\" is 0 or absent";

bool subnetNamesKept() {
  int kept = 0;
  NS_BUNDLEMGR1::CorbaConfigItems::Instance()->GetIntItemInfo("IsReportSubnet", kept);
  return kept != 0;
}

std::vector<std::string> awaitSubnetNames(const std::vector<unsigned long>& devices, Await what,
                                          std::chrono::seconds longest) {
  const auto end = std::chrono::steady_clock::now() + longest;
  const WaitingFor waiting("the first subnet names");
  auto names = namesOf(devices);
  while (subnetNamesKept() && !devices.empty() && !arrived(names, what) &&
         std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(kPollInterval);
    names = namesOf(devices);
  }
  return names;
}

}  // namespace ormaagent
