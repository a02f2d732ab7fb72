#include <thread>

#include "emfglobal.h"
#include "platform_test.h"

namespace emf::doubles {
namespace {

using ::testing::ElementsAre;
using ::testing::FieldsAre;

class TraceForm : public PlatformTest {};

TEST_F(TraceForm, FinishedTextCarriesSourceFileAndLine) {
  const int line = __LINE__ + 1;
  EMF_TRACE("submapbufmgr", TaDebug(1, "100% done"));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebug", 1, "submapbufmgr", "unknown", line, "100% done")));
}

TEST_F(TraceForm, FormatCarriesSourceFileAndLine) {
  const int line = __LINE__ + 1;
  EMF_TRACE("emftopointerface", TaDebugWithPara(3, "found %d of %s", 7, "nine"));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebugWithPara", 3, "emftopointerface", "unknown", line,
                                    "found 7 of nine")));
}

TEST_F(TraceForm, TraceWithoutLevelCarriesSourceFileAndLine) {
  const int line = __LINE__ + 1;
  EMF_TRACE("submapbufmgr", TaTrace("code %d", -1));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaTrace", 0, "submapbufmgr", "unknown", line, "code -1")));
}

TEST_F(TraceForm, IsOneStatement) {
  if (platform().trace.lines().empty())
    EMF_TRACE("first", TaDebug(1, "then"));
  else
    EMF_TRACE("second", TaDebug(1, "else"));
  EXPECT_THAT(platform().trace.texts(), ElementsAre("then"));
}

TEST_F(TraceForm, SourceRecordIsTheThreadsOwn) {
  emf::setTraceSource("here", 1);
  std::thread([] { EMF_TRACE("there", TaDebug(1, "x")); }).join();
  NS_CORBA::TaDebug(1, "y");
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebug", 1, "there", "unknown", ::testing::_, "x"),
                          FieldsAre("TaDebug", 1, "here", "unknown", 1, "y")));
}

}  // namespace
}  // namespace emf::doubles
