#include "topology_records.h"

#include <gtest/gtest.h>

#include "plain_record.h"

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

TEST(TopologyRecord, NodeStartsEmptyAndCopiesFieldByField) { expectPlainRecord(someNode()); }
TEST(TopologyRecord, SubMapStartsEmptyAndCopiesFieldByField) { expectPlainRecord(someSubMap()); }
TEST(TopologyRecord, PhysicalLinkStartsEmptyAndCopiesFieldByField) {
  expectPlainRecord(somePhysicalLink());
}
TEST(TopologyRecord, DispLinkStartsEmptyAndCopiesFieldByField) {
  expectPlainRecord(someDispLink());
}
TEST(TopologyRecord, UpdateDeviceStartsEmptyAndCopiesFieldByField) {
  expectPlainRecord(someUpdateDevice());
}
TEST(TopologyRecord, SimNodeStartsEmptyAndCopiesFieldByField) { expectPlainRecord(someSimNode()); }

// 2011 is of the operations that fill a node, not of the record.
TEST(TopologyRecord, FreshNodeHasNoFixedCode) { EXPECT_EQ(Node().fixedCode, 0); }

}  // namespace
}  // namespace emf::test
