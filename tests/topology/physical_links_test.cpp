#include <type_traits>

#include "emftopointerface.h"
#include "links.h"

namespace emf::test {
namespace {

using emf::doubles::failsOtherwise;
using emf::doubles::failsWith;
using emf::doubles::platform;
using emf::doubles::state;
using emf::doubles::TELinkInfo;
using emf::doubles::TEUniResID;
using emf::doubles::UniResIds;
using ::testing::_;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

static_assert(std::is_same_v<decltype(EMFTopoI::getPhyLink),
                             std::int64_t(const std::string&, PhysicalLink&)>);
static_assert(
    std::is_same_v<decltype(EMFTopoI::getAllPhyLinks), std::int64_t(std::list<PhysicalLink>&)>);

constexpr std::int64_t kNoLink = 0x411800D4;
constexpr std::int64_t kFailed = 0x41180035;
constexpr int kCode = 0x411800BA;  // 1092092090

constexpr char kInfoCode[] = "[EMFTopoI::getPhyLink] GetLinkInfo. Error: 1092092090 ";
constexpr char kInfoFailed[] = "[EMFTopoI::getPhyLink] GetLinkInfo failed";
constexpr char kIdCode[] = "[EMFTopoI::getAllPhyLinks] GetLinkID. Error: 1092092090 ";
constexpr char kIdFailed[] = "[EMFTopoI::getAllPhyLinks] GetLinkID failed";
constexpr char kEntered[] = "[EMFTopoI::getAllPhyLinks]Entered";
constexpr char kLeaving[] = "[EMFTopoI::getAllPhyLinks] Leaving";

const NS_DOMAIN::PortIndex kSource = portAt(12, 0, 3, 1, 5, kPhysicalType, "GE-0/3/1;5");
const NS_DOMAIN::PortIndex kDestination = portAt(14, 1, 2, -1, 9, kLogicalType, "LAG 9");

TELinkInfo wholeInfo(const std::string& id = "IPLINK=204:77") {
  return linkInfo(id, "A - Z", kSource, kDestination);
}

PhysicalLink wholeLink(const std::string& id = "204:77") {
  PhysicalLink link;
  link.linkId = id;
  link.linkName = "A - Z";
  link.srcDeviceId = "12";
  link.srcPortName = "GE-0/3/1;5";
  link.dstDeviceId = "14";
  link.dstPortName = "LAG 9";
  link.linkAttribute = 6;
  link.linkStatus = 9;
  link.srcPortType = kPhysicalType;
  link.srcPortStatus = 9;
  link.dstPortType = kLogicalType;
  link.dstPortStatus = 9;
  return link;
}

PhysicalLink leftOver() {
  PhysicalLink link;
  link.linkId = link.linkName = link.srcDeviceId = link.srcPortName = link.dstDeviceId =
      link.dstPortName = link.spareText = "left over";
  link.linkAttribute = link.linkStatus = link.srcZero = link.srcPortType = link.srcPortStatus =
      link.dstZero = link.dstPortType = link.dstPortStatus = link.spareInt = 77;
  return link;
}

// Every field that is written, over what was there.
PhysicalLink over(PhysicalLink link) {
  link.spareText = "left over";
  link.spareInt = 77;
  return link;
}

class PhysicalLinks : public emf::doubles::PlatformTest {
 protected:
  PhysicalLinks() { platform().southbound.portStates(state(1, 0)); }

  static void expectLogged(const std::vector<std::string>& texts) {
    EXPECT_EQ(platform().log.texts(), texts);
    EXPECT_THAT(platform().log.lines(),
                Each(FieldsAre("ii_orma_corbaagent_bundle/ii_ormacorba_emf/debug", "LogText",
                               "emftopointerface", "unknown", Gt(0), 1, _)));
  }
};

class OneLink : public PhysicalLinks {
 protected:
  static PhysicalLink read(const TELinkInfo& info) {
    platform().southbound.linkInfos(gives({info}));
    PhysicalLink link;
    EXPECT_EQ(EMFTopoI::getPhyLink("1", link), 0);
    return link;
  }
  PhysicalLink link_ = leftOver();
};

TEST_F(OneLink, IsAskedForByItsKind) {
  const std::tuple<const char*, const char*> kIds[] = {
      {"105:77", "L2LINK"},       {"0:77", "VLINK"},
      {"204:77", "IPLINK"},       {"7:77", "IPLINK"},
      {"77", "IPLINK"},           {"x:77", "VLINK"},
      {":77", "VLINK"},           {"", "IPLINK"},
      {"-1:77", "IPLINK"},        {"105", "IPLINK"},
      {" 105:77", "L2LINK"},      {"105x:77", "L2LINK"},
      {"105:0:1", "L2LINK"},      {"x105:77", "VLINK"},
      {"4294967401:1", "L2LINK"}, {"4294967296:1", "VLINK"},
      {"0x69:1", "VLINK"},        {"99999999999999999999:1", "IPLINK"},
      {"0105:77", "L2LINK"},      {"IPLINK=204:77", "VLINK"}};
  for (const auto& [linkId, kind] : kIds) {
    platform().southbound.reset();
    EXPECT_EQ(EMFTopoI::getPhyLink(linkId, link_), kNoLink);
    const auto calls = platform().southbound.linkInfoCalls();
    ASSERT_THAT(calls, SizeIs(1));
    EXPECT_THAT(calls[0].ids, ElementsAre(FieldsAre(kind + std::string("=") + linkId, kind, -1,
                                                    "__ONBI_INVALID_STRING__")));
    EXPECT_EQ(calls[0].mask, 0x3FF);
    EXPECT_EQ(calls[0].outBefore, 0U);
  }
  EXPECT_THAT(platform().southbound.linkIdCalls(), IsEmpty());
}

TEST_F(OneLink, EveryFieldComesFromTheAnswer) {
  platform().southbound.linkInfos(gives({wholeInfo()}));
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), 0);
  EXPECT_EQ(link_, over(wholeLink()));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(OneLink, BothEndsAreAskedForOneAtATime) {
  platform().southbound.linkInfos(gives({wholeInfo()}));
  EMFTopoI::getPhyLink("204:77", link_);
  const auto calls = platform().southbound.portStatusCalls();
  ASSERT_THAT(calls, SizeIs(2));
  EXPECT_THAT(calls[0].ids, ElementsAre(FieldsAre(resourceId(kSource), "PP", 12, _)));
  EXPECT_THAT(calls[1].ids, ElementsAre(FieldsAre(resourceId(kDestination, true), "LP", 14, _)));
}

TEST_F(OneLink, StatusIsTheLargerOfBothEnds) {
  using States = std::pair<int, int>;
  const std::tuple<States, States, int, int, int> kStates[] = {
      {{2, 0}, {1, 0}, 2, 9, 9},      {{1, 0}, {2, 0}, 9, 2, 9}, {{-1, 0}, {0, 0}, -1, 8, 8},
      {{-1, 0}, {-1, 1}, -1, -1, -1}, {{1, 1}, {1, 1}, 1, 1, 1}, {{0, 0}, {1, 1}, 8, 1, 8}};
  for (const auto& [source, destination, srcStatus, dstStatus, status] : kStates) {
    platform().southbound.portStatesThen(state(source.first, source.second));
    platform().southbound.portStatesThen(state(destination.first, destination.second));
    const PhysicalLink link = read(wholeInfo());
    EXPECT_EQ(link.srcPortStatus, srcStatus);
    EXPECT_EQ(link.dstPortStatus, dstStatus);
    EXPECT_EQ(link.linkStatus, status);
  }
}

TEST_F(OneLink, UnreportedEndIsZeroAndLargerThanANegativeOne) {
  platform().southbound.portStatesThen(state(-1, 0));
  platform().southbound.portStatesThen(nullptr);
  const PhysicalLink link = read(wholeInfo());
  EXPECT_EQ(link.srcPortStatus, -1);
  EXPECT_EQ(link.dstPortStatus, 0);
  EXPECT_EQ(link.linkStatus, 0);
}

TEST_F(OneLink, EndWithoutAnElementCostsNoCall) {
  TELinkInfo info = wholeInfo();
  info.srcPortResId = "";
  PhysicalLink expected = wholeLink();
  expected.srcDeviceId = "-1";
  expected.srcPortName = "";
  expected.srcPortType = 0;
  expected.srcPortStatus = -1;
  EXPECT_EQ(read(info), expected);
  EXPECT_THAT(platform().southbound.portStatusCalls(), SizeIs(1));
  info.dstPortResId = "garbage";
  expected.dstDeviceId = "-1";
  expected.dstPortName = "";
  expected.dstPortType = 0;
  expected.dstPortStatus = expected.linkStatus = -1;
  EXPECT_EQ(read(info), expected);
  EXPECT_THAT(platform().southbound.portStatusCalls(), SizeIs(1));
}

TEST_F(OneLink, IdIsBehindTheFirstEqualsOrWhole) {
  const std::pair<const char*, const char*> kIds[] = {{"IPLINK=204:77", "204:77"},
                                                      {"77", "77"},
                                                      {"", ""},
                                                      {"IPLINK=", ""},
                                                      {"A=b=c", "b=c"},
                                                      {"=7", "7"}};
  for (const auto& [id, linkId] : kIds) EXPECT_EQ(read(wholeInfo(id)).linkId, linkId) << id;
}

TEST_F(OneLink, TextsAreNotConverted) {
  platform().text.characterSetSwitch(1);
  TELinkInfo info = wholeInfo();
  info.linkName = "\xE4\xB8\xAD%s";
  PhysicalLink expected = wholeLink();
  expected.linkName = info.linkName;
  EXPECT_EQ(read(info), expected);
  EXPECT_THAT(platform().text.conversions(), IsEmpty());
}

TEST_F(OneLink, FirstAnswerCounts) {
  platform().southbound.linkInfos(gives({wholeInfo(), wholeInfo("IPLINK=204:78")}));
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), 0);
  EXPECT_EQ(link_, over(wholeLink()));
  EXPECT_THAT(platform().southbound.portStatusCalls(), SizeIs(2));
}

TEST_F(OneLink, UnknownLinkIsToldByItsResultAlone) {
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), kNoLink);
  EXPECT_EQ(link_, leftOver());
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(OneLink, CodeOfAProcessExceptionIsTheResult) {
  platform().southbound.linkInfos(failsWith(kCode));
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), kCode);
  EXPECT_EQ(link_, leftOver());
  expectLogged({kInfoCode});
  EXPECT_THAT(platform().trace.lines(), IsEmpty());
}

TEST_F(OneLink, CodeKeepsItsSign) {
  platform().southbound.linkInfos(failsWith(-2147483647 - 1));
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), -2147483648LL);
  platform().southbound.linkInfos(failsWith(0));
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), 0);
  expectLogged({"[EMFTopoI::getPhyLink] GetLinkInfo. Error: -2147483648 ",
                "[EMFTopoI::getPhyLink] GetLinkInfo. Error: 0 "});
}

TEST_F(OneLink, MissingInterfaceIsAProcessException) {
  platform().southbound.linkInfos([](const UniResIds&, std::vector<TELinkInfo>&) {
    InterfaceNotExistException failure;
    throw failure;
  });
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), 0x41180004);
}

TEST_F(OneLink, AnythingElseThatIsThrownHasACodeOfItsOwn) {
  platform().southbound.linkInfos(failsOtherwise());
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), kFailed);
  platform().southbound.linkInfos([](const UniResIds&, std::vector<TELinkInfo>&) { throw 5; });
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), kFailed);
  EXPECT_EQ(link_, leftOver());
  expectLogged({kInfoFailed, kInfoFailed});
}

TEST_F(OneLink, AnswerThatCameBeforeAnExceptionIsLost) {
  platform().southbound.linkInfos([](const UniResIds&, std::vector<TELinkInfo>& out) {
    out.push_back(wholeInfo());
    failsWith(kCode).raise();
  });
  EXPECT_EQ(EMFTopoI::getPhyLink("204:77", link_), kCode);
  EXPECT_EQ(link_, leftOver());
}

TEST_F(OneLink, FailedStatusIsNoFailureOfTheLink) {
  platform().southbound.portStates(failsWith(kCode));
  PhysicalLink expected = wholeLink();
  expected.srcPortStatus = expected.dstPortStatus = expected.linkStatus = 0;
  EXPECT_EQ(read(wholeInfo()), expected);
}

class AllLinks : public PhysicalLinks {
 protected:
  // The southbound interface knows links 1 to `count`, and each as itself.
  static void network(std::size_t count) {
    std::vector<std::string> ids;
    for (std::size_t number = 1; number <= count; ++number) ids.push_back(idOf(number));
    platform().southbound.links(ids);
    platform().southbound.linkInfos(itself);
  }
  static std::string idOf(std::size_t number) { return "IPLINK=204:" + std::to_string(number); }
  // No ends: no port is asked for.
  static void itself(const UniResIds& ids, std::vector<TELinkInfo>& out) {
    for (const TEUniResID& id : ids) out.push_back({id.uniResId, "", 0, "", ""});
  }
  static std::vector<std::size_t> batches() {
    std::vector<std::size_t> sizes;
    for (const auto& call : platform().southbound.linkInfoCalls()) sizes.push_back(call.ids.size());
    return sizes;
  }
  std::vector<std::string> linkIds() const {
    std::vector<std::string> ids;
    for (const PhysicalLink& link : links_) ids.push_back("IPLINK=" + link.linkId);
    return ids;
  }

  std::list<PhysicalLink> links_;
};

TEST_F(AllLinks, AllKindsAreAskedForAtOnce) {
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
  EXPECT_THAT(platform().southbound.linkIdCalls(),
              ElementsAre(FieldsAre(IsEmpty(), IsEmpty(), 0U)));
}

TEST_F(AllLinks, NoLinksAreASuccessWithBothTraces) {
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
  EXPECT_THAT(links_, IsEmpty());
  EXPECT_THAT(platform().southbound.linkInfoCalls(), IsEmpty());
  const auto trace = [](const char* text) {
    return FieldsAre("TaDebug", 1, "emftopointerface", "unknown", Gt(0), text);
  };
  EXPECT_THAT(platform().trace.lines(), ElementsAre(trace(kEntered), trace(kLeaving)));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(AllLinks, IdsGoOnAsTheyCameWithTheMask) {
  platform().southbound.linkIds([](UniResIds& out) {
    out.resize(2);
    out[0] = {"L2LINK=105:1", "L2LINK", 7, "extra"};
    out[1].uniResId = "VLINK=0:2";
  });
  EMFTopoI::getAllPhyLinks(links_);
  const auto calls = platform().southbound.linkInfoCalls();
  ASSERT_THAT(calls, SizeIs(1));
  EXPECT_THAT(calls[0].ids, ElementsAre(FieldsAre("L2LINK=105:1", "L2LINK", 7, "extra"),
                                        FieldsAre("VLINK=0:2", "__ONBI_INVALID_STRING__", -1,
                                                  "__ONBI_INVALID_STRING__")));
  EXPECT_EQ(calls[0].mask, 0x3FF);
}

TEST_F(AllLinks, BatchHoldsTwoThousandIds) {
  const std::pair<std::size_t, std::vector<std::size_t>> kCounts[] = {{0, {}},
                                                                      {1, {1}},
                                                                      {1999, {1999}},
                                                                      {2000, {2000}},
                                                                      {2001, {2000, 1}},
                                                                      {4000, {2000, 2000}},
                                                                      {4001, {2000, 2000, 1}}};
  for (const auto& [count, sizes] : kCounts) {
    platform().reset();
    links_.clear();
    network(count);
    EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
    EXPECT_EQ(batches(), sizes);
    std::vector<std::string> asked;
    for (const auto& call : platform().southbound.linkInfoCalls()) {
      EXPECT_EQ(call.outBefore, 0U);
      for (const TEUniResID& id : call.ids) asked.push_back(id.uniResId);
    }
    ASSERT_THAT(asked, SizeIs(count));
    for (std::size_t i = 0; i < count; ++i) ASSERT_EQ(asked[i], idOf(i + 1));
    EXPECT_EQ(linkIds(), asked);
  }
}

TEST_F(AllLinks, EachLinkIsReadWhole) {
  links_ = {leftOver()};
  platform().southbound.links({"IPLINK=204:77", "IPLINK=204:78"});
  platform().southbound.linkInfos(gives({wholeInfo(), wholeInfo("IPLINK=204:78")}));
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
  EXPECT_THAT(links_, ElementsAre(leftOver(), wholeLink(), wholeLink("204:78")));
}

TEST_F(AllLinks, CallsAndTracesComeInTheirOrder) {
  platform().southbound.links({"IPLINK=204:77"});
  platform().southbound.linkInfos(gives({wholeInfo()}));
  EMFTopoI::getAllPhyLinks(links_);
  const std::string trace = "trace: ";
  const std::string port = trace + "[findPortstatusByportidx] ";
  EXPECT_THAT(platform().journal.events(),
              ElementsAre(trace + kEntered, "link ids", "link infos: 1", port + "entering",
                          ::testing::StartsWith(trace + "portIndex neID: 12,"),
                          "port status: " + resourceId(kSource), port + "leaving",
                          port + "entering", ::testing::StartsWith(trace + "portIndex neID: 14,"),
                          "port status: " + resourceId(kDestination, true), port + "leaving",
                          trace + kLeaving));
}

TEST_F(AllLinks, EveryEndIsAskedForAgain) {
  platform().southbound.links({"1", "2", "3"});
  platform().southbound.linkInfos(gives({wholeInfo(), wholeInfo(), wholeInfo()}));
  EMFTopoI::getAllPhyLinks(links_);
  EXPECT_THAT(platform().southbound.portStatusCalls(), SizeIs(6));
}

TEST_F(AllLinks, FailedBatchLosesItselfAlone) {
  network(4001);
  platform().southbound.linkInfosThen(itself);
  platform().southbound.linkInfosThen(failsWith(kCode));
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
  EXPECT_THAT(batches(), ElementsAre(2000, 2000, 1));
  ASSERT_THAT(links_, SizeIs(2001));
  EXPECT_EQ(links_.front().linkId, "204:1");
  EXPECT_EQ(std::next(links_.begin(), 1999)->linkId, "204:2000");
  EXPECT_EQ(links_.back().linkId, "204:4001");
  expectLogged({kInfoCode});
  EXPECT_THAT(platform().trace.texts(), ElementsAre(kEntered, kLeaving));
}

TEST_F(AllLinks, EveryBatchMayFailInItsOwnWay) {
  network(6000);
  platform().southbound.linkInfosThen(failsOtherwise());
  platform().southbound.linkInfosThen(failsWith(kCode));
  platform().southbound.linkInfosThen([](const UniResIds&, std::vector<TELinkInfo>&) { throw 5; });
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
  EXPECT_THAT(links_, IsEmpty());
  expectLogged({kInfoFailed, kInfoCode, kInfoFailed});
}

TEST_F(AllLinks, AnswersThatCameBeforeAnExceptionAreLost) {
  network(1);
  platform().southbound.linkInfos([](const UniResIds& ids, std::vector<TELinkInfo>& out) {
    itself(ids, out);
    failsOtherwise().raise();
  });
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
  EXPECT_THAT(links_, IsEmpty());
}

TEST_F(AllLinks, BatchWithoutAnswersIsNoFailure) {
  network(2001);
  platform().southbound.linkInfosThen(nullptr);
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), 0);
  EXPECT_THAT(linkIds(), ElementsAre(idOf(2001)));
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

TEST_F(AllLinks, FailedIdsAreTheResult) {
  links_ = {leftOver()};
  platform().southbound.linkIds(failsWith(kCode));
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), kCode);
  platform().southbound.linkIds(failsWith(-5));
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), -5);
  platform().southbound.linkIds(failsOtherwise());
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), kFailed);
  EXPECT_THAT(links_, ElementsAre(leftOver()));
  EXPECT_THAT(platform().trace.texts(), ElementsAre(kEntered, kEntered, kEntered));
  expectLogged({kIdCode, "[EMFTopoI::getAllPhyLinks] GetLinkID. Error: -5 ", kIdFailed});
}

TEST_F(AllLinks, IdsThatCameBeforeAnExceptionAreNotAskedFor) {
  platform().southbound.linkIds([](UniResIds& out) {
    out.resize(3);
    failsWith(kCode).raise();
  });
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links_), kCode);
  EXPECT_THAT(platform().southbound.linkInfoCalls(), IsEmpty());
}

}  // namespace
}  // namespace emf::test
