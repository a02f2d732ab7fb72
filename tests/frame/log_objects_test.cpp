// The caches of log objects fill once a process: each helper has one test that goes through the
// whole life of its cache.
#include "emfglobal.h"
#include "orma/asn1/asn_int.h"
#include "platform_test.h"

namespace emf::doubles {
namespace {

using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::IsEmpty;

class LogObjects : public PlatformTest {};

// What a helper whose pointer is not cached yet does while the log service is absent, then
// refuses, then is there, then is gone again.
void walkThroughCache(NS_LOG_SERVICE1::LogObject* (*helper)(), const std::string& log) {
  platform().log.absent();
  EXPECT_EQ(helper(), nullptr);
  EXPECT_THAT(platform().log.lookups(), IsEmpty());

  platform().log.throwing();
  EXPECT_EQ(helper(), nullptr);
  EXPECT_EQ(helper(), nullptr);
  EXPECT_THAT(platform().log.lookups(), ElementsAre(log, log));

  platform().log.present();
  NS_LOG_SERVICE1::LogObject* object = helper();
  ASSERT_NE(object, nullptr);
  EXPECT_THAT(platform().log.lookups(), ElementsAre(log, log, log));
  EXPECT_EQ(helper(), object);

  platform().log.absent();
  EXPECT_EQ(helper(), object);
  EXPECT_THAT(platform().log.lookups(), ElementsAre(log, log, log));
}

TEST_F(LogObjects, EmfLogIsLookedUpUntilItIsThereAndKept) {
  walkThroughCache(GetEmfLog, "ii_orma_corbaagent_bundle/ii_ormacorba_emf/debug");
}

TEST_F(LogObjects, DomainLogIsLookedUpUntilItIsThereAndKept) {
  walkThroughCache(GetDomainLog, "ii_domain_bundle/ii_domain_model/debug");
}

TEST_F(LogObjects, FormCarriesSourceFileAndLine) {
  NS_LOG_SERVICE1::LogObject* log = platform().log.service()->GetLog("b", "m", "n");
  const int line = __LINE__ + 1;
  EMF_LOG(log, "submapbufmgr", LogFormat, 3, "[%s] failed!", "getTopoSubnetViewInfo");
  EMF_LOG(log, "emftopointerface", LogText, 0, "100% gone");
  EXPECT_THAT(platform().log.lines(),
              ElementsAre(FieldsAre("b/m/n", "LogFormat", "submapbufmgr", "unknown", line, 3,
                                    "[getTopoSubnetViewInfo] failed!"),
                          FieldsAre("b/m/n", "LogText", "emftopointerface", "unknown", line + 1, 0,
                                    "100% gone")));
}

TEST_F(LogObjects, FormWithoutALogObjectWritesNothing) {
  NS_LOG_SERVICE1::LogObject* none = nullptr;
  EMF_LOG(none, "submapbufmgr", LogText, 1, "lost");
  EXPECT_THAT(platform().log.lines(), IsEmpty());
}

class Request : public AsnInt {
 public:
  void Print(std::ostream& out, unsigned int, bool) const override { out << "{ key 7 }"; }
};

TEST_F(LogObjects, AsnDumpsAreDroppedUntilThereIsALogService) {
  platform().log.absent();
  TraceAsn("emfalminterface", "unknown", 11, Request());
  platform().log.throwing();
  TraceAsn("emfalminterface", "unknown", 12, Request());
  EXPECT_THAT(platform().log.lines(), IsEmpty());

  platform().log.present();
  TraceAsn("emfalminterface", "unknown", 13, Request());
  platform().log.absent();
  TraceAsn("emfalmquery", "another", 14, Request());
  EXPECT_THAT(
      platform().log.lines(),
      ElementsAre(
          FieldsAre("onbi/asn/debug", "LogAsn", "emfalminterface", "unknown", 13, 0, "{ key 7 }"),
          FieldsAre("onbi/asn/debug", "LogAsn", "emfalmquery", "another", 14, 0, "{ key 7 }")));
  EXPECT_THAT(platform().log.lookups(), ElementsAre("onbi/asn/debug", "onbi/asn/debug"));
}

}  // namespace
}  // namespace emf::doubles
