// What is peculiar to SQLite: a database that is a file, and values of any type in any column.
#include <filesystem>

#include "../metrics/exchange_counts.h"
#include "southbound_fixture.h"
#include "sqlite_database.h"

namespace orma::southbound::test {
namespace {

using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::HasSubstr;

class SouthboundSqlite : public SouthboundTest {
 protected:
  std::filesystem::path path() {
    return database().connection().substr(std::string("sqlite:").size());
  }
};

TEST_F(SouthboundSqlite, DatabaseThatGoesAwayFailsTheReadsUntilItIsBack) {
  const std::vector<std::string> before = portStates({kPort1});
  const std::filesystem::path elsewhere = path().string() + ".elsewhere";
  std::filesystem::rename(path(), elsewhere);
  const auto reason = HasSubstr("No such file or directory");
  EXPECT_THAT(thrownBy([] { linkIds(); }), FieldsAre(kReadFailed, "southbound GetLinkID", reason));
  EXPECT_THAT(thrownBy([] { linkInfos({"IPLINK=77"}); }),
              FieldsAre(kReadFailed, "southbound GetLinkInfo", reason));
  EXPECT_THAT(thrownBy([] { portStates({kPort1}); }),
              FieldsAre(kReadFailed, "southbound GetPortStatus", reason));
  std::filesystem::rename(elsewhere, path());
  EXPECT_EQ(portStates({kPort1}), before);
}

TEST_F(SouthboundSqlite, ReplacedDatabaseIsReadAnew) {
  portStates({kPort1});
  std::filesystem::copy_file(path(), path().string() + ".new");
  {
    dao::test::SqliteFile other(path().string() + ".new");
    other.run("UPDATE port SET state_a = 5");
  }
  std::filesystem::rename(path().string() + ".new", path());
  EXPECT_THAT(portStates({kPort1}), ElementsAre(std::string(kPort1) + " 5/0"));
}

TEST_F(SouthboundSqlite, ValuesThatAreNoneOfTheLayoutFailTheRead) {
  const std::pair<const char*, const char*> kChanges[] = {
      {"UPDATE link SET kind = 'abc'", "a value of type text cannot be taken as an integer"},
      {"UPDATE link SET kind = 4294967296", "4294967296 is not between -2147483648 and 2147483647"},
      {"UPDATE link SET attribute = 1.5", "a value of type real cannot be taken as an integer"},
      {"UPDATE link SET name = x'00'", "a value of type binary cannot be taken as a text"},
      {"UPDATE port SET type = 'abc'", "a value of type text cannot be taken as an integer"},
      {"UPDATE port SET dev_id = -1", "-1 is not between 0 and 4294967295"},
      {"UPDATE port SET slot = 2147483648", "2147483648 is not between -2147483648 and 2147483647"},
      {"UPDATE port SET name = x'00'", "a value of type binary cannot be taken as a text"}};
  for (const auto& [change, reason] : kChanges) {
    database().run(change);
    EXPECT_THAT(thrownBy([] { linkInfos({"IPLINK=204:77"}); }),
                FieldsAre(kReadFailed, "southbound GetLinkInfo", std::string("link 77: ") + reason))
        << change;
    database().run("DELETE FROM link; DELETE FROM port");
    addPort("1", "2, 0, 1, 0, 1", "GE-1");
    addPort("2", "3, 0, 2, -1, 5");
    addLink("77", "204", "1", "2");
  }
  database().run("UPDATE link SET kind = 'abc'");
  EXPECT_THAT(thrownBy([] { linkIds(); }),
              FieldsAre(kReadFailed, "southbound GetLinkID",
                        "link 77: a value of type text cannot be taken as an integer"));
  database().run("UPDATE port SET state_b = 'up'");
  EXPECT_THAT(thrownBy([] { portStates({kPort1}); }),
              FieldsAre(kReadFailed, "southbound GetPortStatus",
                        "a port of device 2: a value of type text cannot be taken as an integer"));
}

TEST_F(SouthboundSqlite, ReadsAreCountedByWhatBecameOfThem) {
  const auto countsOf = [](const auto& read) {
    const ExchangeCounts counts(orma::metrics::OutsideService::kSouthbound);
    read();
    return counts.since();
  };
  const auto failing = [] { thrownBy([] { linkIds(); }); };
  EXPECT_EQ(countsOf([] { linkIds(); }), "1 answered, 0 refused, 0 unreached");
  database().run("UPDATE link SET kind = 'abc'");
  EXPECT_EQ(countsOf(failing), "0 answered, 1 refused, 0 unreached");
  database().run("DROP TABLE link");
  EXPECT_EQ(countsOf(failing), "0 answered, 1 refused, 0 unreached");
  configure("sqlite:no-such.db");
  EXPECT_EQ(countsOf(failing), "0 answered, 0 refused, 1 unreached");
}

}  // namespace
}  // namespace orma::southbound::test
