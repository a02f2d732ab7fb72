// The southbound set, on whichever database the program is built for.
#include <atomic>
#include <thread>

#include "southbound_fixture.h"

namespace orma::southbound::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::FieldsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr char kInvalid[] = "__ONBI_INVALID_STRING__";
constexpr int kNoSuchPort = 0x411800CC;

const std::string kLink77 = std::string("IPLINK=204:77 link 77 6 ") + kPort1 + " -> " + kPort2;

using LinkIds = SouthboundTest;

TEST_F(LinkIds, AreThoseOfEveryKindInTheOrderOfTheirNumbers) {
  EXPECT_THAT(linkIds(), ElementsAre("VLINK=0:5 VLINK", "L2LINK=105:6 L2LINK", "IPLINK=7:9 IPLINK",
                                     "IPLINK=204:77 IPLINK"));
}

TEST_F(LinkIds, MayBeThoseOfSomeElementsOrKinds) {
  EXPECT_THAT(linkIds({2}), ElementsAre("VLINK=0:5 VLINK", "L2LINK=105:6 L2LINK"));
  EXPECT_THAT(linkIds({2, 3}), SizeIs(4));  // both ends have to be named
  EXPECT_THAT(linkIds({3}), IsEmpty());
  EXPECT_THAT(linkIds({}, {204, 0}), ElementsAre("VLINK=0:5 VLINK", "IPLINK=204:77 IPLINK"));
  EXPECT_THAT(linkIds({2}, {105}), ElementsAre("L2LINK=105:6 L2LINK"));
  EXPECT_THAT(linkIds({2}, {204}), IsEmpty());
  EXPECT_THAT(linkIds({-1}, {-1}), IsEmpty());
}

TEST_F(LinkIds, AreAppended) {
  std::vector<TEUniResID> ids(1);
  NS_DOMAIN_SOUTHAPISET::GetLinkID({}, {0}, ids);
  EXPECT_THAT(ids, ElementsAre(FieldsAre(kInvalid, kInvalid, -1, kInvalid),
                               FieldsAre("VLINK=0:5", "VLINK", -1, kInvalid)));
}

TEST_F(LinkIds, OfANetworkWithoutLinksAreNone) {
  database().run("DELETE FROM link");
  EXPECT_THAT(linkIds(), IsEmpty());
}

TEST_F(LinkIds, MayBeLargeNumbers) {
  addLink("9223372036854775807", "204", "1", "2");
  EXPECT_EQ(linkIds().back(), "IPLINK=204:9223372036854775807 IPLINK");
  EXPECT_THAT(linkInfos({"IPLINK=204:9223372036854775807"}), SizeIs(1));
}

using LinkInfos = SouthboundTest;

TEST_F(LinkInfos, HoldTheLinkAndItsPorts) {
  EXPECT_THAT(linkInfos({"IPLINK=204:77"}), ElementsAre(kLink77));
}

TEST_F(LinkInfos, ComeInTheOrderOfTheIdsAndAsOftenAsTheyAreAskedFor) {
  const std::string ends = std::string(kPort1) + " -> " + kPort3;
  EXPECT_THAT(linkInfos({"IPLINK=204:77", "L2LINK=105:6", "IPLINK=204:78", "VLINK=0:5",
                         "IPLINK=204:77", "IPLINK=7:9"}),
              ElementsAre(kLink77, "L2LINK=105:6 link 6 6 " + ends, "VLINK=0:5 link 5 6 " + ends,
                          kLink77, std::string("IPLINK=7:9 link 9 6 ") + kPort2 + " -> " + kPort1));
}

TEST_F(LinkInfos, KindInFrontOfTheNumberIsNotLookedAt) {
  EXPECT_THAT(linkInfos({"IPLINK=77", "IPLINK=5:77", "IPLINK=x:77", "IPLINK=:77"}),
              ElementsAre(kLink77, kLink77, kLink77, kLink77));
}

TEST_F(LinkInfos, IdsThatNameNoLinkAreLeftOut) {
  EXPECT_THAT(linkInfos({"", "77", "204:77", "IPLINK", "IPLINK=", "IPLINK=204:", "IPLINK=204:x",
                         "IPLINK=204:77x", "IPLINK=204: 77", "VLINK=204:77", "L2LINK=204:77",
                         "iplink=204:77", "IPLINK=204:78", "IPLINK=9223372036854775808",
                         "IPLINK=-77", "IPLINK=204:77;", kInvalid}),
              IsEmpty());
}

TEST_F(LinkInfos, MaskSelectsWhatIsFilled) {
  EXPECT_THAT(linkInfos({"VLINK=0:5"}, 0), ElementsAre("VLINK=0:5  0  -> "));
  EXPECT_THAT(linkInfos({"VLINK=0:5"}, 1), ElementsAre("VLINK=0:5 link 5 0  -> "));
  EXPECT_THAT(linkInfos({"VLINK=0:5"}, 2), ElementsAre("VLINK=0:5  6  -> "));
  EXPECT_THAT(linkInfos({"VLINK=0:5"}, 4),
              ElementsAre(std::string("VLINK=0:5  0 ") + kPort1 + " -> " + kPort3));
  EXPECT_THAT(linkInfos({"VLINK=0:5"}, 0x3F8), ElementsAre("VLINK=0:5  0  -> "));
}

TEST_F(LinkInfos, AreAppended) {
  std::vector<TELinkInfo> infos(1);
  NS_DOMAIN_SOUTHAPISET::GetLinkInfo(resourceIds({"IPLINK=77"}), kAllAttributes, infos);
  ASSERT_THAT(infos, SizeIs(2));
  EXPECT_EQ(infos[0].linkResId, "");
}

TEST_F(LinkInfos, OfNoIdsNeedNoDatabase) {
  configure("");
  EXPECT_THAT(linkInfos({}), IsEmpty());
  EXPECT_THAT(linkInfos({"garbage"}), IsEmpty());
  EXPECT_THAT(portStates({}), IsEmpty());
  EXPECT_THAT(portStates({"garbage"}), IsEmpty());
}

TEST_F(LinkInfos, OfAnyNumberOfIdsComeWhole) {
  std::string links;
  for (int id = 10000; id < 14001; ++id) {
    links += "INSERT INTO link VALUES (" + std::to_string(id) + ", 'n', 204, 1, 1, 2);";
  }
  database().run("BEGIN;" + links + "COMMIT");
  for (const int count : {1, 2, 31, 32, 33, 1999, 2000, 2001, 4001}) {
    std::vector<std::string> ids;
    std::vector<std::string> expected;
    for (int i = 0; i < count; ++i) {
      ids.push_back("IPLINK=204:" + std::to_string(14000 - i));
      expected.push_back(ids.back() + " n 1 " + kPort1 + " -> " + kPort2);
    }
    EXPECT_THAT(linkInfos(ids), ElementsAreArray(expected)) << count;
  }
}

using PortStates = SouthboundTest;

TEST_F(PortStates, ComeInTheOrderOfTheIdsUnderTheIdsAskedFor) {
  const std::string logical = "NE=3,FR=0,S=2,LP=5;7;1;another name";
  EXPECT_THAT(
      portStates({kPort3, kPort1, logical, kPort1, "NE=3,FR=0,S=2,PP=5"}),
      ElementsAre(std::string(kPort3) + " 0/-1", std::string(kPort1) + " 1/0", logical + " 1/1",
                  std::string(kPort1) + " 1/0", "NE=3,FR=0,S=2,PP=5 1/1"));
}

TEST_F(PortStates, UnknownPortsAreToldInTheErrors) {
  const std::vector<std::string> unknown = {"NE=2,FR=0,S=1,SS=0,PP=2",  // no such port
                                            "NE=2,FR=0,S=1,PP=1",       // another place
                                            "NE=7,FR=0,S=1,SS=0,PP=1",  // no such device
                                            "FR=0,S=1,SS=0,PP=1",       // no device at all
                                            "garbage",
                                            "",
                                            kInvalid};
  TEErrInfoReturn errors;
  std::vector<TEPortOAMStatus> states;
  std::vector<std::string> ids = unknown;
  ids.insert(ids.begin() + 3, kPort1);
  NS_DOMAIN_SOUTHAPISET::GetPortStatus(resourceIds(ids), errors, states);
  EXPECT_THAT(states, ElementsAre(FieldsAre(kPort1, 1, 0)));
  EXPECT_EQ(errors.number, 7);
  ASSERT_THAT(errors.entries, SizeIs(7));
  for (std::size_t i = 0; i < unknown.size(); ++i) {
    EXPECT_THAT(errors.entries[i], FieldsAre(unknown[i], kNoSuchPort));
  }
}

TEST_F(PortStates, WithoutErrorsTheirNumberIsZero) {
  TEErrInfoReturn errors;
  EXPECT_EQ(errors.number, -1);
  std::vector<TEPortOAMStatus> states;
  NS_DOMAIN_SOUTHAPISET::GetPortStatus(resourceIds({kPort1}), errors, states);
  EXPECT_EQ(errors.number, 0);
  EXPECT_THAT(errors.entries, IsEmpty());
}

TEST_F(PortStates, AreAppended) {
  TEErrInfoReturn errors;
  std::vector<TEPortOAMStatus> states(1);
  NS_DOMAIN_SOUTHAPISET::GetPortStatus(resourceIds({kPort1}), errors, states);
  EXPECT_THAT(states, ElementsAre(FieldsAre("", 0, 0), FieldsAre(kPort1, 1, 0)));
}

TEST_F(PortStates, AreThoseOfNow) {
  EXPECT_THAT(portStates({kPort1}), ElementsAre(std::string(kPort1) + " 1/0"));
  database().run("UPDATE port SET state_a = 0, state_b = 2 WHERE port_id = 1");
  EXPECT_THAT(portStates({kPort1}), ElementsAre(std::string(kPort1) + " 0/2"));
}

TEST_F(PortStates, OfAnyNumberOfPortsComeWhole) {
  std::string ports;
  for (int port = 1; port <= 4001; ++port) {
    const std::string number = std::to_string(port);
    ports += "INSERT INTO port VALUES (1" + number + ", 3, 9, 9, 9, " + number + ", 'n', 1, " +
             number + ", 0);";
  }
  database().run("BEGIN;" + ports + "COMMIT");
  for (const int count : {1, 2, 32, 33, 2000, 2001, 4001}) {
    std::vector<std::string> ids;
    std::vector<std::string> expected;
    for (int port = count; port > 0; --port) {
      ids.push_back("NE=3,FR=9,S=9,SS=9,PP=" + std::to_string(port));
      expected.push_back(ids.back() + " " + std::to_string(port) + "/0");
    }
    EXPECT_THAT(portStates(ids), ElementsAreArray(expected)) << count;
  }
}

// The coordinates of a port have 32 bits with a sign; the upper half of the device numbers keeps
// its pattern. The very last one is the number that means 'no device'.
TEST_F(PortStates, DevicesBeyondTheSignKeepTheirPattern) {
  database().run(dao::test::deviceRow("4294967294", "high"));
  addPort("4", "4294967294, 0, 0, 0, 1");
  addPort("5", "4294967295, 0, 0, 0, 1");
  addLink("1", "204", "4", "5");
  const std::string high = "NE=-2,FR=0,S=0,SS=0,PP=1;0;65538;GE";
  const std::string last = "FR=0,S=0,SS=0,PP=1;0;65538;GE";
  EXPECT_THAT(linkInfos({"IPLINK=204:1"}),
              ElementsAre("IPLINK=204:1 link 1 6 " + high + " -> " + last));
  EXPECT_THAT(portStates({high, last}), ElementsAre(high + " 1/0"));
  EXPECT_THAT(linkIds({-2, -1}), ElementsAre("IPLINK=204:1 IPLINK"));
}

using Failures = SouthboundTest;

TEST_F(Failures, WithoutADatabaseEachOperationTellsWhichKeyToSet) {
  configure("");
  const std::string reason =
      "the configuration key database.connection is not set; set it to sqlite:PATH or "
      "postgresql:CONNINFO";
  EXPECT_THAT(thrownBy([] { linkIds(); }), FieldsAre(kReadFailed, "southbound GetLinkID", reason));
  EXPECT_THAT(thrownBy([] { linkInfos({"IPLINK=77"}); }),
              FieldsAre(kReadFailed, "southbound GetLinkInfo", reason));
  EXPECT_THAT(thrownBy([] { portStates({kPort1}); }),
              FieldsAre(kReadFailed, "southbound GetPortStatus", reason));
  EXPECT_THAT(loggedTexts(), ElementsAre("[NS_DOMAIN_SOUTHAPISET::GetLinkID] " + reason,
                                         "[NS_DOMAIN_SOUTHAPISET::GetLinkInfo] " + reason,
                                         "[NS_DOMAIN_SOUTHAPISET::GetPortStatus] " + reason));
  EXPECT_EQ(loggedErrors().front().file, "southbound");
}

TEST_F(Failures, MissingTableIsToldByItsName) {
  database().run("DROP TABLE link");
  EXPECT_THAT(thrownBy([] { linkIds(); }).reason, HasSubstr("link"));
  database().run("DROP TABLE port");
  EXPECT_THAT(thrownBy([] { portStates({kPort1}); }).reason, HasSubstr("port"));
  EXPECT_THAT(loggedTexts(), SizeIs(2));
}

TEST_F(Failures, LeaveTheOutputAlone) {
  database().run(dao::test::deviceRow("4294967296", "beyond"));
  addPort("4", "4294967296, 0, 0, 0, 1");
  addLink("1", "204", "1", "4");
  std::vector<TELinkInfo> infos(1);
  const auto read = [&infos] {
    NS_DOMAIN_SOUTHAPISET::GetLinkInfo(resourceIds({"IPLINK=77", "IPLINK=1"}), kAllAttributes,
                                       infos);
  };
  EXPECT_THAT(thrownBy(read), FieldsAre(kReadFailed, "southbound GetLinkInfo",
                                        "link 1: 4294967296 is not between 0 and 4294967295"));
  EXPECT_THAT(infos, SizeIs(1));
  EXPECT_THAT(linkInfos({"IPLINK=77"}), ElementsAre(kLink77));
}

TEST_F(Failures, EightThreadsReadAtOnce) {
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < 8; ++number) {
    threads.emplace_back([&wrong] {
      for (int round = 0; round < 20; ++round) {
        if (portStates({kPort1}) != std::vector<std::string>{std::string(kPort1) + " 1/0"}) ++wrong;
        if (linkInfos({"IPLINK=204:77"}) != std::vector<std::string>{kLink77}) ++wrong;
        if (linkIds().size() != 4) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace orma::southbound::test
