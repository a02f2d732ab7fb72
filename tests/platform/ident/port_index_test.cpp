#include "orma/ident/port_index.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace NS_DOMAIN {

static auto fieldsOf(const PortIndex& port) {
  return std::tie(port.rackID, port.chassisID, port.neID, port.shelfID, port.slotID, port.subSlotID,
                  port.portID, port.domainType, port.type, port.portName, port.reservedFlag,
                  port.layerRate, port.cachedStatus);
}

static bool operator==(const PortIndex& a, const PortIndex& b) {
  return fieldsOf(a) == fieldsOf(b) && a.logicalFlag == b.logicalFlag;
}

static std::ostream& operator<<(std::ostream& out, const PortIndex& port) {
  return out << port.neID << '/' << port.shelfID << '/' << port.slotID << '/' << port.subSlotID
             << '/' << port.portID << " domain " << port.domainType << " type " << port.type
             << " \"" << port.portName << "\" logical " << int{port.logicalFlag};
}

}  // namespace NS_DOMAIN

namespace {

using NS_DOMAIN::PortIndex;
using NS_UTIL::ResIDUtil;

std::string idOf(const PortIndex& port, bool logical) {
  std::string id = "left over";
  ResIDUtil::PortIndex2ResID(port, id, logical);
  return id;
}

PortIndex read(const std::string& id, PortIndex port = {}) {
  ResIDUtil::ResID2PortIndex(id, port);
  return port;
}

PortIndex wholePort() {
  PortIndex port;
  port.neID = 12;
  port.shelfID = 0;
  port.slotID = 3;
  port.subSlotID = 1;
  port.portID = 5;
  port.domainType = 2;
  port.type = 65537;
  port.portName = "GE-0/3/1";
  return port;
}

TEST(PortIndex, StartsWithItsDefaults) {
  const PortIndex fresh;
  EXPECT_EQ(fresh.rackID, 0);
  EXPECT_EQ(fresh.chassisID, -1);
  EXPECT_EQ(fresh.neID, -1);
  EXPECT_EQ(fresh.shelfID, -1);
  EXPECT_EQ(fresh.slotID, -1);
  EXPECT_EQ(fresh.subSlotID, -1);
  EXPECT_EQ(fresh.portID, -1);
  EXPECT_EQ(fresh.domainType, 0);
  EXPECT_EQ(fresh.type, 0);
  EXPECT_EQ(fresh.portName, "");
  EXPECT_EQ(fresh.logicalFlag, 0);
  EXPECT_EQ(fresh.reservedFlag, 0);
  EXPECT_EQ(fresh.layerRate, 0);
  EXPECT_EQ(fresh.cachedStatus, -1);
}

TEST(PortId, NamesThePlaceAndThePort) {
  EXPECT_EQ(idOf(wholePort(), false), "NE=12,FR=0,S=3,SS=1,PP=5;2;65537;GE-0/3/1");
  EXPECT_EQ(idOf(wholePort(), true), "NE=12,FR=0,S=3,SS=1,LP=5;2;65537;GE-0/3/1");
}

TEST(PortId, AbsentCoordinatesHaveNoSegment) {
  EXPECT_EQ(idOf(PortIndex(), false), ";0;0;");
  EXPECT_EQ(idOf(PortIndex(), true), ";0;0;");
  PortIndex port;
  port.neID = 12;
  EXPECT_EQ(idOf(port, false), "NE=12;0;0;");
  port.portID = 5;
  EXPECT_EQ(idOf(port, false), "NE=12,PP=5;0;0;");
  EXPECT_EQ(idOf(port, true), "NE=12,LP=5;0;0;");
  port.neID = -1;
  EXPECT_EQ(idOf(port, true), "LP=5;0;0;");
}

TEST(PortId, GivesThePortBack) {
  for (const bool logical : {false, true}) {
    for (int absent = 0; absent < 32; ++absent) {
      PortIndex port = wholePort();
      std::int32_t PortIndex::*const kCoordinates[] = {&PortIndex::neID, &PortIndex::shelfID,
                                                       &PortIndex::slotID, &PortIndex::subSlotID,
                                                       &PortIndex::portID};
      for (int i = 0; i < 5; ++i) {
        if ((absent >> i & 1) != 0) port.*kCoordinates[i] = -1;
      }
      // Whether a port is logical shows in its own segment alone.
      port.logicalFlag = logical && port.portID != -1 ? 1 : 0;
      EXPECT_EQ(read(idOf(port, logical)), port);
    }
  }
}

TEST(PortId, GivesNumbersOfAnySizeBack) {
  for (const std::int32_t number : {0, 1, -2, INT32_MAX, INT32_MIN}) {
    PortIndex port = wholePort();
    port.neID = port.shelfID = port.slotID = port.subSlotID = port.portID = number;
    port.domainType = port.type = number;
    EXPECT_EQ(read(idOf(port, false)), port);
  }
  PortIndex port = wholePort();
  port.domainType = port.type = -1;
  EXPECT_EQ(read(idOf(port, false)), port);
}

TEST(PortId, GivesEveryNameBack) {
  std::vector<std::string> names = {
      "",     ";",    ",",   "=",        "%",        "%25",
      "%3B",  ";;;;", "a b", "NE=1;2,3", "%%%41%4",  "ü 框",
      "%zz%", "\n\t", "-1",  "PP=5",     " leading", std::string("a\0b", 3)};
  for (int byte = 0; byte < 256; ++byte) names.emplace_back(3, static_cast<char>(byte));
  for (const std::string& name : names) {
    PortIndex port = wholePort();
    port.portName = name;
    const std::string id = idOf(port, false);
    EXPECT_EQ(read(id), port) << id;
    EXPECT_EQ(id.find_first_of(",=", id.find(';')), std::string::npos) << id;
  }
}

TEST(PortId, NameIsWrittenWithEscapes) {
  PortIndex port = wholePort();
  port.portName = "a%b;c,d=e";
  EXPECT_EQ(idOf(port, false), "NE=12,FR=0,S=3,SS=1,PP=5;2;65537;a%25b%3Bc%2Cd%3De");
}

TEST(PortId, EscapeThatIsNoneStandsForItself) {
  for (const char* name : {"%", "%2", "%zz", "%2z", "%z5", "% 5", "%+5", "%-5"}) {
    EXPECT_EQ(read(std::string("NE=1,PP=1;0;0;") + name).portName, name);
  }
  EXPECT_EQ(read("NE=1,PP=1;0;0;%2c%3b").portName, ",;");  // small letters as well
}

TEST(PortId, IsReadAsFarAsItGoes) {
  PortIndex expected;
  expected.neID = 12;
  expected.portID = 5;
  EXPECT_EQ(read("NE=12,PP=5"), expected);
  EXPECT_EQ(read("NE=12,PP=5;"), expected);
  expected.domainType = 2;
  EXPECT_EQ(read("NE=12,PP=5;2"), expected);
  expected.type = 65537;
  EXPECT_EQ(read("NE=12,PP=5;2;65537"), expected);
  EXPECT_EQ(read("NE=12,PP=5;2;65537;"), expected);
}

TEST(PortId, CutAnywhereNamesNoOtherPlace) {
  const std::string id = idOf(wholePort(), false);
  const std::size_t place = id.find(';');
  for (std::size_t length = 0; length < id.size(); ++length) {
    const PortIndex port = read(id.substr(0, length));
    if (length >= place) {
      EXPECT_EQ(port.neID, 12) << length;
      EXPECT_EQ(port.portID, 5) << length;
    } else {
      EXPECT_EQ(port.portID, -1) << length;
    }
  }
}

TEST(PortId, FurtherSegmentsAndFieldsDoNotDisturb) {
  EXPECT_EQ(read("NE=12,X=9,FR=0,S=3,SS=1,PP=5;2;65537;GE-0/3/1"), wholePort());
  EXPECT_EQ(read("PP=5,SS=1,S=3,FR=0,NE=12;2;65537;GE-0/3/1"), wholePort());
  EXPECT_EQ(read("NE=1;0;0;a;b").portName, "a;b");
}

TEST(PortId, MalformedPlaceIsNotRead) {
  for (const char* id : {"", ";", "garbage", "NE", "NE=", "=12", "NE=12,", ",NE=12", "NE=12,,PP=5",
                         "NE=12,PP", "NE=12,PP=", "ne=12", "__ONBI_INVALID_STRING__"}) {
    EXPECT_EQ(read(id), PortIndex()) << id;
  }
}

TEST(PortId, MalformedNumberLeavesItsFieldAlone) {
  for (const char* number :
       {"x", "5x", " 5", "5 ", "+5", "0x5", "2147483648", "-2147483649", "5.0"}) {
    const std::string text = number;
    PortIndex expected;
    expected.slotID = 3;
    expected.portName = "n";
    EXPECT_EQ(read("NE=" + text + ",S=3,PP=" + text + ";" + text + ";" + text + ";n"), expected)
        << number;
  }
}

TEST(PortId, WhatItDoesNotNameStaysAsItIs) {
  PortIndex before = wholePort();
  before.rackID = before.chassisID = before.layerRate = before.cachedStatus = 9;
  before.reservedFlag = 1;
  EXPECT_EQ(read("", before), before);
  EXPECT_EQ(read("garbage;x;", before), before);
  PortIndex expected = before;
  expected.slotID = 8;
  EXPECT_EQ(read("S=8", before), expected);
  expected.portName = "";
  EXPECT_EQ(read("S=8;;;", before), expected);
}

}  // namespace
