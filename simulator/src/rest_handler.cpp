#include "rest_handler.h"

#include <json/json.h>

#include <algorithm>
#include <utility>

#include "answers.h"
#include "connection.h"
#include "error.h"
#include "fault_actions.h"
#include "parameters.h"
#include "services.h"

namespace ormasim {
namespace {

std::string listOfServices() {
  std::string text;
  for (const std::string& path : servicePaths()) text += (text.empty() ? "" : ", ") + path;
  return text;
}

std::string methodsOf(const std::vector<const Service*>& services) {
  std::string text;
  for (const Service* service : services) {
    text += (text.empty() ? "" : ", ") + std::string(service->method);
  }
  return text;
}

// The time taken does not depend on where the texts begin to differ.
bool sameSecret(const std::string& left, const std::string& right) {
  unsigned difference = left.size() == right.size() ? 0 : 1;
  for (std::size_t i = 0; i < left.size(); ++i) {
    difference |= static_cast<unsigned char>(left[i] ^ (i < right.size() ? right[i] : 0));
  }
  return difference == 0;
}

}  // namespace

void setJson(httplib::Response& response, int status, std::string body) {
  response.status = status;
  response.headers.erase("Content-Type");
  response.set_header("Content-Type", "application/json");
  response.body = std::move(body);
}

void setError(httplib::Response& response, int status, const std::string& reason) {
  Json::Value body(Json::objectValue);
  body["error"] = reason;
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  setJson(response, status, Json::writeString(builder, body) + "\n");
}

RestHandler::RestHandler(RestSettings settings)
    : token_(std::move(settings.token)),
      faults_(std::move(settings.faults)),
      inventories_(std::move(settings.databaseFile), settings.cursorLife) {}

void RestHandler::handle(const httplib::Request& request, httplib::Response& response) {
  Connection& connection = *Connection::current();
  const Fault* fault = faults_.next(request.path);
  if (fault != nullptr && actBeforeAnswer(*fault, connection, response)) return;
  if (fault != nullptr && fault->action == FaultAction::Repeat) {
    return repeat(request.path, response);
  }
  if (fault != nullptr && fault->action == FaultAction::ExpireCursors) {
    inventories_.cursors().expireAll();
  }
  answer(request, response);
  remember(request.path, response);
  if (fault != nullptr) actOnAnswer(*fault, response);
}

void RestHandler::answer(const httplib::Request& request, httplib::Response& response) {
  if (!token_.empty() && !sameSecret(token_, request.get_header_value("X-Auth-Token"))) {
    return setError(response, 401, "header X-Auth-Token is missing or wrong");
  }
  const std::vector<const Service*> services = servicesAt(request.path);
  if (services.empty()) {
    return setError(response, 404,
                    "no service at " + request.path + "; there are " + listOfServices());
  }
  const auto service =
      std::find_if(services.begin(), services.end(),
                   [&request](const Service* one) { return request.method == one->method; });
  if (service == services.end()) {
    const std::string methods = methodsOf(services);
    response.set_header("Allow", methods);
    return setError(response, 405, request.path + " takes " + methods + " only");
  }
  try {
    requireValidHeaders(request);
    std::unique_ptr<Inventory> inventory = inventories_.take();
    setJson(response, 200, (*service)->answer(request, *inventory));
    inventories_.giveBack(std::move(inventory));
  } catch (const BadRequest& problem) {
    setError(response, 400, problem.what());
  } catch (const std::exception& failure) {
    setError(response, 500, failure.what());
  }
}

void RestHandler::remember(const std::string& path, const httplib::Response& response) {
  if (!faults_.repeats(path)) return;
  const std::lock_guard<std::mutex> lock(mutex_);
  httplib::Response& last = last_[path];
  last.status = response.status;
  last.body = response.body;
}

void RestHandler::repeat(const std::string& path, httplib::Response& response) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto last = last_.find(path);
  if (last == last_.end()) {
    return setError(response, 500, "fault script: there is no answer to repeat");
  }
  setJson(response, last->second.status, last->second.body);
}

void RestHandler::refuse(int status, const std::string& reason, httplib::Response& response) {
  setError(response, status, reason);
  // What follows in the stream may be the rest of the refused request.
  if (Connection* connection = Connection::current()) connection->closeAfterAnswer();
  response.set_header("Connection", "close");
}

void RestHandler::explainRefusal(httplib::Response& response) {
  if (!response.body.empty() || response.content_length_ > 0) return;
  const Connection* const connection = Connection::current();
  if (connection != nullptr && connection->refusal()) {
    return refuse(connection->refusal()->status, connection->refusal()->reason, response);
  }
  refuse(response.status,
         response.status == 414 ? "the request's target is too long"
                                : "the request is not well-formed HTTP that this server takes",
         response);
}

}  // namespace ormasim
