// What the inventory database says, read through SQLite alone, in the form in which the operations
// have to answer. All of it stands still while the soak runs but for the alarms (alarm_history.h).
//
//   const Network network(file);
//   network.devices  // the rows of EMFTopoI::getAllDevices
//
// Thread-safety: immutable. The constructor throws std::runtime_error.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "answer.h"
#include "inventory.h"

namespace soak {

struct Element {
  std::int64_t id;
  std::string nodeId;
  std::string name;
  std::string version;
  std::string location;
  std::string device;      // its row
  std::string node;        // its row, with the whole icon
  std::string subnetName;  // root first; empty where the element has none
};

// A resource below an equipped element.
struct Content {
  std::int64_t mainType;
  std::int64_t subType;
  std::string dn;
  std::string name;
  std::string path;  // the ids from the element down, with "/" between them
  std::string row;   // as a Resource
};

struct EquippedElement {
  std::int64_t id;
  std::string place;
  std::string keeper;  // the first one; a record without a name where there is none
  Rows attributes;
  std::vector<Content> contents;  // what holds others comes before them
};

struct SubMapFacts {
  std::string key;  // "S" and the object id
  std::string row;
  SharedRows children;
};

struct LinkFacts {
  std::string id;
  std::string row;
  std::int64_t srcStatus;
  std::int64_t dstStatus;
};

struct Network {
  explicit Network(const std::filesystem::path& file);

  std::vector<Element> elements;  // by their ids
  std::vector<EquippedElement> equipped;
  std::vector<SubMapFacts> subMaps;  // the root first
  std::vector<LinkFacts> links;
  std::map<std::string, const LinkFacts*> linkById;

  SharedRows devices;
  SharedRows rootNodes;
  SharedRows roots;
  SharedRows labels;           // of every element and of the management system, by FDN
  SharedRows managed;          // the management system first
  SharedRows managedElements;  // without it
  SharedRows mainTypes;
  SharedRows definitions;  // with the closing record
  SharedRows reasons;      // with the closing record
  SharedRows redefined;

 private:
  using Inventory = systemtest::Inventory;

  void readElements(Inventory& inventory);
  void readSubMaps(Inventory& inventory);
  void readEquipment(Inventory& inventory);
  void readContents(Inventory& inventory, EquippedElement& element);
  void readLinks(Inventory& inventory);
  void readLists(Inventory& inventory);
};

}  // namespace soak
