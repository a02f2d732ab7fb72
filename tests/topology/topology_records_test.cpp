#include "topology_records.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <utility>

namespace emf::test {
namespace {

Node someNode() {
  Node node;
  node.parentSubMapId = "S5";
  node.nodeId = "12";
  node.deviceId = 12;
  node.topoId = -1;
  return node;
}

SubMap someSubMap() {
  SubMap map;
  map.parentSubMapId = "S5";
  map.procId = 4;
  map.spareText2 = "x";
  return map;
}

PhysicalLink somePhysicalLink() {
  PhysicalLink link;
  link.linkId = "204:77";
  link.dstPortStatus = 9;
  link.spareInt = 3;
  return link;
}

DispLink someDispLink() {
  DispLink link;
  link.text1 = "a";
  link.number3 = 3;
  return link;
}

UpdateDevice someUpdateDevice() {
  UpdateDevice update;
  update.id = -1;
  update.text4 = "x";
  return update;
}

SimNode someSimNode() {
  SimNode key;
  key.parentSubMapId = "S5";
  key.nodeId = "12";
  return key;
}

template <typename Record>
bool startsEmptyIn(unsigned char filling) {
  alignas(Record) unsigned char place[sizeof(Record)];
  std::memset(place, filling, sizeof place);
  auto* record = new (place) Record;
  // Numbers are 0 and texts empty: the tuple of a value-initialised one of each.
  const bool empty = std::apply(
      [](const auto&... field) { return ((field == std::decay_t<decltype(field)>()) && ...); },
      fieldsOf(*record));
  record->~Record();
  return empty;
}

template <typename Record>
void expectPlainValue(const Record& some) {
  EXPECT_TRUE(startsEmptyIn<Record>(0x00));
  EXPECT_TRUE(startsEmptyIn<Record>(0xFF));
  Record copy = some;
  EXPECT_EQ(copy, some);
  Record assigned;
  assigned = copy;
  EXPECT_EQ(assigned, some);
  const Record moved = std::move(copy);
  EXPECT_EQ(moved, some);
  assigned = Record();
  EXPECT_EQ(assigned, Record());
}

TEST(TopologyRecord, Node) { expectPlainValue(someNode()); }
TEST(TopologyRecord, SubMap) { expectPlainValue(someSubMap()); }
TEST(TopologyRecord, PhysicalLink) { expectPlainValue(somePhysicalLink()); }
TEST(TopologyRecord, DispLink) { expectPlainValue(someDispLink()); }
TEST(TopologyRecord, UpdateDevice) { expectPlainValue(someUpdateDevice()); }
TEST(TopologyRecord, SimNode) { expectPlainValue(someSimNode()); }

}  // namespace
}  // namespace emf::test
