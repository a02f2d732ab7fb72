// What is peculiar to PostgreSQL: its types, and connections that are lost.
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>

#include <chrono>
#include <cmath>
#include <fstream>

#include "inventory_fixture.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/sql_session.h"
#include "postgresql_database.h"

namespace dao::test {
namespace {

using refl::CValue;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Postgresql : public InventoryTest {
 protected:
  void SetUp() override {
    InventoryTest::SetUp();
    if (!IsSkipped()) server_ = PrivatePostgres::instance(reason_);
  }

  std::vector<std::string> names(int expected = 0) {
    std::list<stDevProperty> found;
    EXPECT_EQ(engine().GetDevProperty({2}, found), expected);
    std::vector<std::string> result;
    for (const stDevProperty& device : found) result.push_back(device.devName);
    return result;
  }

  PrivatePostgres& server() { return *server_; }
  // Ends every connection but the test's own.
  void endConnections() {
    PostgresqlClient(server().conninfo("postgres"))
        .run(
            "SELECT count(pg_terminate_backend(pid, 10000)) FROM pg_stat_activity "
            "WHERE backend_type = 'client backend' AND pid <> pg_backend_pid()");
  }

  CSqlSession session_;

 private:
  PrivatePostgres* server_ = nullptr;
  std::string reason_;
};

std::string firstValue(CSqlSession& session, const std::string& statement) {
  CCursorTable rows;
  EXPECT_EQ(rows.Open(session, statement).GetMessage(), "");
  return rows.FetchNextRow() ? rows[0].asText() : "";
}

TEST_F(Postgresql, ValuesHaveTheTypesOfTheirColumns) {
  CCursorTable rows;
  ASSERT_EQ(rows.Open(session_,
                      "SELECT 1::int2, -2::int4, 9223372036854775807::int8, 0.1::float8, "
                      "1.5::float4, true, false, '\\x00ff'::bytea, 'a'::varchar, 'b'::char(1), "
                      "12345678901234567890.5::numeric, '2024-02-29'::date, 'NaN'::float8 > 1")
                .GetMessage(),
            "");
  ASSERT_TRUE(rows.FetchNextRow());
  const auto integer = [](std::int64_t value) { return CValue(value); };
  const auto text = [](const char* value) { return CValue(std::string(value)); };
  const std::vector<CValue> expected = {integer(1),
                                        integer(-2),
                                        integer(9223372036854775807),
                                        CValue(0.1),
                                        CValue(1.5),
                                        integer(1),
                                        integer(0),
                                        CValue(refl::Bytes{0, 255}),
                                        text("a"),
                                        text("b"),
                                        text("12345678901234567890.5"),
                                        text("2024-02-29"),
                                        integer(1)};
  ASSERT_EQ(rows.GetColumnCount(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_TRUE(rows[i] == expected[i]) << i;
}

TEST_F(Postgresql, BytesAreParametersOfAnyLength) {
  database().run(
      "CREATE TABLE t (n INTEGER, v BYTEA); INSERT INTO t VALUES (1, '\\x00ff'), (2, '')");
  const std::vector<refl::Bytes> values = {{0, 255}, {}};
  for (std::size_t i = 0; i < values.size(); ++i) {
    const CValue bytes(values[i]);
    CCursorTable rows;
    ASSERT_EQ(
        rows.Open(session_, "SELECT n, :again::bytea AS again FROM t WHERE v = :v", {bytes, bytes})
            .GetMessage(),
        "");
    ASSERT_TRUE(rows.FetchNextRow());
    EXPECT_EQ(rows["n"].asInteger(), static_cast<std::int64_t>(i) + 1);
    EXPECT_EQ(rows["again"], bytes);
    EXPECT_FALSE(rows.FetchNextRow());
  }
}

TEST_F(Postgresql, InfiniteRealsAreReals) {
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, "SELECT 'Infinity'::float8, '-Infinity'::float8").IsOk());
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows[0], CValue(HUGE_VAL));
  EXPECT_EQ(rows[1], CValue(-HUGE_VAL));
}

TEST_F(Postgresql, TextIsUtf8WhateverTheDatabasesEncoding) {
  PostgresqlClient(server().conninfo("postgres"))
      .run("CREATE DATABASE latin ENCODING 'LATIN1' TEMPLATE template0");
  configure("postgresql:" + server().conninfo("latin"));
  EXPECT_EQ(firstValue(session_, "SELECT chr(252)"), "\xC3\xBC");
}

TEST_F(Postgresql, ConnectionStringMayQuoteAndMayBeAnAddress) {
  createDatabase(server(), "in  ven 'tory=&%\\");
  configure("postgresql:" + server().conninfo("'in  ven \\'tory=&%\\\\'"));
  EXPECT_EQ(firstValue(session_, "SELECT current_database()::text"), "in  ven 'tory=&%\\");
  const std::string host = server().conninfo("").substr(5, server().conninfo("").find(' ') - 5);
  configure("postgresql://orma@/postgres?host=" + host);
  EXPECT_EQ(firstValue(session_, "SELECT current_database()::text"), "postgres");
}

TEST_F(Postgresql, UnknownDatabaseFailsTheReadWithoutThePassword) {
  configure("postgresql:" + server().conninfo("none") + " password=tiger");
  EXPECT_THAT(names(-1), IsEmpty());
  ASSERT_EQ(loggedTexts().size(), 1U);
  EXPECT_THAT(loggedTexts()[0], HasSubstr("database \"none\" does not exist"));
  EXPECT_THAT(loggedTexts()[0], Not(HasSubstr("tiger")));
}

TEST_F(Postgresql, LockedTableFailsTheReadWhenTheWaitIsOver) {
  configure(database().connection(), 60);
  PostgresqlClient writer(database().connection().substr(std::string("postgresql:").size()));
  writer.run("BEGIN; LOCK TABLE device IN ACCESS EXCLUSIVE MODE");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(60));
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("lock timeout")));
  writer.run("COMMIT");
  EXPECT_THAT(names(), ElementsAre("core-1"));
}

TEST_F(Postgresql, ConnectionsThatTheServerEndedAreOpenedAnewWithoutAWord) {
  EXPECT_THAT(names(), ElementsAre("core-1"));
  endConnections();
  EXPECT_THAT(names(), ElementsAre("core-1"));
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Postgresql, RestartedServerIsFoundAgain) {
  EXPECT_THAT(names(), ElementsAre("core-1"));
  server().stop();
  server().start();
  EXPECT_THAT(names(), ElementsAre("core-1"));
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Postgresql, StoppedServerFailsEachReadWithOneLineUntilItIsBack) {
  EXPECT_THAT(names(), ElementsAre("core-1"));
  server().stop();
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("cannot open the PostgreSQL database: ")));
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_EQ(loggedTexts().size(), 2U);
  server().start();
  EXPECT_THAT(names(), ElementsAre("core-1"));
  EXPECT_EQ(loggedTexts().size(), 2U);
}

TEST_F(Postgresql, StatementWhoseConnectionIsLostIsRunExactlyOnceMore) {
  const int before = server().timesLogged("terminating connection due to administrator command");
  CCursorTable rows;
  EXPECT_EQ(rows.Open(session_, "SELECT pg_terminate_backend(pg_backend_pid())").GetErrCode(),
            kExecConnectionLost);
  EXPECT_EQ(server().timesLogged("terminating connection due to administrator command"),
            before + 2);
  EXPECT_EQ(firstValue(session_, "SELECT 'works'::text"), "works");
}

TEST_F(Postgresql, RefusedStatementIsNotRunAgain) {
  const std::string connection = firstValue(session_, "SELECT pg_backend_pid()");
  const int before = server().timesLogged("division by zero");
  CCursorTable rows;
  EXPECT_EQ(rows.Open(session_, "SELECT 1 / 0").GetErrCode(), kExecStatementFailed);
  EXPECT_EQ(server().timesLogged("division by zero"), before + 1);
  EXPECT_EQ(firstValue(session_, "SELECT pg_backend_pid()"), connection);
}

TEST_F(Postgresql, StatementIsPreparedOnceAndTheUnusedOnesGiveWay) {
  const std::string count = "SELECT count(*) FROM pg_prepared_statements WHERE statement LIKE ";
  for (int i = 0; i < 3; ++i) firstValue(session_, "SELECT 'again'::text");
  EXPECT_EQ(firstValue(session_, count + "'SELECT ''again%'"), "1");
  for (int i = 0; i < 40; ++i) firstValue(session_, "SELECT 'once'::text, " + std::to_string(i));
  EXPECT_EQ(firstValue(session_, count + "'SELECT ''again%'"), "0");
  EXPECT_EQ(firstValue(session_, count + "'SELECT ''once%'"), "15");  // and the question itself
}

TEST_F(Postgresql, StatementThatTheServerDroppedIsPreparedAnew) {
  EXPECT_EQ(firstValue(session_, "SELECT 'works'::text"), "works");
  EXPECT_EQ(firstValue(session_, "DEALLOCATE ALL"), "");
  EXPECT_EQ(firstValue(session_, "SELECT 'works'::text"), "works");
}

TEST_F(Postgresql, DestroyedEngineLeavesNoConnection) {
  EXPECT_THAT(names(), ElementsAre("core-1"));
  PostgresqlClient observer(server().conninfo("postgres"));
  const std::string count =
      "SELECT count(*) FROM pg_stat_activity WHERE application_name = 'orma_dao'";
  EXPECT_EQ(observer.run(count), "1");
  CEmfCommDBEngine::Destroy();
  // The server ends a connection's process after the client has gone.
  observer.run(
      "SET statement_timeout = '20s'; DO $$ BEGIN WHILE (SELECT count(*) FROM pg_stat_activity "
      "WHERE application_name = "
      "'orma_dao') > 0 LOOP PERFORM pg_stat_clear_snapshot(); END LOOP; END $$");
  EXPECT_EQ(observer.run(count), "0");
}

TEST_F(Postgresql, StatementThatTakesTooLongIsEndedByTheServerAndTheNextOneRuns) {
  configure(database().connection(), 5000, 50);
  CSqlSession session;
  CCursorTable rows;
  const CExecStatus status = rows.Open(session, "SELECT pg_sleep(3600)");
  EXPECT_EQ(status.GetErrCode(), kExecStatementFailed);
  EXPECT_EQ(status.GetMessage(),
            "the statement took longer than 50 ms (database.statementTimeoutMs)");
  EXPECT_TRUE(rows.Open(session, "SELECT 1").IsOk());
}

// Frozen, the server answers nothing at all, while its system keeps the connection up.
TEST_F(Postgresql, ServerThatStallsInAStatementIsLeftInTime) {
  configure(database().connection() + " connect_timeout=2", 5000, 50);
  CSqlSession session;
  const int process = std::stoi(firstValue(session, "SELECT pg_backend_pid()"));
  ASSERT_EQ(::kill(process, SIGSTOP), 0);
  CCursorTable rows;
  const auto start = std::chrono::steady_clock::now();
  const CExecStatus status = rows.Open(session, "SELECT 1");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  // The connection is lost, and on another one the statement runs.
  EXPECT_TRUE(status.IsOk()) << status.GetMessage();
  ASSERT_EQ(::kill(process, SIGCONT), 0);
}

TEST_F(Postgresql, PasswordFileThatLibpqWouldPassOverIsTold) {
  const std::string passwords = file("passwords");
  const auto fault = [&] {
    configure(database().connection(), passwords);
    CSqlSession session;
    return CCursorTable().Open(session, "SELECT 1").GetMessage();
  };
  const std::string prefix = "cannot open the PostgreSQL database: the password file " + passwords;
  EXPECT_EQ(fault(), prefix + " cannot be read: No such file or directory");
  std::ofstream(passwords) << "*:*:*:*:se-cret\n";
  ASSERT_EQ(::chmod(passwords.c_str(), 0640), 0);
  EXPECT_EQ(fault(), prefix +
                         " is open to its group (mode 0640) and holds a secret; take the access "
                         "away: chmod go-rwx");
  ASSERT_EQ(::chmod(passwords.c_str(), 0600), 0);
  EXPECT_EQ(fault(), "");
}

}  // namespace
}  // namespace dao::test
