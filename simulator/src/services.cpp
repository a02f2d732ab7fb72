#include "services.h"

namespace ormasim {
namespace {

constexpr Service kServices[] = {
    {"/rest/resource/v2/dev-properties", "GET", answerDevProperties},
    {"/rest/topology/v3/tsnodes", "GET", answerTsNodes},
    {"/rest/topology/v3/subnet-view", "POST", answerSubnetView},
};

}  // namespace

const Service* findService(const std::string& path) {
  for (const Service& service : kServices) {
    if (path == service.path) return &service;
  }
  return nullptr;
}

std::vector<std::string> servicePaths() {
  std::vector<std::string> paths;
  for (const Service& service : kServices) paths.emplace_back(service.path);
  return paths;
}

}  // namespace ormasim
