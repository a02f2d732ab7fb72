// The REST services, one row each in services.cpp and one file each: service_<name>.cpp.
#pragma once

#include <httplib.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "inventory_pool.h"

namespace ormasim {

// A request that the service does not understand: answered 400 with the text as reason.
class BadRequest : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Service {
  const char* path;
  const char* method;
  // The body of the answer. Throws BadRequest, or SimError when the inventory fails.
  std::string (*answer)(const httplib::Request& request, Inventory& inventory);
};

// The service of a path, or null.
const Service* findService(const std::string& path);
std::vector<std::string> servicePaths();

// The services themselves.
std::string answerDevProperties(const httplib::Request& request, Inventory& inventory);
std::string answerTsNodes(const httplib::Request& request, Inventory& inventory);
std::string answerSubnetView(const httplib::Request& request, Inventory& inventory);

}  // namespace ormasim
