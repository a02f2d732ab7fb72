#include "configuration_content.h"

#include <json/writer.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "configuration_keys.h"

namespace orma {

namespace {

struct ServiceMember {
  const char* name;
  std::string ConfiguredService::*field;
};

constexpr ServiceMember kServiceMembers[] = {
    {"bundle", &ConfiguredService::bundle},
    {"service", &ConfiguredService::service},
    {"library", &ConfiguredService::library},
    {"factory", &ConfiguredService::factory},
};

bool isInteger(const Json::Value& value) {
  return value.type() == Json::intValue || value.type() == Json::uintValue;
}

// jsoncpp's texts may hold NULs; none of ours may, since they end up in C interfaces.
bool isPlainText(const Json::Value& value) {
  return value.isString() && value.asString().find('\0') == std::string::npos;
}

Json::Value defaultValue(const ConfigKey& key) {
  switch (key.type) {
    case ConfigType::Integer:
      return Json::Value(static_cast<Json::Int64>(std::stoll(key.defaultText)));
    case ConfigType::Boolean:
      return Json::Value(std::string_view(key.defaultText) == "true");
    default:
      return Json::Value(key.defaultText);
  }
}

// As it may stand in a message: a word as it is, anything else quoted and escaped.
std::string shown(const std::string& name) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";
  const bool plain = !name.empty() && name.find_first_not_of(kPlain) == std::string::npos;
  return plain ? name : Json::valueToQuotedString(name.c_str());
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

// The names that may stand directly below a section ("" is the document itself).
std::vector<std::string> knownMembers(const std::string& prefix) {
  std::vector<std::string> names;
  for (const ConfigKey& key : configurationKeys()) {
    const std::string_view path = key.path;
    if (path.substr(0, prefix.size()) != prefix) continue;
    const std::string_view rest = path.substr(prefix.size());
    const std::string name(rest.substr(0, rest.find('.')));
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }
  if (prefix.empty()) names.insert(names.end(), {"bundles", "items"});
  return names;
}

class ContentReader {
 public:
  ContentReader(std::string name, std::vector<ConfigProblem>& problems)
      : name_(std::move(name)), problems_(problems), content_(defaultContent()) {}

  ConfigurationContent read(const Json::Value& document) {
    if (document.isObject()) {
      readSection(document, "");
    } else {
      problems_.push_back({name_, "the file must hold one JSON object"});
    }
    return std::move(content_);
  }

 private:
  void report(const std::string& path, std::string what) {
    problems_.push_back({name_ + ": " + path, std::move(what)});
  }

  // `prefix` is empty or ends with a dot.
  void readSection(const Json::Value& section, const std::string& prefix) {
    const std::vector<std::string> known = knownMembers(prefix);
    for (const std::string& member : section.getMemberNames()) {
      const Json::Value& value = section[member];
      const std::string path = prefix + member;
      if (std::find(known.begin(), known.end(), member) == known.end()) {
        report(prefix + shown(member), "unknown key; known here: " + joined(known));
      } else if (path == "bundles") {
        readServices(value);
      } else if (path == "items") {
        readItems(value);
      } else if (const ConfigKey* key = findConfigKey(path)) {
        readValue(*key, value);
      } else if (value.isObject()) {
        readSection(value, path + ".");
      } else {
        report(path, "must be an object");
      }
    }
  }

  void readValue(const ConfigKey& key, const Json::Value& value) {
    std::string fault = faultOf(key, value);
    if (fault.empty()) {
      content_.values[key.path] = value;
    } else {
      report(key.path, std::move(fault));
    }
  }

  // What is wrong with the value, or nothing. Only numbers and choices are shown: a text may be
  // a secret in the wrong place.
  static std::string faultOf(const ConfigKey& key, const Json::Value& value) {
    switch (key.type) {
      case ConfigType::Integer:
        return integerFault(key, value);
      case ConfigType::Boolean:
        return value.isBool() ? "" : "must be true or false";
      case ConfigType::Choice: {
        const std::vector<std::string> words = choiceWords(key);
        const bool known = value.isString() &&
                           std::find(words.begin(), words.end(), value.asString()) != words.end();
        return known ? "" : "must be one of: " + joined(words);
      }
      default:
        return isPlainText(value) ? "" : "must be a text without NUL characters";
    }
  }

  static std::string integerFault(const ConfigKey& key, const Json::Value& value) {
    if (isInteger(value) && value.isInt64() && value.asInt64() >= key.minimum &&
        value.asInt64() <= key.maximum) {
      return "";
    }
    std::string fault = "must be an integer from " + std::to_string(key.minimum) + " to " +
                        std::to_string(key.maximum);
    if (value.isNumeric()) fault += ", not " + value.asString();
    return fault;
  }

  void readItems(const Json::Value& items) {
    if (!items.isObject()) return report("items", "must be an object of integers and texts");
    for (const std::string& member : items.getMemberNames()) {
      if (!isInteger(items[member]) && !isPlainText(items[member])) {
        report("items." + shown(member), "must be an integer or a text");
      }
    }
    content_.items = items;
  }

  void readServices(const Json::Value& bundles) {
    if (!bundles.isArray()) return report("bundles", "must be an array of services");
    std::set<std::pair<std::string, std::string>> names;
    for (Json::ArrayIndex i = 0; i < bundles.size(); ++i) {
      const std::string path = "bundles[" + std::to_string(i) + "]";
      ConfiguredService service = readService(bundles[i], path);
      const bool named = !service.bundle.empty() && !service.service.empty();
      if (named && !names.emplace(service.bundle, service.service).second) {
        report(path, "the service " + shown(service.service) + " of the bundle " +
                         shown(service.bundle) + " is configured twice");
      }
      content_.services.push_back(std::move(service));
    }
  }

  ConfiguredService readService(const Json::Value& entry, const std::string& path) {
    ConfiguredService service;
    if (!entry.isObject()) {
      report(path, "must be an object with bundle, service, library, factory");
      return service;
    }
    for (const auto& [name, field] : kServiceMembers) {
      const Json::Value& value = entry[name];
      if (!entry.isMember(name)) {
        report(path + "." + name, "is missing");
      } else if (!isPlainText(value) || value.asString().empty()) {
        report(path + "." + name, "must be a text that is not empty");
      } else {
        service.*field = value.asString();
      }
    }
    reportUnknownMembers(entry, path);
    return service;
  }

  void reportUnknownMembers(const Json::Value& entry, const std::string& path) {
    for (const std::string& member : entry.getMemberNames()) {
      const auto known = [&member](const ServiceMember& one) { return member == one.name; };
      if (std::none_of(std::begin(kServiceMembers), std::end(kServiceMembers), known)) {
        report(path + "." + shown(member),
               "unknown key; known here: bundle, service, library, factory");
      }
    }
  }

  std::string name_;
  std::vector<ConfigProblem>& problems_;
  ConfigurationContent content_;
};

}  // namespace

ConfigurationContent defaultContent() {
  ConfigurationContent content{Json::objectValue, Json::objectValue, {}};
  for (const ConfigKey& key : configurationKeys()) content.values[key.path] = defaultValue(key);
  return content;
}

ConfigurationContent readContent(const Json::Value& document, const std::string& name,
                                 std::vector<ConfigProblem>& problems) {
  return ContentReader(name, problems).read(document);
}

}  // namespace orma
