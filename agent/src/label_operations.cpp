// Labels of resources by their names.
#include <list>
#include <map>
#include <string>
#include <vector>

#include "emfresinterface.h"
#include "exit_status.h"
#include "host_failure.h"
#include "name_list.h"
#include "operations.h"

namespace ormaagent {

namespace {

constexpr Column<ResourceDn> kResourceDn[] = {
    {"resDN", fieldOf<&ResourceDn::resDN>},
    {"resID", fieldOf<&ResourceDn::resID>},
    {"label", fieldOf<&ResourceDn::label>},
    {"resMainTypeID", [](const ResourceDn& row) -> Value { return row.type.resMainTypeID; }},
    {"resSubTypeID", [](const ResourceDn& row) -> Value { return row.type.resSubTypeID; }},
};

using NamedLabel = std::map<std::string, std::string>::value_type;

constexpr Column<NamedLabel> kNamedLabel[] = {
    {"fdn", [](const NamedLabel& row) -> Value { return row.first; }},
    {"label", [](const NamedLabel& row) -> Value { return row.second; }},
};

// The locations are the caller's own, and this one has none.
constexpr Column<ResourceEightLoc> kAccessLabel[] = {
    {"fdn", fieldOf<&ResourceEightLoc::fdn>},
    {"label", fieldOf<&ResourceEightLoc::label>},
};

}  // namespace

Answer resLabels(const Arguments& arguments) {
  std::map<int, std::string> dns;
  for (const std::string& dn : readNames(arguments.texts(), arguments.repeatedOption("--from"))) {
    dns.emplace_hint(dns.end(), static_cast<int>(dns.size()), dn);
  }
  if (dns.empty()) {
    throw HostFailure(kExitUsage,
                      "there is no DN: name some, or give a --from FILE that holds some");
  }
  std::list<ResourceDn> labels;
  const std::int64_t result = EMFResMgrI::getResourceLabels(labels, dns);
  return answerOf(result, kResourceDn, labels);
}

Answer resNeLabels(const Arguments&) {
  std::map<std::string, std::string> labels;
  const std::int64_t result = EMFResMgrI::getAllNeResLabel(labels);
  return answerOf(result, kNamedLabel, labels);
}

Answer resAccessLabels(const Arguments& arguments) {
  std::map<int, ResourceEightLoc> locations;
  for (std::size_t i = 0; i < arguments.count(); ++i) {
    locations[static_cast<int>(i)].fdn = arguments.text(i);
  }
  const std::int64_t result = EMFResMgrI::getAccessResourceLabels(locations);
  std::vector<ResourceEightLoc> rows;
  rows.reserve(locations.size());
  for (const auto& [position, location] : locations) rows.push_back(location);
  return answerOf(result, kAccessLabel, rows);
}

}  // namespace ormaagent
