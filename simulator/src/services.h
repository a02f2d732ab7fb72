// The REST services, one row each in services.cpp. Files are named service_<name>.cpp.
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

// The services at a path, one for each method; none where there is nothing.
std::vector<const Service*> servicesAt(const std::string& path);
// Each path once.
std::vector<std::string> servicePaths();

// The services themselves.
std::string answerAlarmDefinitions(const httplib::Request& request, Inventory& inventory);
std::string answerAlarmReasons(const httplib::Request& request, Inventory& inventory);
std::string answerRedefinedAlarms(const httplib::Request& request, Inventory& inventory);
std::string answerDevProperties(const httplib::Request& request, Inventory& inventory);
std::string answerTsNodes(const httplib::Request& request, Inventory& inventory);
std::string answerSubnetView(const httplib::Request& request, Inventory& inventory);
std::string answerPortProperties(const httplib::Request& request, Inventory& inventory);
std::string answerSlotProperties(const httplib::Request& request, Inventory& inventory);
std::string answerCardProperties(const httplib::Request& request, Inventory& inventory);
std::string answerFrameProperties(const httplib::Request& request, Inventory& inventory);
std::string answerElementProperties(const httplib::Request& request, Inventory& inventory);
std::string answerLocation(const httplib::Request& request, Inventory& inventory);
std::string answerMainTypes(const httplib::Request& request, Inventory& inventory);
std::string answerGraphQuery(const httplib::Request& request, Inventory& inventory);
std::string answerElements(const httplib::Request& request, Inventory& inventory);
std::string answerElementsByParameters(const httplib::Request& request, Inventory& inventory);
std::string answerFrames(const httplib::Request& request, Inventory& inventory);
std::string answerCards(const httplib::Request& request, Inventory& inventory);

}  // namespace ormasim
