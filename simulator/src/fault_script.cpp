#include "fault_script.h"

#include <json/json.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "error.h"
#include "files.h"

namespace ormasim {
namespace {

constexpr std::size_t kScriptLimitBytes = 1u << 20;
constexpr double kMaxStallSeconds = 3600;

// Where an action can be had.
constexpr unsigned kRest = 1;
constexpr unsigned kFaultServer = 2;

// What each action's rule carries besides path, requests, action and, for the fault server, frame.
struct ActionWord {
  const char* word;
  FaultAction action;
  const char* members[2];  // null: none
  bool required;
  unsigned where;
};

constexpr ActionWord kActions[] = {
    {"refuse", FaultAction::Refuse, {}, false, kRest | kFaultServer},
    {"stall", FaultAction::Stall, {"seconds"}, false, kRest | kFaultServer},
    {"cut", FaultAction::Cut, {}, false, kRest | kFaultServer},
    {"garbage", FaultAction::Garbage, {}, false, kRest | kFaultServer},
    {"wrongType", FaultAction::WrongType, {"key"}, true, kRest},
    {"removeKey", FaultAction::RemoveKey, {"key"}, true, kRest},
    {"replaceKey", FaultAction::ReplaceKey, {"key", "value"}, true, kRest},
    {"status", FaultAction::Status, {"status"}, true, kRest},
    {"repeat", FaultAction::Repeat, {}, false, kRest | kFaultServer},
    {"expireCursors", FaultAction::ExpireCursors, {}, false, kRest},
    {"error", FaultAction::Error, {"code"}, true, kFaultServer},
    {"reject", FaultAction::Reject, {"code"}, true, kFaultServer},
    {"empty", FaultAction::Empty, {}, false, kFaultServer},
    {"bare", FaultAction::Bare, {}, false, kFaultServer},
    {"wrongOrder", FaultAction::WrongOrder, {}, false, kFaultServer},
    {"otherCommand", FaultAction::OtherCommand, {}, false, kFaultServer},
};

bool carries(const ActionWord& action, const std::string& member) {
  return std::any_of(std::begin(action.members), std::end(action.members),
                     [&member](const char* known) { return known != nullptr && member == known; });
}

std::string actionWords(unsigned where) {
  std::string text;
  for (const ActionWord& action : kActions) {
    if ((action.where & where) == 0) continue;
    text += (text.empty() ? "" : ", ") + std::string(action.word);
  }
  return text;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

// Turns one rule into a Fault.
class RuleReader {
 public:
  // Rules draw other lots than those before them.
  RuleReader(std::string place, const Json::Value& rule, std::uint64_t number)
      : place_(std::move(place)), rule_(rule) {
    if (!rule_.isObject()) fail("is not an object");
    fault_.lot = number << 32;
  }

  Fault read(const std::vector<std::string>& servedPaths) {
    fault_.path = text("path");
    if (std::find(servedPaths.begin(), servedPaths.end(), fault_.path) == servedPaths.end()) {
      fail("\"path\" is no service; there are " + joined(servedPaths));
    }
    where_ = fault_.path == kFaultServerPath ? kFaultServer : kRest;
    readRequests();
    if (where_ == kFaultServer) readFrame();
    const ActionWord& action = readAction();
    refuseOthers(action);
    readMembers(action);
    return fault_;
  }

 private:
  const ActionWord& readAction() {
    const std::string word = text("action");
    for (const ActionWord& action : kActions) {
      if (word != action.word || (action.where & where_) == 0) continue;
      fault_.action = action.action;
      return action;
    }
    fail("\"action\" is none of " + actionWords(where_));
  }

  void readRequests() {
    const Json::Value& requests = rule_["requests"];
    if (requests == "all") return;
    if (requests.isArray() && !requests.empty()) {
      for (const Json::Value& number : requests) fault_.requests.push_back(count(number));
    } else if (requests.isObject() && !requests.empty()) {
      readShare(requests);
    } else {
      failRequests();
    }
  }

  void readShare(const Json::Value& requests) {
    for (const std::string& name : requests.getMemberNames()) {
      const std::uint64_t number = count(requests[name]);
      if (name == "from") {
        fault_.from = number;
      } else if (name == "oneIn") {
        fault_.oneIn = number;
      } else if (name == "seed" && requests.isMember("oneIn")) {
        fault_.lot += number;
      } else {
        failRequests();
      }
    }
  }

  void readFrame() {
    const Json::Value& frame = rule_["frame"];
    if (frame.isNull()) return;
    const bool every = frame == "all";
    if (!every && (!frame.isUInt64() || frame.asUInt64() == 0)) {
      fail("\"frame\" is neither \"all\" nor a number from 1");
    }
    fault_.frame = every ? 0 : frame.asUInt64();
  }

  std::uint64_t count(const Json::Value& number) const {
    if (!number.isUInt64() || number.asUInt64() == 0) failRequests();
    return number.asUInt64();
  }

  void refuseOthers(const ActionWord& action) const {
    for (const std::string& name : rule_.getMemberNames()) {
      const bool known = name == "path" || name == "requests" || name == "action" ||
                         (where_ == kFaultServer && name == "frame") || carries(action, name);
      if (!known) fail("\"" + name + "\" has no meaning for action " + action.word);
    }
  }

  void readMembers(const ActionWord& action) {
    for (const char* member : action.members) {
      if (member == nullptr) continue;
      if (rule_.isMember(member)) {
        readMember(action, rule_[member]);
      } else if (action.required) {
        fail("action " + std::string(action.word) + " needs \"" + member + "\"");
      }
    }
  }

  void readMember(const ActionWord& action, const Json::Value& value) {
    switch (action.action) {
      case FaultAction::WrongType:
      case FaultAction::RemoveKey:
        fault_.key = text("key");
        return;
      case FaultAction::ReplaceKey:
        fault_.key = text("key");
        fault_.value = rule_["value"];
        return;
      case FaultAction::Status:
        if (!value.isInt() || value.asInt() < 200 || value.asInt() > 599) {
          fail("\"status\" is not a number from 200 to 599");
        }
        fault_.status = value.asInt();
        return;
      case FaultAction::Error:
      case FaultAction::Reject:
        if (!value.isUInt() || value.asUInt() == 0) fail("\"code\" is not a number from 1");
        fault_.code = value.asUInt();
        return;
      default:
        if (!value.isNumeric() || !(value.asDouble() > 0) || value.asDouble() > kMaxStallSeconds) {
          fail("\"seconds\" is not a number above 0 and up to 3600");
        }
        fault_.time = std::chrono::milliseconds(std::llround(std::ceil(value.asDouble() * 1000)));
    }
  }

  std::string text(const char* member) const {
    const Json::Value& value = rule_[member];
    if (!value.isString() || value.asString().empty()) {
      fail("\"" + std::string(member) + "\" is missing or no text");
    }
    return value.asString();
  }

  [[noreturn]] void failRequests() const {
    fail(
        "\"requests\" is none of \"all\", a list of numbers from 1, {\"from\": number}, "
        "{\"oneIn\": number} with \"from\" and \"seed\" or without");
  }
  [[noreturn]] void fail(const std::string& reason) const { throw SimError(place_ + " " + reason); }

  std::string place_;
  const Json::Value& rule_;
  unsigned where_ = kRest;
  Fault fault_;
};

// Whether the lot of a request falls on a fault: the same one every time.
bool isDrawn(const Fault& fault, std::uint64_t number) {
  std::uint64_t mixed = (fault.lot + number) * 0x9E3779B97F4A7C15u;
  mixed = (mixed ^ (mixed >> 31)) * 0xBF58476D1CE4E5B9u;
  return (mixed ^ (mixed >> 29)) % fault.oneIn == 0;
}

bool names(const Fault& fault, std::uint64_t number) {
  if (fault.requests.empty()) return number >= fault.from && isDrawn(fault, number);
  return std::count(fault.requests.begin(), fault.requests.end(), number) > 0;
}

Json::Value parsed(const std::string& text, const std::string& name) {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value root;
  std::string errors;
  bool valid = false;
  try {
    valid = reader->parse(text.data(), text.data() + text.size(), &root, &errors);
  } catch (const Json::Exception& exception) {  // nesting beyond the reader's limit
    errors = exception.what();
  }
  if (!valid) throw SimError("fault script " + name + " is not valid JSON: " + errors);
  if (!root.isArray()) throw SimError("fault script " + name + " is not a JSON array of rules");
  return root;
}

}  // namespace

FaultScript FaultScript::load(const std::string& file,
                              const std::vector<std::string>& servedPaths) {
  return parse(readFile(file, kScriptLimitBytes), file, servedPaths);
}

FaultScript FaultScript::parse(const std::string& text, const std::string& name,
                               const std::vector<std::string>& servedPaths) {
  const Json::Value root = parsed(text, name);
  FaultScript script;
  for (Json::ArrayIndex i = 0; i < root.size(); ++i) {
    const std::string place = "fault script " + name + ": rule " + std::to_string(i + 1) + ":";
    script.faults_.push_back(RuleReader(place, root[i], i + 1).read(servedPaths));
  }
  return script;
}

bool FaultScript::repeats(const std::string& path) const {
  return std::any_of(faults_.begin(), faults_.end(), [&path](const Fault& fault) {
    return fault.path == path && fault.action == FaultAction::Repeat;
  });
}

const Fault* FaultScript::next(const std::string& path) {
  const auto concerns = [&path](const Fault& fault) { return fault.path == path; };
  if (std::none_of(faults_.begin(), faults_.end(), concerns)) return nullptr;
  std::uint64_t number = 0;
  {
    const std::lock_guard<std::mutex> lock(counts_->mutex);
    number = ++counts_->requests[path];
  }
  for (const Fault& fault : faults_) {
    if (concerns(fault) && names(fault, number)) return &fault;
  }
  return nullptr;
}

}  // namespace ormasim
