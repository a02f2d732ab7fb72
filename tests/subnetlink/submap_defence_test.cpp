// What the thread's own catch clauses are for: an exception out of a refresh, here out of the
// trace call that reports the first one.
#include <cstdarg>
#include <cstring>

#include "orma/log/trace.h"
#include "printf_text.h"
#include "processexception.h"
#include "task_fixture.h"

namespace {

enum class Thrown { kNothing, kProcessException, kOther };
Thrown thrown = Thrown::kNothing;  // written while the task sleeps

}  // namespace

extern "C" void __real__ZN8NS_CORBA7TaTraceEPKcz(const char* format, ...)
    __attribute__((format(printf, 1, 2)));
extern "C" void __wrap__ZN8NS_CORBA7TaTraceEPKcz(const char* format, ...)
    __attribute__((format(printf, 1, 2)));

extern "C" void __wrap__ZN8NS_CORBA7TaTraceEPKcz(const char* format, ...) {
  if (std::strncmp(format, "QuerySubnetAndNodesInfo", 23) == 0) {
    if (thrown == Thrown::kOther) throw 5;
    if (thrown == Thrown::kProcessException) {
      ProcessException failure;
      failure.errCode = 0x411800BA;
      throw failure;
    }
  }
  va_list arguments;
  va_start(arguments, format);
  const std::string text = emf::doubles::printfText(format, arguments);
  va_end(arguments);
  __real__ZN8NS_CORBA7TaTraceEPKcz("%s", text.c_str());
}

namespace emf::test {
namespace {

class SubmapDefence : public TaskTest {
 protected:
  // The task's next refresh ends that way.
  void refreshThrows(Thrown what) {
    thrown = what;
    service.onRequest([] { throw 7; });
    buffer().InitBuf();
    sleepGate().awaitSleeps(1);
  }

  void expectTheThreadGoesOn() {
    thrown = Thrown::kNothing;
    service.onRequest(nullptr);
    sleepGate().wake();
    sleepGate().awaitSleeps(2);
    EXPECT_EQ(link(12), "Region/City");
    EXPECT_THAT(sleepGate().lengths(), ::testing::ElementsAre(1800, 1800));
  }
};

TEST_F(SubmapDefence, ProcessExceptionIsTracedAndTheThreadGoesOn) {
  refreshThrows(Thrown::kProcessException);
  EXPECT_EQ(traced("SubmapBufMgr::svc Catch processException,errCode = 1092092090"), 1);
  expectTheThreadGoesOn();
}

TEST_F(SubmapDefence, AnythingElseIsTracedAndTheThreadGoesOn) {
  refreshThrows(Thrown::kOther);
  EXPECT_EQ(traced("SubmapBufMgr::svc Catch unknown exception"), 1);
  expectTheThreadGoesOn();
}

}  // namespace
}  // namespace emf::test
