// The list of the latest answer and its lock: its two sections, other threads between and beside
// them, lock calls that fail, exceptions that pass.
#include <atomic>
#include <cerrno>
#include <stdexcept>
#include <thread>

#include "emfglobal.h"
#include "emftopointerface.h"
#include "linkportstatus.h"
#include "links.h"
#include "rwlock_calls.h"

namespace {

// Which conversion of a resource id on this thread throws, counted from 1; 0: none.
thread_local int throwingConversion = 0;

}  // namespace

using NS_DOMAIN::PortIndex;

extern "C" {
void __real__ZN7NS_UTIL9ResIDUtil15ResID2PortIndexERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERN9NS_DOMAIN9PortIndexE(
    const std::string& resourceId, PortIndex& port);
void __wrap__ZN7NS_UTIL9ResIDUtil15ResID2PortIndexERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERN9NS_DOMAIN9PortIndexE(
    const std::string& resourceId, PortIndex& port) {
  if (throwingConversion > 0 && --throwingConversion == 0) {
    throw std::runtime_error("no such id");
  }
  __real__ZN7NS_UTIL9ResIDUtil15ResID2PortIndexERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERN9NS_DOMAIN9PortIndexE(
      resourceId, port);
}
}

namespace emf::test {
namespace {

using emf::doubles::failsOtherwise;
using emf::doubles::platform;
using emf::doubles::state;
using emf::doubles::TELinkInfo;
using emf::doubles::UniResIds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr int kThreads = 8;
constexpr int kRounds = 200;

const PortIndex kPort = portAt(12, 0, 3, 1, 5);
const PortIndex kOther = portAt(13, 0, 3, 1, 5);

class LinkPortLock : public emf::doubles::PlatformTest {
 protected:
  LinkPortLock() {
    GetEmfLog();  // looking it up takes locks that are not the list's
    rwlockCalls() = RwlockCalls();
    platform().southbound.portStates(state(1, 1));
    errno = 0;
  }
  ~LinkPortLock() override {
    rwlockCalls() = RwlockCalls();
    throwingConversion = 0;
  }
  static void onAnotherThread(const std::function<void()>& work) { std::thread(work).join(); }
};

TEST_F(LinkPortLock, RefillAndSearchAreTwoSectionsBetweenTheTraces) {
  platform().journal.reset();
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
  EXPECT_THAT(rwlockCalls().calls, ElementsAre("write", "unlock", "read", "unlock"));
  EXPECT_THAT(platform().journal.events(),
              ElementsAre("trace: [findPortstatusByportidx] entering",
                          ::testing::StartsWith("trace: portIndex neID: 12,"),
                          "port status: " + resourceId(kPort), "write", "unlock", "read", "unlock",
                          "trace: [findPortstatusByportidx] leaving"));
  EXPECT_EQ(rwlockCalls().held, 0);
}

TEST_F(LinkPortLock, PortWithoutAnElementTakesNoLock) {
  EXPECT_EQ(findPortstatusByportidx(PortIndex()), -1);
  EXPECT_THAT(rwlockCalls().calls, IsEmpty());
}

TEST_F(LinkPortLock, IsNotHeldDuringTheSouthboundCall) {
  int heldDuringCall = -1;
  platform().southbound.portStates([&](const auto& ids, auto& errors, auto& out) {
    heldDuringCall = rwlockCalls().held;
    state(1, 1)(ids, errors, out);
  });
  findPortstatusByportidx(kPort);
  EXPECT_EQ(heldDuringCall, 0);
  platform().southbound.portStates(failsOtherwise());
  findPortstatusByportidx(kPort);
  EXPECT_EQ(rwlockCalls().held, 0);
}

TEST_F(LinkPortLock, AnotherThreadBetweenTheSectionsTakesTheAnswerAway) {
  rwlockCalls().beforeRead = [] {
    onAnotherThread([] { EXPECT_EQ(findPortstatusByportidx(kOther), 1); });
  };
  EXPECT_EQ(findPortstatusByportidx(kPort), 0);
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
}

TEST_F(LinkPortLock, AnotherThreadsAnswerForThePortCounts) {
  platform().southbound.portStatesThen(state(1, 1));
  platform().southbound.portStatesThen(state(1, 0));
  rwlockCalls().beforeRead = [] {
    onAnotherThread([] { EXPECT_EQ(findPortstatusByportidx(kPort), 9); });
  };
  EXPECT_EQ(findPortstatusByportidx(kPort), 9);
}

TEST_F(LinkPortLock, FailedReadLockLeavesItsCodeAndTheSearchGoesOn) {
  rwlockCalls().readFails = EAGAIN;
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
  EXPECT_EQ(errno, EAGAIN);
  EXPECT_THAT(rwlockCalls().calls, ElementsAre("write", "unlock", "read"));
}

TEST_F(LinkPortLock, FailedWriteLockLeavesItsCodeAndTheRefillGoesOn) {
  rwlockCalls().writeFails = EDEADLK;
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
  EXPECT_EQ(errno, EDEADLK);
  EXPECT_THAT(rwlockCalls().calls, ElementsAre("write", "read", "unlock"));
}

TEST_F(LinkPortLock, FailedUnlockLeavesItsCodeAndNothingElse) {
  rwlockCalls().unlockFails = EPERM;
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
  EXPECT_EQ(errno, EPERM);
}

TEST_F(LinkPortLock, IsNotHeldWhenAConversionThrows) {
  throwingConversion = 1;  // that of the answer
  EXPECT_THROW(findPortstatusByportidx(kPort), std::runtime_error);
  EXPECT_EQ(rwlockCalls().held, 0);
  EXPECT_EQ(findPortstatusByportidx(kPort), 1);
}

TEST_F(LinkPortLock, ConversionThatThrowsIsAFailureOfTheLink) {
  platform().southbound.linkInfos(gives({linkInfo("IPLINK=1", "", kPort, kOther)}));
  for (int conversion = 1; conversion <= 4; ++conversion) {  // port, answer, port, answer
    PhysicalLink link;
    throwingConversion = conversion;
    EXPECT_EQ(EMFTopoI::getPhyLink("1", link), 0x41180035) << conversion;
    EXPECT_EQ(rwlockCalls().held, 0);
  }
  EXPECT_THAT(
      platform().log.texts(),
      ::testing::AllOf(SizeIs(4), ::testing::Each("[EMFTopoI::getPhyLink] GetLinkInfo failed")));
}

TEST_F(LinkPortLock, StepsBeforeAConversionThatThrowsHaveFilledTheLink) {
  platform().southbound.linkInfos(gives({linkInfo("IPLINK=1", "A - Z", kPort, kOther)}));
  PhysicalLink expected;
  const std::function<void()> kSteps[] = {
      [&] {
        expected.linkId = "1";
        expected.linkName = "A - Z";
        expected.linkAttribute = 6;
      },
      [&] {
        expected.srcDeviceId = "12";
        expected.srcPortName = "GE-1";
        expected.srcPortType = kPhysicalType;
      },
      [&] { expected.srcPortStatus = 1; },
      [&] {
        expected.dstDeviceId = "13";
        expected.dstPortName = "GE-1";
        expected.dstPortType = kPhysicalType;
      },
  };
  int conversion = 0;  // port, answer, port, answer
  for (const auto& fill : kSteps) {
    fill();
    PhysicalLink link;
    throwingConversion = ++conversion;
    EXPECT_EQ(EMFTopoI::getPhyLink("1", link), 0x41180035);
    EXPECT_EQ(link, expected) << conversion;
  }
}

TEST_F(LinkPortLock, ConversionThatThrowsCostsTheRestOfItsBatch) {
  const TELinkInfo info = linkInfo("IPLINK=1", "", kPort, kOther);
  platform().southbound.links({"1", "2", "3"});
  platform().southbound.linkInfos(gives({info, info, info}));
  std::list<PhysicalLink> links;
  throwingConversion = 5;  // the second link's first
  EXPECT_EQ(EMFTopoI::getAllPhyLinks(links), 0);
  EXPECT_THAT(links, SizeIs(1));
  EXPECT_THAT(platform().log.texts(), ElementsAre("[EMFTopoI::getPhyLink] GetLinkInfo failed"));
}

class LinkPortThreads : public LinkPortLock {
 protected:
  static void inThreads(const std::function<void(int number)>& work) {
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) threads.emplace_back(work, number);
    for (std::thread& thread : threads) thread.join();
  }
};

TEST_F(LinkPortThreads, EachFindsItsOwnStatusOrZero) {
  // The element tells the status: even ones are 1, odd ones 9.
  platform().southbound.portStates([](const auto& ids, auto& errors, auto& out) {
    state(1, ids.front().neId % 2 == 0 ? 1 : 0)(ids, errors, out);
  });
  std::atomic<int> wrong{0};
  std::atomic<int> found{0};
  inThreads([&](int number) {
    const PortIndex port = portAt(100 + number, 0, 1, 2, 3, kPhysicalType, std::string(200, 'n'));
    const int own = number % 2 == 0 ? 1 : 9;
    for (int round = 0; round < kRounds; ++round) {
      const int status = findPortstatusByportidx(port);
      if (status == own) ++found;
      if (status != own && status != 0) ++wrong;
    }
  });
  EXPECT_EQ(wrong, 0);
  EXPECT_GT(found, 0);
}

TEST_F(LinkPortThreads, LinksAreReadBesideOneAnother) {
  platform().southbound.links({"IPLINK=204:1", "IPLINK=204:2"});
  platform().southbound.linkInfos([](const UniResIds& ids, std::vector<TELinkInfo>& out) {
    for (const auto& id : ids) out.push_back(linkInfo(id.uniResId, "name", kPort, kOther));
  });
  std::atomic<int> wrong{0};
  inThreads([&wrong](int number) {
    for (int round = 0; round < kRounds / 4; ++round) {
      std::list<PhysicalLink> links;
      PhysicalLink link;
      const std::int64_t result =
          number % 2 == 0 ? EMFTopoI::getAllPhyLinks(links) : EMFTopoI::getPhyLink("204:1", link);
      if (number % 2 != 0) links = {link, link};
      if (result != 0 || links.size() != 2 || links.front().srcDeviceId != "12") ++wrong;
    }
  });
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace emf::test
