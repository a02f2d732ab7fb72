// What a session and the engine do before there is a database.
#include <gmock/gmock.h>

#include <array>
#include <thread>

#include "engine_fixture.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/sql_session.h"

namespace dao::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Session : public EngineTest {
 protected:
  CExecStatus opened() {
    CSqlSession session;
    return CCursorTable().Open(session, "SELECT 1");
  }
};

TEST_F(Session, IsNamedDefaultUnlessGivenAName) {
  EXPECT_EQ(CSqlSession().GetName(), "default");
  EXPECT_EQ(CSqlSession("alarms").GetName(), "alarms");
  EXPECT_EQ(CSqlSession(nullptr).GetName(), "default");
}

TEST_F(Session, ServerTypeIsThatOfTheConfiguration) {
  const CSqlSession session;
  EXPECT_EQ(session.GetDBServerType(), 0);
  configure("sqlite:none.db");
  EXPECT_EQ(session.GetDBServerType(), 1);
  configure("postgresql:host=/nowhere");
  EXPECT_EQ(session.GetDBServerType(), 7);
  configure("oracle:x");
  EXPECT_EQ(session.GetDBServerType(), 0);
}

TEST_F(Session, WithoutDatabaseTellsWhichKeyToSet) {
  const CExecStatus status = opened();
  EXPECT_EQ(status.GetErrCode(), kExecNotConfigured);
  EXPECT_EQ(status.GetMessage(),
            "the configuration key database.connection is not set; set it to sqlite:PATH or "
            "postgresql:CONNINFO");
}

TEST_F(Session, UnknownKindOfDatabaseIsToldWithoutItsText) {
  configure("oracle:scott/tiger@host");
  EXPECT_EQ(opened().GetMessage(),
            "the configuration key database.connection names no known kind of database; set it to "
            "sqlite:PATH or postgresql:CONNINFO");
  configure("sqlite:");
  EXPECT_EQ(opened().GetMessage(),
            "the configuration key database.connection names no file; set it to sqlite:PATH or "
            "postgresql:CONNINFO");
}

TEST_F(Session, ServerThatCannotBeReachedIsToldWithoutThePassword) {
  configure("postgresql:host=" + file("nowhere") + " user=orma password=tiger");
  const CExecStatus status = opened();
  EXPECT_EQ(status.GetErrCode(), kExecNotConnected);
  EXPECT_THAT(status.GetMessage(), HasSubstr("cannot open the PostgreSQL database: "));
  EXPECT_THAT(status.GetMessage(), HasSubstr("No such file or directory"));
  EXPECT_THAT(status.GetMessage(), Not(HasSubstr("tiger")));
}

TEST_F(Session, ConnectionStringThatCannotBeReadIsNotRepeated) {
  configure("postgresql:password=tig er");
  const CExecStatus status = opened();
  EXPECT_EQ(status.GetErrCode(), kExecNotConnected);
  EXPECT_EQ(status.GetMessage(),
            "cannot open the PostgreSQL database: the connection string is not one that libpq can "
            "read");
}

TEST_F(Session, CursorWithoutStatementHasNothing) {
  CCursorTable rows;
  EXPECT_FALSE(rows.FetchNextRow());
  EXPECT_EQ(rows.GetColumnCount(), 0U);
  EXPECT_TRUE(rows[0].isEmpty());
  EXPECT_TRUE(rows["a"].isEmpty());
  EXPECT_TRUE(rows.GetStatus().IsOk());
  EXPECT_EQ(rows.GetStatus().GetErrCode(), 0);
}

class Engine : public EngineTest {};

TEST_F(Engine, WithoutDatabaseEachReadFailsWithALineThatNamesTheKey) {
  std::list<stDevProperty> devices;
  std::list<std::string> parts;
  std::list<NodeStruct> nodes;
  std::string version = "unchanged";
  EXPECT_EQ(engine().GetDevProperty({2}, devices), -1);
  EXPECT_EQ(engine().GetDevVersionName(2, version), -1);
  EXPECT_EQ(engine().GetDevLocationByDevID(2, parts), -1);
  EXPECT_EQ(engine().GetBaseNode(TOPO_QUERY_BY_NODE, "2", nodes), -1);
  EXPECT_EQ(version, "unchanged");
  const std::string reason =
      "the configuration key database.connection is not set; set it to sqlite:PATH or "
      "postgresql:CONNINFO";
  const auto line = [&reason](const std::string& operation) {
    return LoggedLine{"error", "emfcommdbengine", "unknown",
                      "[CEmfCommDBEngine::" + operation + "] " + reason};
  };
  EXPECT_THAT(loggedErrors(), ElementsAre(line("GetDevProperty"), line("GetDevVersionName"),
                                          line("GetDevLocationByDevID"), line("GetBaseNode")));
}

TEST_F(Engine, NoIdsNeedNoDatabase) {
  std::list<stDevProperty> devices;
  EXPECT_EQ(engine().GetDevProperty({}, devices), 0);
  EXPECT_THAT(devices, IsEmpty());
}

TEST_F(Engine, UnknownQueryModeIsAnError) {
  std::list<NodeStruct> nodes;
  EXPECT_EQ(engine().GetBaseNode(static_cast<_ETopoQueryMode>(3), "2", nodes), -1);
  EXPECT_THAT(loggedTexts(),
              ElementsAre("[CEmfCommDBEngine::GetBaseNode] there is no query mode 3"));
}

TEST_F(Engine, InstanceIsOneWhateverTheModuleName) {
  CEmfCommDBEngine* first = CEmfCommDBEngine::Instance(CEmfCommDBEngine::GetModuleName());
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(CEmfCommDBEngine::Instance("another"), first);
  EXPECT_NE(CEmfCommDBEngine::GetModuleName(), "");
}

TEST_F(Engine, DestroyedEngineIsMadeAnewAndWorks) {
  engine();
  CEmfCommDBEngine::Destroy();
  CEmfCommDBEngine::Destroy();  // nothing is left to release
  std::list<stDevProperty> devices;
  EXPECT_EQ(engine().GetDevProperty({}, devices), 0);
}

TEST_F(Engine, ThreadsThatAskAtOnceGetTheSameInstance) {
  for (int round = 0; round < 50; ++round) {
    std::array<CEmfCommDBEngine*, 8> seen{};
    std::vector<std::thread> threads;
    for (CEmfCommDBEngine*& mine : seen) {
      threads.emplace_back([&mine] { mine = CEmfCommDBEngine::Instance("engine"); });
    }
    for (std::thread& thread : threads) thread.join();
    for (const CEmfCommDBEngine* one : seen) EXPECT_EQ(one, seen[0]);
    EXPECT_NE(seen[0], nullptr);
    CEmfCommDBEngine::Destroy();
  }
}

}  // namespace
}  // namespace dao::test
