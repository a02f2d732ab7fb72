// The records that EMFAlarmI hands out: plain values, every field public, the copy field by field.
// Names, order and widths of the fields are part of the binary interface.
//
//   std::list<FaultRecord> alarms;
//   EMFAlarmI::getAllAlarms(alarms);
//   for (const FaultRecord& alarm : alarms) std::cout << alarm.fdn << alarm.alarmClass2Str();
//
// Names in quotes are the members of the REST answer that a field comes from. Absent texts are
// empty, absent numbers 0. Nothing fails; the texts that operations return are constants, never
// translated, and need no freeing.
//
// Thread-safety: thread-compatible.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>

#include "emfexport.h"

// One alarm or event, as the fault server reports it. Texts are bytes as they came, up to the first
// zero byte.
class EMF_API FaultRecord {
 public:
  // Numbers are 0 and texts empty; tm_gmtoff and tm_zone of faultTime stay unwritten, meant so:
  // they are for whoever fills faultTime.
  FaultRecord();
  FaultRecord(const FaultRecord&) = default;
  FaultRecord(FaultRecord&&) = default;
  FaultRecord& operator=(const FaultRecord&) = default;
  FaultRecord& operator=(FaultRecord&&) = default;
  virtual ~FaultRecord();

  // "communicationsAlarm", "environmentalAlarm", "equipmentAlarm", "qualityofServiceAlarm",
  // "processingErrorAlarm" for eventType 1 to 5, otherwise "unknown".
  const char* alarmClass2Str() const;
  // "power", "environment", "signal", "relay", "hardware", "software", "run", "communication",
  // "service", "processerror" for functionType 1 to 10, otherwise "unknown".
  const char* alarmFunc2Str() const;
  // The severity if it is 1 to 4, otherwise 0.
  std::int32_t alarmLevel2TMF() const;
  // Whether faultFlag is 2.
  bool isRecover() const;

  std::int64_t auxValue1;     // never written
  std::int64_t auxValue2;     // never written
  std::string auxText1;       // never written
  std::string auxText2;       // never written
  std::int64_t devSerialNo;   // serial number of the device
  std::int64_t nodeType;      // as the fault server numbers it
  std::int32_t devType;       // as the fault server numbers it
  std::int32_t eventType;     // alarm class code
  std::int32_t severity;      // severity code
  std::int32_t functionType;  // function code
  std::int32_t faultId;       // alarm identifier
  std::int32_t reasonId;      // reason identifier
  std::tm faultTime;          // UTC; weekday, day of the year and daylight saving are -1,
                              // tm_gmtoff 0 and tm_zone null on a delivered one
  std::string fdn;            // distinguished name of the resource
  std::string para;           // parameters
  std::int32_t faultFlag;     // state of the record; 1 on a delivered one
};

// One alarm definition, or one redefined severity. Texts of definitions are in the agent's
// character set; the name of a redefined severity is as it came.
class EMF_API AlarmCfg {
 public:
  AlarmCfg();
  AlarmCfg(const AlarmCfg& other);
  AlarmCfg(AlarmCfg&&) = default;
  AlarmCfg& operator=(const AlarmCfg&) = default;
  AlarmCfg& operator=(AlarmCfg&&) = default;
  virtual ~AlarmCfg();

  // As of FaultRecord, but of alarmClass, not of eventType: meant so.
  const char* alarmClass2Str() const;
  // As of FaultRecord, of alarmFunc.
  const char* alarmFunc2Str() const;
  // The severity if it is 1 to 4, otherwise 0.
  std::int32_t alarmLevel2TMF() const;

  std::int32_t alarmGroupId;  // "alarmGroupId", group of the alarm; -999 in a closing record
  std::int32_t alarmId;       // "alarmId", identifier within the group; -999 in a closing record
  std::int32_t eventType;     // "eventType"; definitions only
  std::int32_t alarmClass;    // never written
  std::int32_t alarmFunc;     // never written
  std::int32_t severity;      // of a definition "severity" as it came; of a redefinition
                              // "newSeverity", 1 to 4, any other as 0
  std::int32_t oldSeverity;   // "OldLevel", 1 to 4, any other as 0; redefinitions only
  std::string auxText;        // never written
  std::int32_t auxValue1;     // never written
  std::string alarmName;      // of a definition "alarmName", of a redefinition "Name"
  std::string description;    // "description"; definitions only
  std::int32_t auxValue2;     // never written
};

// One cause of an alarm and what to do about it. Texts are in the agent's character set.
class EMF_API AlarmReason {
 public:
  AlarmReason();
  AlarmReason(const AlarmReason&) = default;
  AlarmReason(AlarmReason&&) = default;
  AlarmReason& operator=(const AlarmReason&) = default;
  AlarmReason& operator=(AlarmReason&&) = default;
  virtual ~AlarmReason();

  std::int32_t alarmGroupId;  // "alarmGroupId", group of the alarm; -999 in a closing record
  std::int32_t alarmId;       // "alarmId", identifier within the group; -999 in a closing record
  std::int32_t reasonId;      // "reasonId", identifier of the reason; -999 in a closing record
  std::string causes;         // "causes"
  std::string repairAction;   // "repairAction"
};
