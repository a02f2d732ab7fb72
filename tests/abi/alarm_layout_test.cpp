#include <cstdint>
#include <ctime>
#include <string>
#include <type_traits>

#include "emfalminterface.h"
#include "emfalmrecords.h"
#include "record_fields.h"

namespace {

using emf::test::expectRecord;
using emf::test::kAfterTable;
using emf::test::kAre32Bits;

template <typename Record>
constexpr bool kIsRecordWithTable = std::has_virtual_destructor_v<Record>&&
    std::is_default_constructible_v<Record>&& std::is_copy_constructible_v<Record>&&
        std::is_copy_assignable_v<Record>&& std::is_nothrow_move_constructible_v<Record>;

static_assert(kIsRecordWithTable<FaultRecord> && kIsRecordWithTable<AlarmCfg>);
static_assert(kIsRecordWithTable<AlarmReason>);
static_assert(std::is_empty_v<EMFAlarmI>);

template <typename... Fields>
constexpr bool kAre64Bits = (std::is_same_v<Fields, std::int64_t> && ...);
template <typename... Fields>
constexpr bool kAreTexts = (std::is_same_v<Fields, std::string> && ...);

static_assert(kAre64Bits<decltype(FaultRecord::auxValue1), decltype(FaultRecord::auxValue2),
                         decltype(FaultRecord::devSerialNo), decltype(FaultRecord::nodeType)>);
static_assert(kAre32Bits<decltype(FaultRecord::devType), decltype(FaultRecord::eventType),
                         decltype(FaultRecord::severity), decltype(FaultRecord::functionType),
                         decltype(FaultRecord::faultId), decltype(FaultRecord::reasonId),
                         decltype(FaultRecord::faultFlag)>);
static_assert(kAreTexts<decltype(FaultRecord::auxText1), decltype(FaultRecord::auxText2),
                        decltype(FaultRecord::fdn), decltype(FaultRecord::para)>);
static_assert(std::is_same_v<decltype(FaultRecord::faultTime), std::tm>);

static_assert(kAre32Bits<decltype(AlarmCfg::alarmGroupId), decltype(AlarmCfg::alarmId),
                         decltype(AlarmCfg::eventType), decltype(AlarmCfg::alarmClass),
                         decltype(AlarmCfg::alarmFunc), decltype(AlarmCfg::severity),
                         decltype(AlarmCfg::oldSeverity), decltype(AlarmCfg::auxValue1),
                         decltype(AlarmCfg::auxValue2)>);
static_assert(kAreTexts<decltype(AlarmCfg::auxText), decltype(AlarmCfg::alarmName),
                        decltype(AlarmCfg::description)>);

static_assert(kAre32Bits<decltype(AlarmReason::alarmGroupId), decltype(AlarmReason::alarmId),
                         decltype(AlarmReason::reasonId)>);
static_assert(kAreTexts<decltype(AlarmReason::causes), decltype(AlarmReason::repairAction)>);

TEST(AlarmLayout, FaultRecord) {
  expectRecord(
      "FaultRecord", kAfterTable, sizeof(FaultRecord),
      {FIELD(FaultRecord, auxValue1), FIELD(FaultRecord, auxValue2), FIELD(FaultRecord, auxText1),
       FIELD(FaultRecord, auxText2), FIELD(FaultRecord, devSerialNo), FIELD(FaultRecord, nodeType),
       FIELD(FaultRecord, devType), FIELD(FaultRecord, eventType), FIELD(FaultRecord, severity),
       FIELD(FaultRecord, functionType), FIELD(FaultRecord, faultId), FIELD(FaultRecord, reasonId),
       FIELD(FaultRecord, faultTime), FIELD(FaultRecord, fdn), FIELD(FaultRecord, para),
       FIELD(FaultRecord, faultFlag)});
  EXPECT_EQ(offsetof(FaultRecord, devSerialNo), 88U);
  EXPECT_EQ(offsetof(FaultRecord, faultTime), 128U);
  EXPECT_EQ(offsetof(FaultRecord, fdn), 184U);
  EXPECT_EQ(offsetof(FaultRecord, faultFlag), 248U);
  EXPECT_EQ(sizeof(FaultRecord), 256U);
}

TEST(AlarmLayout, AlarmCfg) {
  expectRecord(
      "AlarmCfg", kAfterTable, sizeof(AlarmCfg),
      {FIELD(AlarmCfg, alarmGroupId), FIELD(AlarmCfg, alarmId), FIELD(AlarmCfg, eventType),
       FIELD(AlarmCfg, alarmClass), FIELD(AlarmCfg, alarmFunc), FIELD(AlarmCfg, severity),
       FIELD(AlarmCfg, oldSeverity), FIELD(AlarmCfg, auxText), FIELD(AlarmCfg, auxValue1),
       FIELD(AlarmCfg, alarmName), FIELD(AlarmCfg, description), FIELD(AlarmCfg, auxValue2)});
  EXPECT_EQ(offsetof(AlarmCfg, auxText), 40U);
  EXPECT_EQ(offsetof(AlarmCfg, auxValue2), 144U);
  EXPECT_EQ(sizeof(AlarmCfg), 152U);
}

TEST(AlarmLayout, AlarmReason) {
  expectRecord(
      "AlarmReason", kAfterTable, sizeof(AlarmReason),
      {FIELD(AlarmReason, alarmGroupId), FIELD(AlarmReason, alarmId), FIELD(AlarmReason, reasonId),
       FIELD(AlarmReason, causes), FIELD(AlarmReason, repairAction)});
  EXPECT_EQ(offsetof(AlarmReason, causes), 24U);
  EXPECT_EQ(sizeof(AlarmReason), 88U);
}

}  // namespace
