#include "emfalmrecords.h"

#include "alarmcodes.h"

namespace {

constexpr std::int32_t kRecovered = 2;

}  // namespace

FaultRecord::FaultRecord()
    : auxValue1(0),
      auxValue2(0),
      devSerialNo(0),
      nodeType(0),
      devType(0),
      eventType(0),
      severity(0),
      functionType(0),
      faultId(0),
      reasonId(0),
      faultFlag(0) {
  faultTime.tm_sec = 0;
  faultTime.tm_min = 0;
  faultTime.tm_hour = 0;
  faultTime.tm_mday = 0;
  faultTime.tm_mon = 0;
  faultTime.tm_year = 0;
  faultTime.tm_wday = 0;
  faultTime.tm_yday = 0;
  faultTime.tm_isdst = 0;
}

FaultRecord::~FaultRecord() = default;

const char* FaultRecord::alarmClass2Str() const { return emf::alarmClassText(eventType); }

const char* FaultRecord::alarmFunc2Str() const { return emf::alarmFunctionText(functionType); }

std::int32_t FaultRecord::alarmLevel2TMF() const { return emf::northSeverity(severity); }

bool FaultRecord::isRecover() const { return faultFlag == kRecovered; }

AlarmCfg::AlarmCfg()
    : alarmGroupId(0),
      alarmId(0),
      eventType(0),
      alarmClass(0),
      alarmFunc(0),
      severity(0),
      oldSeverity(0),
      auxValue1(0),
      auxValue2(0) {}

AlarmCfg::AlarmCfg(const AlarmCfg&) = default;

AlarmCfg::~AlarmCfg() = default;

const char* AlarmCfg::alarmClass2Str() const { return emf::alarmClassText(alarmClass); }

const char* AlarmCfg::alarmFunc2Str() const { return emf::alarmFunctionText(alarmFunc); }

std::int32_t AlarmCfg::alarmLevel2TMF() const { return emf::northSeverity(severity); }

AlarmReason::AlarmReason() : alarmGroupId(0), alarmId(0), reasonId(0) {}

AlarmReason::~AlarmReason() = default;
