// The log service when it fails: what the operations answer does not hang on it. Log objects are
// kept for the life of the process, so these tests stand apart.
#include <gmock/gmock.h>

#include "orma/bundle/interface_slot.h"
#include "orma/log/log_sink.h"
#include "rest_fixture.h"

namespace emf::faults {
namespace {

using testing::HasSubstr;

// A log service of a test's making, in the place where operations look for one.
class OddLogService : public NS_LOG_SERVICE1::LogSvcInterface {
 public:
  using Answer = std::function<NS_LOG_SERVICE1::LogObject*()>;
  explicit OddLogService(Answer answer) : answer_(std::move(answer)) {
    NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface")->push_back(this);
  }
  ~OddLogService() override { NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface")->remove(this); }
  std::string GetIFName() override { return "LogSvcInterface"; }
  int IsValid() override { return 1; }
  NS_LOG_SERVICE1::LogObject* GetLog(const std::string&, const std::string&,
                                     const std::string&) override {
    return answer_();
  }

 private:
  const Answer answer_;
};

class FaultMatrixLog : public RestMatrix {
 protected:
  FaultMatrixLog() : RestMatrix(LogService::Absent) {}

  // Whole, and failed, as with a log service.
  void expectUnmoved() {
    for (const RestOperation& operation : restOperations()) {
      SCOPED_TRACE(operation.name);
      expectWhole(operation);
      peer_.go();
      Outcome outcome;
      timeOf([&] { outcome = operation.call(); });
      EXPECT_EQ(outcome, operation.expected(Loss::Failed, 0, true));
    }
  }
  // One that writes through a log object when it fails.
  static const RestOperation& telling() {
    for (const RestOperation& operation : restOperations()) {
      if (operation.name == "EMFAlarmI::getAllAlarmCfg") return operation;
    }
    throw std::logic_error("no such operation");
  }
};

TEST_F(FaultMatrixLog, Refused) { expectUnmoved(); }

TEST_F(FaultMatrixLog, WrongTypeNoObject) {
  const OddLogService odd([] { return nullptr; });
  expectUnmoved();
}

TEST_F(FaultMatrixLog, ThrownAtTheAsking) {
  const OddLogService odd([]() -> NS_LOG_SERVICE1::LogObject* { throw 42; });
  expectUnmoved();
}

// A message that finds no service is lost; the next one asks again.
TEST_F(FaultMatrixLog, GoneAndBack) {
  EXPECT_EQ(telling().call().result, "1");
  EXPECT_EQ(logged().find(telling().exchanges[0].failureLine), std::string::npos);
  bool isBack = false;
  const OddLogService odd([&isBack]() -> NS_LOG_SERVICE1::LogObject* {
    if (!isBack) throw 42;
    return logService().GetLog("ii_domain_bundle", "ii_domain_model", "debug");
  });
  EXPECT_EQ(telling().call().result, "1");
  EXPECT_EQ(logged().find(telling().exchanges[0].failureLine), std::string::npos);
  isBack = true;
  EXPECT_EQ(telling().call().result, "1");
  EXPECT_THAT(logged(), HasSubstr(telling().exchanges[0].failureLine));
}

// A disk that is full takes no message and no answer away.
TEST_F(FaultMatrixLog, FullDisk) {
  const OddLogService real(
      [] { return logService().GetLog("ii_domain_bundle", "ii_domain_model", "debug"); });
  std::filesystem::remove(file("agent.log"));
  std::filesystem::create_symlink("/dev/full", file("agent.log"));
  EXPECT_EQ(orma::reopenLog(), "");
  expectUnmoved();
  std::filesystem::remove(file("agent.log"));
  EXPECT_EQ(orma::reopenLog(), "");
  EXPECT_EQ(telling().call().result, "1");
  EXPECT_THAT(logged(), HasSubstr(telling().exchanges[0].failureLine));
}

}  // namespace
}  // namespace emf::faults
