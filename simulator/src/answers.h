// Answers of the simulator.
#pragma once

#include <httplib.h>

#include <string>

namespace ormasim {

void setJson(httplib::Response& response, int status, std::string body);
// {"error": reason}
void setError(httplib::Response& response, int status, const std::string& reason);

}  // namespace ormasim
