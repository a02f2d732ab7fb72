// What the thread's own catch clauses are for: an exception that none below them caught, here out
// of a trace call. And what becomes of one out of the trace call that reports another.
#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <string>
#include <vector>

#include "orma/log/trace.h"
#include "printf_text.h"
#include "processexception.h"
#include "task_fixture.h"

namespace {

enum class Thrown { kProcessException, kOther };
Thrown thrown = Thrown::kOther;
// Traces that begin like this throw; written while the task sleeps.
std::vector<std::string> throwing;

bool isThrowing(const char* format) {
  return std::any_of(throwing.begin(), throwing.end(), [format](const std::string& start) {
    return std::strncmp(format, start.c_str(), start.size()) == 0;
  });
}

}  // namespace

extern "C" void __real__ZN8NS_CORBA7TaTraceEPKcz(const char* format, ...)
    __attribute__((format(printf, 1, 2)));
extern "C" void __wrap__ZN8NS_CORBA7TaTraceEPKcz(const char* format, ...)
    __attribute__((format(printf, 1, 2)));

extern "C" void __wrap__ZN8NS_CORBA7TaTraceEPKcz(const char* format, ...) {
  if (isThrowing(format)) {
    if (thrown == Thrown::kOther) throw 5;
    ProcessException failure;
    failure.errCode = 0x411800BA;
    throw failure;
  }
  va_list arguments;
  va_start(arguments, format);
  const std::string text = emf::doubles::printfText(format, arguments);
  va_end(arguments);
  __real__ZN8NS_CORBA7TaTraceEPKcz("%s", text.c_str());
}

namespace emf::test {
namespace {

constexpr char kInRefresh[] = "QuerySubnetAndNodesInfo Catch";
constexpr char kInThread[] = "SubmapBufMgr::svc Catch";

class SubmapDefence : public TaskTest {
 protected:
  // The task starts with these traces throwing, and sleeps.
  void startThrowing(const std::vector<std::string>& traces, Thrown what) {
    throwing = traces;
    thrown = what;
    buffer().InitBuf();
    sleepGate().awaitSleeps(1);
  }

  void expectTheThreadGoesOn() {
    throwing.clear();
    service.onRequest(nullptr);
    sleepGate().wake();
    sleepGate().awaitSleeps(2);
    EXPECT_EQ(link(12), "Region/City");
    EXPECT_THAT(sleepGate().lengths(), ::testing::ElementsAre(1800, 1800));
  }
};

TEST_F(SubmapDefence, ProcessExceptionIsTracedAndTheThreadGoesOn) {
  startThrowing({kFirstTime}, Thrown::kProcessException);
  EXPECT_EQ(traced("SubmapBufMgr::svc Catch processException,errCode = 1092092090"), 1);
  expectTheThreadGoesOn();
}

TEST_F(SubmapDefence, AnythingElseIsTracedAndTheThreadGoesOn) {
  startThrowing({kFirstTime}, Thrown::kOther);
  EXPECT_EQ(traced("SubmapBufMgr::svc Catch unknown exception"), 1);
  expectTheThreadGoesOn();
}

TEST_F(SubmapDefence, ReportThatThrowsDoesNotLeaveTheThread) {
  startThrowing({kFirstTime, kInThread}, Thrown::kOther);
  expectTheThreadGoesOn();
}

TEST_F(SubmapDefence, ReportThatThrowsDoesNotLeaveTheRefresh) {
  service.onRequest([] { throw 7; });
  startThrowing({kInRefresh}, Thrown::kOther);
  EXPECT_EQ(traced("SubmapBufMgr::svc Catch unknown exception"), 0);
  expectTheThreadGoesOn();
}

}  // namespace
}  // namespace emf::test
