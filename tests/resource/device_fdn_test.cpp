#include "emfresinterface.h"
#include "platform_test.h"

namespace emf::test {
namespace {

using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::SizeIs;

constexpr char kSource[] = "emfresinterface";

class DeviceFdn : public emf::doubles::PlatformTest {};

struct FdnCase {
  std::uint32_t id;
  const char* fdn;
};

class DeviceFdnRange : public DeviceFdn, public ::testing::WithParamInterface<FdnCase> {};

TEST_P(DeviceFdnRange, IdHasItsForm) {
  std::string fdn = "left over";
  const auto& [id, expected] = GetParam();
  EXPECT_EQ(EMFResMgrI::AdpDevID2FDN(id, fdn), static_cast<int>(std::string(expected).size()));
  EXPECT_EQ(fdn, expected);
}

INSTANTIATE_TEST_SUITE_P(
    EveryBoundAndOneBeyond, DeviceFdnRange,
    ::testing::Values(FdnCase{0, "NE=0"}, FdnCase{1, "OS=1"}, FdnCase{2, "NE=2"},
                      FdnCase{0x3DFFFF, "NE=4063231"}, FdnCase{0x3E0000, "ONE=4063232"},
                      FdnCase{0x3F0000, "ONE=4128768"}, FdnCase{0x3F7FFF, "ONE=4161535"},
                      FdnCase{0x3F8000, "OS=4161536"}, FdnCase{0x3FFFFF, "OS=4194303"},
                      FdnCase{0x400000, "NE=4194304"}, FdnCase{0x9FFFFF, "NE=10485759"},
                      FdnCase{0xA00000, "EMS=10485760"}, FdnCase{0xA0FFFF, "EMS=10551295"},
                      FdnCase{0xA10000, "ONE=10551296"}, FdnCase{0xAFFFFF, "ONE=11534335"},
                      FdnCase{0xB00000, "NE=11534336"}, FdnCase{0xDFFFFFF, "NE=234881023"},
                      FdnCase{0xE000000, "ONE=234881024"}, FdnCase{0xEFFFFF0, "ONE=251658224"},
                      FdnCase{0xEFFFFF1, "NE=251658225"}, FdnCase{0xEFFFFFF, "NE=251658239"},
                      FdnCase{0xF000000, "NE=251658240"}, FdnCase{0x7FFFFFFF, "NE=2147483647"},
                      FdnCase{0x80000000, "NE=2147483648"}, FdnCase{0xFFFFFFFF, "NE=4294967295"}),
    [](const auto& one) { return "Id" + std::to_string(one.param.id); });

TEST_F(DeviceFdn, FormattingGetsTheStatedBounds) {
  std::string fdn;
  for (const std::uint32_t id : {2U, 0x3E0000U, 0xA00000U, 1U}) EMFResMgrI::AdpDevID2FDN(id, fdn);
  EXPECT_THAT(platform().text.formats(), ElementsAre(FieldsAre(0x7FFFFFFF, 0x7FFFFFFE, "NE=%u"),
                                                     FieldsAre(0x7FFFFFFF, 0x7FFFFFFE, "ONE=%u"),
                                                     FieldsAre(0x7FFFFFFF, 0x7FFFFFFE, "EMS=%u"),
                                                     FieldsAre(0x7FFFFFFF, 0x7FFFFFFE, "OS=%u")));
}

TEST_F(DeviceFdn, ResultIsTracedAtLevelThree) {
  std::string fdn;
  EMFResMgrI::AdpDevID2FDN(12, fdn);
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebugWithPara", 3, kSource, "unknown", Gt(0),
                                    "EMFResMgrI::AdpDevID2FDN, strFdn = NE=12")));
}

TEST_F(DeviceFdn, FailureIsTracedAndTheBufferIsHandedOutAllTheSame) {
  platform().text.formattingFails("NE=12 and more");
  std::string fdn = "left over";
  EXPECT_EQ(EMFResMgrI::AdpDevID2FDN(4294967295U, fdn), -1);
  EXPECT_EQ(fdn, "NE=12 and more");
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre("TaDebugWithPara", 3, kSource, "unknown", Gt(0),
                                    "EMFResMgrI::AdpDevID2FDN snprintf_s "
                                    "failed,iDevID(4294967295)"),
                          FieldsAre("TaDebugWithPara", 3, kSource, "unknown", Gt(0),
                                    "EMFResMgrI::AdpDevID2FDN, strFdn = NE=12 and more")));
}

TEST_F(DeviceFdn, FailureThatWroteNothingGivesAnEmptyText) {
  std::string fdn = "left over";
  EMFResMgrI::AdpDevID2FDN(0xE000000, fdn);
  platform().text.formattingFails("");
  EXPECT_EQ(EMFResMgrI::AdpDevID2FDN(12, fdn), -1);
  EXPECT_EQ(fdn, "");
}

TEST_F(DeviceFdn, LongerTextBeforeLeavesNothingBehind) {
  std::string fdn;
  platform().text.formattingFails(std::string(100000, 'x'));
  EMFResMgrI::AdpDevID2FDN(12, fdn);
  EXPECT_THAT(fdn, SizeIs(100000));
  platform().text.reset();
  EXPECT_EQ(EMFResMgrI::AdpDevID2FDN(12, fdn), 5);
  EXPECT_EQ(fdn, "NE=12");
}

TEST_F(DeviceFdn, ResTypeIsZeroAndNothingIsAskedOrWritten) {
  EXPECT_EQ(EMFResMgrI::getResType(), 0);
  EXPECT_THAT(platform().journal.events(), ::testing::IsEmpty());
}

}  // namespace
}  // namespace emf::test
