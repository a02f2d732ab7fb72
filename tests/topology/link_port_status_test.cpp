#include "linkportstatus.h"

#include <type_traits>

#include "links.h"

namespace emf::test {
namespace {

using emf::doubles::answer;
using emf::doubles::failsOtherwise;
using emf::doubles::failsWith;
using emf::doubles::platform;
using emf::doubles::state;
using NS_DOMAIN::PortIndex;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

static_assert(std::is_same_v<decltype(findPortstatusByportidx), std::int32_t(const PortIndex&)>);

constexpr char kInvalid[] = "__ONBI_INVALID_STRING__";
constexpr char kEntering[] = "[findPortstatusByportidx] entering";
constexpr char kLeavingStatus[] = "[findPortstatusByportidx] leaving";
constexpr std::size_t kMostCharacters = 1023;

const PortIndex kPort = portAt(12, 0, 3, 1, 5);

auto trace(int level, const std::string& text) {
  return FieldsAre("TaDebug", level, "emftopointerface", "unknown", Gt(0), text);
}

class LinkPortStatus : public emf::doubles::PlatformTest {};

TEST_F(LinkPortStatus, PortWithoutAnElementIsNotAskedFor) {
  PortIndex port = kPort;
  port.neID = -1;
  EXPECT_EQ(findPortstatusByportidx(port), -1);
  EXPECT_EQ(findPortstatusByportidx(PortIndex()), -1);
  EXPECT_THAT(platform().journal.events(), IsEmpty());
}

TEST_F(LinkPortStatus, PortIsAskedForByItsResourceId) {
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
  const auto calls = platform().southbound.portStatusCalls();
  ASSERT_THAT(calls, SizeIs(1));
  EXPECT_THAT(calls[0].ids, ElementsAre(FieldsAre(resourceId(kPort), "PP", 12, kInvalid)));
  EXPECT_EQ(calls[0].errorNumberBefore, -1);
  EXPECT_EQ(calls[0].errorsBefore, 0U);
  EXPECT_EQ(calls[0].outBefore, 0U);
}

TEST_F(LinkPortStatus, OnlyMinusOneIsNoElement) {
  platform().southbound.portStates(state(1, 1));
  EXPECT_EQ(findPortstatusByportidx(portAt(0, 0, 0, 0, 0)), 1);
  EXPECT_EQ(findPortstatusByportidx(portAt(-2, 0, 0, 0, 0)), 1);
}

TEST_F(LinkPortStatus, TypeSaysWhetherThePortIsLogical) {
  const std::int32_t kLogicalTypes[] = {0x10001, 0x10003, 0x10004, 0x10005, 0x10006,
                                        0x10007, 0x10008, 0x1000B, 0x1000D, 0x1000E};
  const std::int32_t kPhysicalTypes[] = {0x10000, 0x10002, 0x10009, 0x1000A, 0x1000C,    0x1000F,
                                         0x10010, 0,       -1,      1,       0x7FFFFFFF, 0x20001};
  const auto askedFor = [](std::int32_t type) {
    platform().southbound.reset();
    findPortstatusByportidx(portAt(12, 0, 3, 1, 5, type));
    return platform().southbound.portStatusCalls().at(0).ids.at(0);
  };
  for (const std::int32_t type : kLogicalTypes) {
    EXPECT_THAT(askedFor(type),
                FieldsAre(resourceId(portAt(12, 0, 3, 1, 5, type), true), "LP", 12, kInvalid));
  }
  for (const std::int32_t type : kPhysicalTypes) {
    EXPECT_THAT(askedFor(type),
                FieldsAre(resourceId(portAt(12, 0, 3, 1, 5, type), false), "PP", 12, kInvalid));
  }
}

TEST_F(LinkPortStatus, StatesMakeTheStatus) {
  const std::tuple<int, int, int> kStates[] = {
      {1, 1, 1},         {1, 0, 9},   {0, 0, 8},          {0, 1, 2},
      {2, 0, 2},         {-1, 1, -1}, {1, -1, -1},        {-1, -1, -1},
      {0, -1, -1},       {-2, 0, -1}, {1, 2, 2},          {2, 1, 2},
      {2, 2, 2},         {0, 2, 2},   {2147483647, 0, 2}, {-2147483647 - 1, 1, -1},
      {1, 2147483647, 2}};
  for (const auto& [first, second, status] : kStates) {
    platform().southbound.portStates(state(first, second));
    EXPECT_EQ(findPortstatusByportidx(kPort), status) << first << ", " << second;
  }
}

TEST_F(LinkPortStatus, UnreportedPortIsZero) {
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(LinkPortStatus, AnswerForOtherCoordinatesIsNotFound) {
  for (const PortIndex& other :
       {portAt(13, 0, 3, 1, 5), portAt(12, 1, 3, 1, 5), portAt(12, 0, 4, 1, 5),
        portAt(12, 0, 3, 2, 5), portAt(12, 0, 3, 1, 6), portAt(12, 0, 3, -1, 5)}) {
    platform().southbound.portStates(answer({{resourceId(other), 1, 1}}));
    EXPECT_EQ(findPortstatusByportidx(kPort), 0) << resourceId(other);
  }
  for (const char* id : {"", "garbage", "NE=x,PP=5", "NE=12"}) {
    platform().southbound.portStates(answer({{id, 1, 1}}));
    EXPECT_EQ(findPortstatusByportidx(kPort), 0) << id;
  }
}

TEST_F(LinkPortStatus, NameTypeAndDomainPlayNoPart) {
  PortIndex other = portAt(12, 0, 3, 1, 5, kLogicalType, "another name");
  other.domainType = 9;
  platform().southbound.portStates(answer({{resourceId(other, true), 1, 0}}));
  EXPECT_EQ(findPortstatusByportidx(kPort), 9);
}

TEST_F(LinkPortStatus, FirstMatchCounts) {
  const std::string mine = resourceId(kPort);
  platform().southbound.portStates(
      answer({{resourceId(portAt(1, 0, 0, 0, 0)), 1, 1}, {mine, 0, 0}, {mine, 1, 0}}));
  EXPECT_EQ(findPortstatusByportidx(kPort), 8);
}

TEST_F(LinkPortStatus, EachAnswerReplacesTheOneBefore) {
  platform().southbound.portStatesThen(state(1, 1));
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
  platform().southbound.portStatesThen(state(1, 1));
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
  platform().southbound.portStatesThen(failsWith(1));
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
}

TEST_F(LinkPortStatus, EveryCallAsksAgain) {
  platform().southbound.portStates(state(1, 1));
  for (int i = 0; i < 3; ++i) findPortstatusByportidx(kPort);
  EXPECT_THAT(platform().southbound.portStatusCalls(), SizeIs(3));
}

TEST_F(LinkPortStatus, CallIsTracedWithThePortsFields) {
  PortIndex port = portAt(12, 0, 3, -1, 5, 0x10001, "GE %s%n;1");
  port.domainType = -7;
  findPortstatusByportidx(port);
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace(1, kEntering),
                          trace(3,
                                "portIndex neID: 12,  shelfID: 0, slotID:3, subSlotID:-1, "
                                "portID:5, portName:GE %s%n;1, domainType:-7, type:65537"),
                          trace(1, kLeavingStatus)));
  EXPECT_THAT(platform().text.formats(), ElementsAre(FieldsAre(1024U, kMostCharacters, _)));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(LinkPortStatus, LongNameIsCutAndTheCutIsTraced) {
  const std::string start =
      "portIndex neID: 12,  shelfID: 0, slotID:3, subSlotID:1, portID:5, portName:";
  findPortstatusByportidx(portAt(12, 0, 3, 1, 5, 0, std::string(5000, 'n')));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace(1, kEntering), trace(1, "snprintf_s failed."),
                          trace(3, start + std::string(kMostCharacters - start.size(), 'n')),
                          trace(1, kLeavingStatus)));
}

TEST_F(LinkPortStatus, FailedFormattingIsTracedAndTheWorkGoesOn) {
  platform().text.formattingFails("port");
  platform().southbound.portStates(state(1, 0));
  EXPECT_EQ(findPortstatusByportidx(kPort), 9);
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(trace(1, kEntering), trace(1, "snprintf_s failed."), trace(3, "port"),
                          trace(1, kLeavingStatus)));
}

TEST_F(LinkPortStatus, CodeOfAProcessExceptionIsLoggedWithTheIds) {
  platform().southbound.portStates(failsWith(-5));
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
  EXPECT_THAT(platform().log.lines(),
              ElementsAre(FieldsAre(
                  "ii_orma_corbaagent_bundle/ii_ormacorba_emf/debug", "LogText", "emftopointerface",
                  "unknown", Gt(0), 1,
                  "[emftopointerface:adapterlinkPortstatus]get port status failed. Error: -5 " +
                      resourceId(kPort) + "; ")));
  EXPECT_THAT(platform().trace.texts(), ElementsAre(kEntering, _, kLeavingStatus));
}

TEST_F(LinkPortStatus, AnythingElseThatIsThrownIsLoggedWithTheNumberOfPorts) {
  platform().southbound.portStatesThen(failsOtherwise());
  platform().southbound.portStatesThen([](const auto&, auto&, auto&) { throw 5; });
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
  const auto line = FieldsAre(
      "ii_orma_corbaagent_bundle/ii_ormacorba_emf/debug", "LogText", "emftopointerface", "unknown",
      Gt(0), 1, "[emftopointerface:adapterlinkPortstatus]Other Ex. linkport size =%d1");
  EXPECT_THAT(platform().log.lines(), ElementsAre(line, line));
}

TEST_F(LinkPortStatus, AnswerThatCameBeforeAnExceptionIsLost) {
  platform().southbound.portStates([](const auto& ids, auto& errors, auto& out) {
    state(1, 1)(ids, errors, out);
    failsWith(1).raise();
  });
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
}

TEST(LinkPortComparer, ComparesTheFiveCoordinates) {
  const LinkPortIndexComparer matches(&kPort);
  PortIndex same = portAt(12, 0, 3, 1, 5, 99, "another");
  same.domainType = same.rackID = same.chassisID = same.layerRate = same.cachedStatus = 99;
  same.logicalFlag = same.reservedFlag = 1;
  EXPECT_TRUE(matches(same));
  for (std::int32_t PortIndex::*coordinate :
       {&PortIndex::neID, &PortIndex::shelfID, &PortIndex::slotID, &PortIndex::subSlotID,
        &PortIndex::portID}) {
    PortIndex other = kPort;
    ++(other.*coordinate);
    EXPECT_FALSE(matches(other));
    EXPECT_FALSE(LinkPortIndexComparer(&other)(kPort));
  }
}

}  // namespace
}  // namespace emf::test
