#include "port_status.h"

#include <gmock/gmock.h>

#include "files.h"
#include "inventory_writer.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Device 2 with the ports 1 and 2, device 3 with port 3; a link of each kind ends at port 1.
class PortStatusTest : public ::testing::Test {
 protected:
  PortStatusTest() {
    NewDatabaseFile made(file_);
    InventoryWriter writer(made.database());
    writer.add(physicalRoot());
    for (const int id : {2, 3}) {
      DeviceRow device;
      device.id = id;
      device.subnetId = "102";
      writer.add(device);
    }
    writer.add(PortRow{1, 2, 0, 1, 0, 4, "GE\"0", 0x10002, 1, 1});
    writer.add(PortRow{2, 2, 0, 1, 0, 5, "GE1", 0x10002, 1, 1});
    writer.add(PortRow{3, 3, 7, 1, 2, 4, "GE2", 0x10002, 0, 1});
    writer.add(LinkRow{8, "a", LinkKind::Ip, 0, 1, 2});
    writer.add(LinkRow{9, "b", LinkKind::Layer2, 0, 3, 1});
    writer.add(LinkRow{10, "c", LinkKind::Virtual, 0, 1, 1});
    made.publish();
  }

  std::string status(const std::string& port, const std::string& states = "") {
    return portStatus(file_, *portOf(port), statesOf(states));
  }

  TempDirectory directory_;
  const std::string file_ = directory_.path("net.db");
};

TEST_F(PortStatusTest, PortIsShownWithEveryLinkThatEndsAtIt) {
  const std::string line = R"({"portId":1,"place":"2/0/1/0/4","name":"GE\"0","states":[1,1],)"
                           R"("links":["204:8","105:9","0:10"]})";
  EXPECT_EQ(status("1"), line);
  EXPECT_EQ(status("2/0/1/0/4"), line);
  EXPECT_EQ(status("3/7/1/2/4"),
            R"({"portId":3,"place":"3/7/1/2/4","name":"GE2","states":[0,1],"links":["105:9"]})");
}

TEST_F(PortStatusTest, StatesChangeForOnePortAlone) {
  EXPECT_EQ(status("2/0/1/0/5", "-1,2147483647"),
            R"({"portId":2,"place":"2/0/1/0/5","name":"GE1","states":[-1,2147483647],)"
            R"("links":["204:8"]})");
  EXPECT_THAT(query(file_, "SELECT port_id, state_a, state_b FROM port ORDER BY port_id"),
              ElementsAre("1|1|1", "2|-1|2147483647", "3|0|1"));
}

TEST_F(PortStatusTest, UnknownPortsAreNamedAndChangeNothing) {
  const std::vector<std::string> before = dump(file_);
  EXPECT_EQ(errorOf([&] { status("4", "0,0"); }),
            "there is no port 4 in " + file_ + "; its ids stand in table port");
  EXPECT_EQ(errorOf([&] { status("2/0/1/0/6", "0,0"); }),
            "there is no port 2/0/1/0/6 in " + file_ + "; device 2 has none at that place");
  EXPECT_EQ(errorOf([&] { status("5/0/1/0/4"); }),
            "there is no port 5/0/1/0/4 in " + file_ + "; there is no device 5");
  EXPECT_EQ(dump(file_), before);
}

TEST_F(PortStatusTest, DatabaseThatAnotherProgramHoldsIsToldAsLocked) {
  Database other(file_, Database::Mode::ReadWrite);
  const Transaction held(other, "BEGIN EXCLUSIVE");
  Database database(file_, Database::Mode::ReadWrite);
  sqlite3_busy_timeout(database.handle(), 0);
  EXPECT_THAT(errorOf([&] { portStatus(database, *portOf("1"), statesOf("0,0")); }),
              AllOf(HasSubstr(file_), HasSubstr("database is locked"),
                    HasSubstr("another program holds it")));
}

TEST_F(PortStatusTest, ReadersDoNotKeepStatesFromChangingBetweenTheirReads) {
  Database reader(file_, Database::Mode::ReadOnly);
  Statement states(reader, "SELECT state_a, state_b FROM port WHERE port_id = 1");
  ASSERT_TRUE(states.step());
  EXPECT_EQ(states.integer(1), 1);
  states.reset();
  status("1", "1,0");
  ASSERT_TRUE(states.step());
  EXPECT_EQ(states.integer(1), 0);
}

TEST_F(PortStatusTest, FileThatIsMissingOrNoInventoryIsNamed) {
  const PortName port = *portOf("1");
  const std::string missing = directory_.path("no.db");
  for (const char* states : {"", "1,1"}) {
    EXPECT_THAT(errorOf([&] { portStatus(missing, port, statesOf(states)); }),
                AllOf(HasSubstr(missing), HasSubstr("unable to open database file")));
    const std::string bare = directory_.write("bare.db", "");
    EXPECT_THAT(errorOf([&] { portStatus(bare, port, statesOf(states)); }),
                AllOf(HasSubstr(bare), HasSubstr("it is no inventory")));
  }
  EXPECT_THAT(directory_.entries(), ElementsAre("bare.db", "net.db"));
}

TEST(PortTextTest, PortIsAnIdOrAPlace) {
  EXPECT_EQ(std::get<std::int64_t>(*portOf("17")), 17);
  EXPECT_EQ(std::get<PortPlace>(*portOf("2/0/1/0/24")), (PortPlace{2, 0, 1, 0, 24}));
  for (const char* text :
       {"", "x", "1x", " 1", "1 ", "+1", "1.5", "1/2", "1/2/3/4", "1/2/3/4/", "1/2/3/4/5/",
        "1/2/3/4/5/6", "/1/2/3/4/5", "1//3/4/5", "1,2,3,4,5", "9223372036854775808"}) {
    EXPECT_FALSE(portOf(text)) << text;
  }
}

TEST(PortTextTest, StatesAreTwoNumbersOf32Bits) {
  EXPECT_EQ(*statesOf("1,0"), (PortStates{1, 0}));
  EXPECT_EQ(*statesOf("-1,-2147483648"), (PortStates{-1, -2147483647 - 1}));
  for (const char* text : {"", "1", "1,", ",1", "1,2,3", "1;2", "1, 2", "a,b", "1,2 ", "+1,1",
                           "2147483648,0", "0,-2147483649"}) {
    EXPECT_FALSE(statesOf(text)) << text;
  }
}

}  // namespace
}  // namespace ormasim::testing
