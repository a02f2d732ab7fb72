// Log objects are cached once a process: this program never has a log service.
#include "catalogue_service.h"
#include "emfalminterface.h"
#include "platform_test.h"
#include "processexception.h"

namespace emf::test {
namespace {

using emf::doubles::AlarmQuery;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class AlarmSilence : public emf::doubles::PlatformTest {
 protected:
  AlarmSilence() { platform().log.absent(); }
  ~AlarmSilence() override {
    EXPECT_THAT(platform().log.lines(), IsEmpty());
    EXPECT_THAT(platform().trace.lines(), IsEmpty());
  }
};

TEST_F(AlarmSilence, CataloguesAreReadAsEver) {
  CatalogueService service(5001);
  service.start();
  std::vector<AlarmCfg> definitions;
  std::vector<AlarmReason> reasons;
  EXPECT_EQ(EMFAlarmI::getAllAlarmCfg(definitions), 0);
  EXPECT_EQ(EMFAlarmI::getAllAlarmReason(reasons), 0);
  EXPECT_THAT(definitions, SizeIs(5002));
  EXPECT_THAT(reasons, SizeIs(5002));
  service.failsAt(5000);
  EXPECT_EQ(EMFAlarmI::getAllAlarmCfg(definitions), 1);
  EXPECT_EQ(EMFAlarmI::getAllAlarmReason(reasons), 1);
}

TEST_F(AlarmSilence, RedefinedSeveritiesAreReadAsEver) {
  std::vector<AlarmCfg> redefined;
  platform().alarms.answersBy([](const AlarmQuery&, Json::Value& answer) {
    answer["count"] = 2;
    return true;
  });
  EXPECT_EQ(EMFAlarmI::getRedefineAlarmInfo(redefined), 0);
  EXPECT_THAT(redefined, SizeIs(2));
  platform().alarms.answersBy([](const AlarmQuery&, Json::Value&) -> bool {
    ProcessException failure;
    throw failure;
  });
  EXPECT_EQ(EMFAlarmI::getRedefineAlarmInfo(redefined), 0);
}

}  // namespace
}  // namespace emf::test
