#include <string>
#include <vector>

#include "manual.h"
#include "orma/bundle/configuration.h"
#include "usage/roff.h"

namespace ormaagent {

namespace {

using orma::ConfigKey;
using orma::ConfigType;

struct TypeRow {
  ConfigType type;
  const char* name;
  const char* inFile;
};

constexpr TypeRow kTypes[] = {
    {ConfigType::Text, "text", "a string without NUL characters"},
    {ConfigType::Path, "path",
     "a string; where it is not absolute, it is taken from the directory of the file"},
    {ConfigType::Integer, "integer", "a number without fraction and exponent, within the range"},
    {ConfigType::Boolean, "boolean", "true or false"},
    {ConfigType::Choice, "choice", "one of the words, as a string"},
};

const char* const kMembers[][2] = {
    {"bundle", "Name of the bundle that the service is part of."},
    {"service", "Name of the service."},
    {"library",
     "Its library: best an absolute path; a name without a slash is looked up in the system's "
     "library directories."},
    {"factory", "The function of the library that makes the service."},
};

constexpr char kExample[] = R"({
  "log": {"level": 1},
  "rest": {"baseUrl": "http://127.0.0.1:8080"},
  "database": {"connection": "sqlite:inventory.db"},
  "items": {"IsReportSubnet": 1},
  "bundles": [
    {"bundle": "ii_log_bundle", "service": "ii_log_service",
     "library": "liborma_log.so.1", "factory": "_make_orma_log_service"},
    {"bundle": "ii_orma_corbaagent_bundle", "service": "ii_ormaiac_emf",
     "library": "libii_ormaiac_emf.so", "factory": "_make_ii_ormaiac_emf"}
  ]
})";

std::string typeName(ConfigType type) {
  for (const TypeRow& row : kTypes) {
    if (row.type == type) return row.name;
  }
  return "";
}

std::string rangeOf(const ConfigKey& key) {
  if (key.type == ConfigType::Integer) {
    return ", " + std::to_string(key.minimum) + " to " + std::to_string(key.maximum);
  }
  if (key.type != ConfigType::Choice) return "";
  std::string words = key.choices;
  for (auto bar = words.find('|'); bar != std::string::npos; bar = words.find('|')) {
    words.replace(bar, 1, " or ");
  }
  return ", " + words;
}

std::string defaultOf(const ConfigKey& key) {
  return *key.defaultText == '\0' ? "empty" : key.defaultText;
}

void addKeys(usage::Roff& page) {
  page.section("KEYS");
  page.paragraph(
      "A dot stands for a step into an object: log.level is {\"log\": {\"level\": 1}}. Every key "
      "is optional; one that is not in the file has its default. One that is not known is an "
      "error.");
  for (const ConfigKey& key : orma::configurationKeys()) {
    page.rawEntry(
        usage::roffBold(key.path) + " (" +
            usage::roffWords(typeName(key.type) + rangeOf(key) + "; default " + defaultOf(key)) +
            ")",
        key.meaning);
  }
  page.section("TYPES");
  for (const TypeRow& row : kTypes) page.entry(row.name, row.inFile);
}

void addServices(usage::Roff& page) {
  page.section("SERVICES");
  page.paragraph(
      "The member \"bundles\" is an array with one object for each service to load, in starting "
      "order. Each has these four members and no other.");
  for (const auto& [member, meaning] : kMembers) page.entry(member, meaning);
  page.section("ITEMS");
  page.paragraph(
      "The member \"items\" is an object of integers and texts that services read by name. The "
      "plug-in reads this one:");
  page.entry("IsReportSubnet",
             "0 or absent: no names of subnets are kept. Anything else: they are, by a background "
             "task.");
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::string::size_type begin = 0;
  for (auto feed = text.find('\n'); feed != std::string::npos; feed = text.find('\n', begin)) {
    lines.push_back(text.substr(begin, feed - begin));
    begin = feed + 1;
  }
  lines.push_back(text.substr(begin));
  return lines;
}

}  // namespace

std::string configurationPage() {
  usage::Roff page("ormaagent.json", 5, "configuration of ormaagent");
  page.section("DESCRIPTION");
  page.paragraph(
      "One JSON file tells ormaagent which services to load, where the installation, the REST "
      "services, the fault server and the database are, and how to write the log. It is strict "
      "JSON in UTF-8: no comments, no trailing commas, no key twice. 'ormaagent config check' "
      "tells everything that is wrong with it, and starts nothing.");
  addKeys(page);
  addServices(page);
  page.section("EXAMPLES");
  page.code(linesOf(kExample));
  page.section("SEE ALSO");
  page.references({"ormaagent(1)", "ormasim(1)"});
  return page.text();
}

}  // namespace ormaagent
