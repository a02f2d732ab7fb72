// What is peculiar to PostgreSQL: a server that goes away, and that tells what it was asked.
#include "postgresql_database.h"
#include "southbound_fixture.h"

namespace orma::southbound::test {
namespace {

using ::testing::FieldsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

class SouthboundPostgresql : public SouthboundTest {
 protected:
  static dao::test::PrivatePostgres& server() {
    std::string whyNot;
    return *dao::test::PrivatePostgres::instance(whyNot);
  }
};

TEST_F(SouthboundPostgresql, ServerThatGoesAwayFailsTheReadsUntilItIsBack) {
  const std::vector<std::string> before = portStates({kPort1});
  server().stop();
  const auto reason = HasSubstr("cannot open the PostgreSQL database: ");
  EXPECT_THAT(thrownBy([] { linkIds(); }), FieldsAre(kReadFailed, "southbound GetLinkID", reason));
  EXPECT_THAT(thrownBy([] { linkInfos({"IPLINK=77"}); }),
              FieldsAre(kReadFailed, "southbound GetLinkInfo", reason));
  EXPECT_THAT(thrownBy([] { portStates({kPort1}); }),
              FieldsAre(kReadFailed, "southbound GetPortStatus", reason));
  server().start();
  EXPECT_EQ(portStates({kPort1}), before);
}

TEST_F(SouthboundPostgresql, BatchOfTwoThousandIsOneStatement) {
  // Connections from here on tell the server's log what they run.
  database().run("ALTER ROLE orma SET log_statement = 'all'");
  configure(database().connection(), 4000);
  const auto statementsFor = [](std::size_t count) {
    const int before = server().timesLogged("SELECT l.link_id, l.kind, l.name");
    linkInfos(std::vector<std::string>(count, "IPLINK=204:77"));
    return server().timesLogged("SELECT l.link_id, l.kind, l.name") - before;
  };
  EXPECT_EQ(statementsFor(1), 1);
  EXPECT_EQ(statementsFor(2000), 1);
  EXPECT_EQ(statementsFor(2000), 1);
  EXPECT_EQ(statementsFor(2001), 2);
  database().run("ALTER ROLE orma RESET log_statement");
}

}  // namespace
}  // namespace orma::southbound::test
