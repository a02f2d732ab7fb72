#include <ace/RW_Mutex.h>

#include <cstdint>
#include <map>
#include <string>
#include <type_traits>

#include "emfmominterface.h"
#include "emftopointerface.h"
#include "emftoporecords.h"
#include "linkportstatus.h"
#include "orma/ident/port_index.h"
#include "orma/southbound/southbound.h"
#include "record_fields.h"
#include "transmitassistant.h"

namespace {

using emf::test::expectRecord;
using emf::test::kAfterTable;
using emf::test::kAre32Bits;

template <typename Record>
constexpr bool kIsTopologyRecord =
    std::has_virtual_destructor_v<Record>&& std::is_default_constructible_v<Record>&&
        std::is_copy_constructible_v<Record>&& std::is_copy_assignable_v<Record>;

static_assert(kIsTopologyRecord<Node> && kIsTopologyRecord<SubMap>);
static_assert(kIsTopologyRecord<DispLink> && kIsTopologyRecord<UpdateDevice>);
static_assert(kIsTopologyRecord<SimNode>);
static_assert(!std::is_polymorphic_v<PhysicalLink> && std::is_copy_assignable_v<PhysicalLink>);

static_assert(std::is_empty_v<EMFMOMgrI> && std::is_empty_v<EMFTopoI>);

static_assert(std::is_same_v<decltype(Node::deviceId), std::int64_t>);
static_assert(std::is_same_v<decltype(UpdateDevice::id), std::int64_t>);
static_assert(
    kAre32Bits<decltype(Node::procId), decltype(Node::fixedCode), decltype(Node::zeroCode),
               decltype(Node::spareCode), decltype(Node::nodeKind), decltype(Node::posX),
               decltype(Node::posY), decltype(Node::topoId)>);
static_assert(kAre32Bits<decltype(SubMap::spareNumber), decltype(SubMap::mapType),
                         decltype(SubMap::zeroField1), decltype(SubMap::topoClassId),
                         decltype(SubMap::spareField), decltype(SubMap::zeroField2),
                         decltype(SubMap::procId), decltype(SubMap::posX), decltype(SubMap::posY)>);
static_assert(kAre32Bits<decltype(PhysicalLink::linkAttribute), decltype(PhysicalLink::linkStatus),
                         decltype(PhysicalLink::srcZero), decltype(PhysicalLink::srcPortType),
                         decltype(PhysicalLink::srcPortStatus), decltype(PhysicalLink::dstZero),
                         decltype(PhysicalLink::dstPortType), decltype(PhysicalLink::dstPortStatus),
                         decltype(PhysicalLink::spareInt)>);
static_assert(kAre32Bits<decltype(DispLink::number1), decltype(DispLink::number2),
                         decltype(DispLink::number3)>);

TEST(TopologyLayout, Node) {
  expectRecord("Node", kAfterTable, sizeof(Node),
               {FIELD(Node, parentSubMapId), FIELD(Node, nodeId), FIELD(Node, deviceId),
                FIELD(Node, iconName), FIELD(Node, nodeType), FIELD(Node, label),
                FIELD(Node, ipAddr), FIELD(Node, remark), FIELD(Node, procId),
                FIELD(Node, fixedCode), FIELD(Node, zeroCode), FIELD(Node, spareCode),
                FIELD(Node, nodeKind), FIELD(Node, posX), FIELD(Node, posY), FIELD(Node, topoId)});
  EXPECT_EQ(offsetof(Node, deviceId), 72U);
  EXPECT_EQ(offsetof(Node, procId), 240U);
  EXPECT_EQ(sizeof(Node), 272U);
}

TEST(TopologyLayout, SubMap) {
  expectRecord("SubMap", kAfterTable, sizeof(SubMap),
               {FIELD(SubMap, parentSubMapId), FIELD(SubMap, subMapId), FIELD(SubMap, spareNumber),
                FIELD(SubMap, label), FIELD(SubMap, iconName), FIELD(SubMap, mapType),
                FIELD(SubMap, zeroField1), FIELD(SubMap, topoClassId), FIELD(SubMap, spareField),
                FIELD(SubMap, zeroField2), FIELD(SubMap, procId), FIELD(SubMap, posX),
                FIELD(SubMap, posY), FIELD(SubMap, spareText1), FIELD(SubMap, spareText2)});
  EXPECT_EQ(offsetof(SubMap, spareNumber), 72U);
  EXPECT_EQ(offsetof(SubMap, label), 80U);
  EXPECT_EQ(offsetof(SubMap, mapType), 144U);
  EXPECT_EQ(offsetof(SubMap, procId), 164U);
  EXPECT_EQ(offsetof(SubMap, spareText2), 208U);
  EXPECT_EQ(sizeof(SubMap), 240U);
}

TEST(TopologyLayout, PhysicalLink) {
  expectRecord("PhysicalLink", 0, sizeof(PhysicalLink),
               {FIELD(PhysicalLink, linkId), FIELD(PhysicalLink, linkName),
                FIELD(PhysicalLink, srcDeviceId), FIELD(PhysicalLink, srcPortName),
                FIELD(PhysicalLink, dstDeviceId), FIELD(PhysicalLink, dstPortName),
                FIELD(PhysicalLink, spareText), FIELD(PhysicalLink, linkAttribute),
                FIELD(PhysicalLink, linkStatus), FIELD(PhysicalLink, srcZero),
                FIELD(PhysicalLink, srcPortType), FIELD(PhysicalLink, srcPortStatus),
                FIELD(PhysicalLink, dstZero), FIELD(PhysicalLink, dstPortType),
                FIELD(PhysicalLink, dstPortStatus), FIELD(PhysicalLink, spareInt)});
  EXPECT_EQ(offsetof(PhysicalLink, linkAttribute), 224U);
  EXPECT_EQ(offsetof(PhysicalLink, spareInt), 256U);
  EXPECT_EQ(sizeof(PhysicalLink), 264U);
}

TEST(TopologyLayout, DispLink) {
  expectRecord("DispLink", kAfterTable, sizeof(DispLink),
               {FIELD(DispLink, text1), FIELD(DispLink, text2), FIELD(DispLink, text3),
                FIELD(DispLink, number1), FIELD(DispLink, text4), FIELD(DispLink, number2),
                FIELD(DispLink, text5), FIELD(DispLink, number3)});
  EXPECT_EQ(offsetof(DispLink, number1), 104U);
  EXPECT_EQ(offsetof(DispLink, number2), 144U);
  EXPECT_EQ(offsetof(DispLink, number3), 184U);
  EXPECT_EQ(sizeof(DispLink), 192U);
}

TEST(TopologyLayout, UpdateDevice) {
  expectRecord("UpdateDevice", kAfterTable, sizeof(UpdateDevice),
               {FIELD(UpdateDevice, id), FIELD(UpdateDevice, text1), FIELD(UpdateDevice, text2),
                FIELD(UpdateDevice, text3), FIELD(UpdateDevice, text4)});
  EXPECT_EQ(sizeof(UpdateDevice), 144U);
}

TEST(TopologyLayout, SimNode) {
  expectRecord("SimNode", kAfterTable, sizeof(SimNode),
               {FIELD(SimNode, parentSubMapId), FIELD(SimNode, nodeId)});
  EXPECT_EQ(sizeof(SimNode), 72U);
}

// The fields are private; that there are these two and no table shows by the size.
TEST(TopologyLayout, TransmitAssistant) {
  struct Fields {
    std::map<int, int> entries;
    ACE_RW_Mutex rwLock;
  };
  EXPECT_EQ(sizeof(TransmitAssistant), sizeof(Fields));
  static_assert(!std::is_polymorphic_v<TransmitAssistant>);
}

TEST(TopologyLayout, InterfaceClassesHoldNothing) { static_assert(std::is_empty_v<EMFMOMgrI>); }

// A table and the pointer to the port that is looked for.
TEST(TopologyLayout, LinkPortIndexComparer) {
  static_assert(std::has_virtual_destructor_v<LinkPortIndexComparer>);
  EXPECT_EQ(sizeof(LinkPortIndexComparer), 2 * sizeof(void*));
}

TEST(TopologyLayout, PortIndex) {
  using NS_DOMAIN::PortIndex;
  expectRecord(
      "PortIndex", 0, sizeof(PortIndex),
      {FIELD(PortIndex, rackID), FIELD(PortIndex, chassisID), FIELD(PortIndex, neID),
       FIELD(PortIndex, shelfID), FIELD(PortIndex, slotID), FIELD(PortIndex, subSlotID),
       FIELD(PortIndex, portID), FIELD(PortIndex, domainType), FIELD(PortIndex, type),
       FIELD(PortIndex, portName), FIELD(PortIndex, logicalFlag), FIELD(PortIndex, reservedFlag),
       FIELD(PortIndex, layerRate), FIELD(PortIndex, cachedStatus)});
  EXPECT_EQ(offsetof(PortIndex, portName), 40U);
  EXPECT_EQ(offsetof(PortIndex, cachedStatus), 80U);
}

TEST(TopologyLayout, UniResId) {
  using NS_DOMAIN_SOUTHAPISET::TEUniResID;
  expectRecord("TEUniResID", 0, sizeof(TEUniResID),
               {FIELD(TEUniResID, uniResId), FIELD(TEUniResID, resType), FIELD(TEUniResID, neId),
                FIELD(TEUniResID, extId)});
  EXPECT_EQ(offsetof(TEUniResID, neId), 64U);
  EXPECT_EQ(offsetof(TEUniResID, extId), 72U);
}

}  // namespace
