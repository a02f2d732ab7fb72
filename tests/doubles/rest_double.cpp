#include "rest_double.h"

#include <json/reader.h>
#include <json/writer.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "orma/rest/nbi_http_proxy.h"
#include "orma/rest/rest_client.h"
#include "outage.h"
#include "platform.h"

namespace emf::doubles {

Json::Value json(const std::string& text) {
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Json::Value value;
  std::string problems;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, &problems)) {
    throw std::invalid_argument(problems + " in " + text);
  }
  return value;
}

std::string compact(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, value);
}

void RestDouble::answers(const std::string& url, const Json::Value& response) {
  std::lock_guard lock(mutex_);
  answers_[url].push_back({true, response});
}

void RestDouble::fails(const std::string& url, const Json::Value& response) {
  std::lock_guard lock(mutex_);
  answers_[url].push_back({false, response});
}

void RestDouble::answersBy(Responder responder) {
  std::lock_guard lock(mutex_);
  responder_ = std::move(responder);
}

std::vector<Nimbola::RestReq> RestDouble::requests() const {
  std::lock_guard lock(mutex_);
  return requests_;
}

std::vector<Json::Value> RestDouble::responsesBefore() const {
  std::lock_guard lock(mutex_);
  return responsesBefore_;
}

void RestDouble::madeRequest(const Nimbola::RestReq& request) {
  std::lock_guard lock(mutex_);
  made_ = request;
}

void RestDouble::postDataBecomes(std::function<Json::Value(const Json::Value&)> conversion) {
  std::lock_guard lock(mutex_);
  postData_ = std::move(conversion);
}

std::vector<Json::Value> RestDouble::documents() const {
  std::lock_guard lock(mutex_);
  return documents_;
}

void RestDouble::devices(std::vector<Json::Value> objects, bool result) {
  std::lock_guard lock(mutex_);
  devicesSent_ = result;
  devices_ = std::move(objects);
}

void RestDouble::devicesFail() {
  std::lock_guard lock(mutex_);
  devicesSent_ = false;
  devices_.clear();
}

void RestDouble::duringDeviceRead(Hook hook) {
  std::lock_guard lock(mutex_);
  duringDeviceRead_ = std::move(hook);
}

int RestDouble::deviceReads() const {
  std::lock_guard lock(mutex_);
  return deviceReads_;
}

void RestDouble::topoViewAnswers(const Json::Value& response) {
  std::lock_guard lock(mutex_);
  topoViewAnswers_.push_back({true, response});
}

void RestDouble::topoViewFails() {
  std::lock_guard lock(mutex_);
  topoViewAnswers_.push_back({false, Json::Value()});
}

std::vector<TopoViewQuery> RestDouble::topoViewQueries() const {
  std::lock_guard lock(mutex_);
  return topoViewQueries_;
}

void RestDouble::mainType(const std::string& fdn, Nimbola::MainType type) {
  std::lock_guard lock(mutex_);
  mainTypes_[fdn] = type;
}

Nimbola::MainType RestDouble::mainTypeOf(const std::string& fdn) const {
  std::lock_guard lock(mutex_);
  const auto type = mainTypes_.find(fdn);
  return type == mainTypes_.end() ? Nimbola::MAIN_TYPE_UNKNOWN : type->second;
}

void RestDouble::reset() {
  std::lock_guard lock(mutex_);
  answers_.clear();
  responder_ = nullptr;
  requests_.clear();
  responsesBefore_.clear();
  made_ = Nimbola::RestReq();
  made_.target = "made-target";
  made_.url = "made-url";
  made_.extra["made"] = true;
  made_.option = (std::uint64_t{1} << 63) + 7;
  made_.method = 99;
  made_.mode = 8;
  postData_ = nullptr;
  documents_.clear();
  devicesSent_ = false;
  devices_.clear();
  duringDeviceRead_ = nullptr;
  deviceReads_ = 0;
  topoViewAnswers_.clear();
  topoViewQueries_.clear();
  mainTypes_.clear();
}

Nimbola::RestReq RestDouble::make() const {
  std::lock_guard lock(mutex_);
  return made_;
}

bool RestDouble::send(const Nimbola::RestReq& request, Json::Value& response) {
  platform().journal.note("send: " + request.url);
  if (const auto failed = exchangeOutage("REST request", response)) return *failed;
  Responder responder;
  {
    std::lock_guard lock(mutex_);
    requests_.push_back(request);
    responsesBefore_.push_back(response);
    auto& script = answers_[request.url];
    if (!script.empty()) {
      const Answer answer = std::move(script.front());
      script.pop_front();
      response = answer.response;
      return answer.sent;
    }
    responder = responder_;
  }
  response = Json::Value();
  return responder && responder(request, response);
}

Json::Value RestDouble::toPostData(const Json::Value& document) {
  std::lock_guard lock(mutex_);
  documents_.push_back(document);
  return postData_ ? postData_(document) : document;
}

bool RestDouble::readDevices(std::vector<Json::Value>& out) {
  platform().journal.note("devices");
  const int way = outage("device listing", 2);
  if (way == 0) return false;
  if (way == 1) throw std::bad_alloc();
  Hook hook;
  {
    std::lock_guard lock(mutex_);
    ++deviceReads_;
    hook = duringDeviceRead_;
  }
  if (hook) hook();
  std::lock_guard lock(mutex_);
  out.insert(out.end(), devices_.begin(), devices_.end());
  return devicesSent_;
}

bool RestDouble::topoView(const TopoViewQuery& query, Json::Value& response) {
  platform().journal.note("topoview: " + query.marker);
  if (const auto failed = exchangeOutage("topology view", response)) return *failed;
  std::lock_guard lock(mutex_);
  topoViewQueries_.push_back(query);
  response = Json::Value();
  if (topoViewAnswers_.empty()) return false;
  const Answer answer = std::move(topoViewAnswers_.front());
  topoViewAnswers_.pop_front();
  response = answer.response;
  return answer.sent;
}

}  // namespace emf::doubles

using emf::doubles::platform;

namespace NS_UTIL {

Nimbola::RestReq MakeRestReq() { return platform().rest.make(); }

bool NBIHTTPProxy::GetAllDevProperty(std::vector<Json::Value>& out) {
  return platform().rest.readDevices(out);
}

bool NBIHTTPProxy::getTopoSubnetViewInfo(const Json::Value& filter, std::string marker,
                                         Json::Value& response) {
  return platform().rest.topoView({filter, marker, response}, response);
}

}  // namespace NS_UTIL

namespace Nimbola {

bool SendRestReq(const RestReq& request, Json::Value& response) {
  return platform().rest.send(request, response);
}

Json::Value Json2PostData(const Json::Value& document) {
  return platform().rest.toPostData(document);
}

// Words of its own, so that a test sees which operator was written and that this call wrote it.
std::string ToString(OperatorType op) { return "operator" + std::to_string(static_cast<int>(op)); }

MainType GetMainTypeFromFDN(const std::string& fdn) { return platform().rest.mainTypeOf(fdn); }

std::string GetResSubTypeFieldName(MainType type) {
  return "subTypeOf" + std::to_string(static_cast<int>(type));
}

std::int64_t GetResSubTypeFromObj(const Json::Value& object, MainType type) {
  return object[GetResSubTypeFieldName(type)].asInt64();
}

}  // namespace Nimbola
