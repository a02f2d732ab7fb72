#include "graphml_network.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <pugixml.hpp>
#include <stdexcept>

namespace systemtest {

namespace {

using Texts = std::map<std::string, std::string>;

// The data of a node under the names of their attributes.
Texts dataOf(const pugi::xml_node& node, const Texts& nameOfKey) {
  Texts data;
  for (const pugi::xml_node& datum : node.children("data")) {
    data[nameOfKey.at(datum.attribute("key").value())] = datum.child_value();
  }
  return data;
}

int mapUnits(const Texts& data, const char* name, double origin, int direction) {
  const auto found = data.find(name);
  if (found == data.end()) return 0;
  return static_cast<int>(std::lround((origin + direction * std::stod(found->second)) * 10));
}

}  // namespace

GraphmlNetwork readGraphml(const std::filesystem::path& file) {
  pugi::xml_document document;
  if (!document.load_file(file.c_str())) throw std::runtime_error(file.string() + ": no XML");
  const pugi::xml_node root = document.child("graphml");
  Texts nameOfKey;
  for (const pugi::xml_node& key : root.children("key")) {
    nameOfKey[key.attribute("id").value()] = key.attribute("attr.name").value();
  }
  GraphmlNetwork network;
  network.name = file.stem().string();
  std::map<std::string, int> ids;
  for (const pugi::xml_node& node : root.child("graph").children("node")) {
    const std::string id = node.attribute("id").value();
    Texts data = dataOf(node, nameOfKey);
    const int deviceId = static_cast<int>(ids.size()) + 2;
    ids[id] = deviceId;
    const std::string& label = data["label"];
    const std::string& country = data["Country"];
    network.devices.push_back({deviceId, label.empty() ? network.name + "-" + id : label, country,
                               mapUnits(data, "Longitude", 180, 1),
                               mapUnits(data, "Latitude", 90, -1)});
    auto& countries = network.countries;
    if (!country.empty() &&
        std::find(countries.begin(), countries.end(), country) == countries.end()) {
      countries.push_back(country);
    }
  }
  for (const pugi::xml_node& edge : root.child("graph").children("edge")) {
    network.links.emplace_back(ids.at(edge.attribute("source").value()),
                               ids.at(edge.attribute("target").value()));
  }
  return network;
}

}  // namespace systemtest
