// Comparing and printing alarm records.
//
// Thread-safety: immutable.
#pragma once

#include <tuple>

#include "emfalmrecords.h"

// The members of a time that FaultRecord promises something of, and the two that it does not.
inline auto fieldsOf(const std::tm& time) {
  return std::tie(time.tm_year, time.tm_mon, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec,
                  time.tm_wday, time.tm_yday, time.tm_isdst);
}

inline auto fieldsOf(const FaultRecord& record) {
  return std::tuple_cat(
      std::tie(record.auxValue1, record.auxValue2, record.auxText1, record.auxText2,
               record.devSerialNo, record.nodeType, record.devType, record.eventType,
               record.severity, record.functionType, record.faultId, record.reasonId),
      fieldsOf(record.faultTime), std::tie(record.fdn, record.para, record.faultFlag));
}

inline auto fieldsOf(const AlarmCfg& record) {
  return std::tie(record.alarmGroupId, record.alarmId, record.eventType, record.alarmClass,
                  record.alarmFunc, record.severity, record.oldSeverity, record.auxText,
                  record.auxValue1, record.alarmName, record.description, record.auxValue2);
}

inline auto fieldsOf(const AlarmReason& record) {
  return std::tie(record.alarmGroupId, record.alarmId, record.reasonId, record.causes,
                  record.repairAction);
}

#include "record_fields.h"
