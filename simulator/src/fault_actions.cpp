#include "fault_actions.h"

#include <json/json.h>

#include <memory>

#include "answers.h"

namespace ormasim {
namespace {

// Neither JSON nor UTF-8.
constexpr char kGarbage[] = "<html>\xFF\xFE this is no JSON \x80{]\n";

std::string compact(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  return Json::writeString(builder, value);
}

// A text becomes an array that holds it; everything else the text of its JSON.
Json::Value otherType(const Json::Value& value) {
  if (!value.isString()) return compact(value);
  Json::Value array(Json::arrayValue);
  array.append(value);
  return array;
}

void changeType(Json::Value& object, const Fault& fault) {
  object[fault.key] = otherType(object[fault.key]);
}

void removeKey(Json::Value& object, const Fault& fault) { object.removeMember(fault.key); }

void replaceKey(Json::Value& object, const Fault& fault) { object[fault.key] = fault.value; }

// What happens to a member of an object.
using Spoiler = void (*)(Json::Value& object, const Fault& fault);

// The number of members that were spoilt, at any depth.
std::size_t spoilMembers(Json::Value& value, const Fault& fault, Spoiler spoil) {
  std::size_t spoilt = 0;
  if (value.isObject()) {
    for (const std::string& name : value.getMemberNames()) {
      if (name == fault.key) {
        spoil(value, fault);
        ++spoilt;
      } else {
        spoilt += spoilMembers(value[name], fault, spoil);
      }
    }
  } else if (value.isArray()) {
    for (Json::Value& element : value) spoilt += spoilMembers(element, fault, spoil);
  }
  return spoilt;
}

void spoilKey(const Fault& fault, Spoiler spoil, httplib::Response& response) {
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  const std::string& body = response.body;
  Json::Value document;
  reader->parse(body.data(), body.data() + body.size(), &document, nullptr);
  if (spoilMembers(document, fault, spoil) == 0) {
    // Passing the answer on would let a misspelt script look like a program that copes.
    setError(response, 500, "fault script: the answer has no member \"" + fault.key + "\"");
    return;
  }
  response.body = compact(document) + "\n";
}

// Announces the whole body, sends its first half and closes.
void cutInHalf(httplib::Response& response) {
  const auto body = std::make_shared<const std::string>(std::move(response.body));
  response.body.clear();
  response.headers.erase("Content-Type");
  response.set_content_provider(body->size(), "application/json",
                                [body](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                  if (offset == 0 && body->size() > 1)
                                    return sink.write(body->data(), body->size() / 2);
                                  return false;
                                });
}

}  // namespace

bool actBeforeAnswer(const Fault& fault, Connection& connection, httplib::Response& response) {
  switch (fault.action) {
    case FaultAction::Refuse:
      connection.abort();
      return true;
    case FaultAction::Stall:
      if (fault.time && connection.stayIdle(*fault.time)) return false;
      if (!fault.time) connection.stayIdleUntilClosed();
      connection.abort();
      return true;
    case FaultAction::Garbage:
      setJson(response, 200, kGarbage);
      return true;
    case FaultAction::Status:
      setError(response, fault.status, "fault script: status " + std::to_string(fault.status));
      return true;
    case FaultAction::Cut:
    case FaultAction::WrongType:
    case FaultAction::RemoveKey:
    case FaultAction::ReplaceKey:
    case FaultAction::Repeat:
    case FaultAction::ExpireCursors:
    case FaultAction::Error:
    case FaultAction::Reject:
    case FaultAction::Empty:
    case FaultAction::Bare:
    case FaultAction::WrongOrder:
    case FaultAction::OtherCommand:
      return false;
  }
  return false;
}

void actOnAnswer(const Fault& fault, httplib::Response& response) {
  if (fault.action == FaultAction::Cut) cutInHalf(response);
  if (fault.action == FaultAction::WrongType) spoilKey(fault, changeType, response);
  if (fault.action == FaultAction::RemoveKey) spoilKey(fault, removeKey, response);
  if (fault.action == FaultAction::ReplaceKey) spoilKey(fault, replaceKey, response);
}

}  // namespace ormasim
