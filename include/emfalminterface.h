// Queries over alarms: current alarms and events, definitions, reasons, redefined severities.
//
//   std::list<FaultRecord> alarms;
//   try {
//     EMFAlarmI::getAllAlarms(alarms);
//   } catch (const ProcessException& failure) {
//     report(failure.errCode);  // the alarms that came before the failure are in the list
//   }
//
// Every operation is class-level and blocks: an exchange over REST for at most rest.totalTimeoutMs;
// the fault server for at most faultServer.connectTimeoutMs until it is reached, and for each frame
// for at most faultServer.receiveTimeoutMs, or 300 seconds where that is 0. Output lists are
// appended to, never cleared.
//
// Thread-safety: thread-safe on distinct outputs; no state.
#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include "emfalmrecords.h"
#include "emfexport.h"

class EMF_API EMFAlarmI {
 public:
  // Appends the current alarms, in the fault server's order. Returns 0. Throws ProcessException
  // with the code of a failed exchange or of a frame, and lets what the decoder throws pass (a
  // CSM_Exception by pointer, which the caller deletes); the alarms of earlier frames stay
  // appended. One frame is held at a time.
  static std::int64_t getAllAlarms(std::list<FaultRecord>& out);

  // The same as getAllAlarms: `seconds` has no effect, meant so.
  static std::int64_t getAllEvents(std::list<FaultRecord>& out, unsigned int seconds);

  // Appends every alarm definition, one request for each 5000, and one closing record whose
  // alarmGroupId and alarmId are -999. Returns 0; 1 when a read failed (logged), with the records
  // of earlier pages appended and no closing one. Throws Json::LogicError when a member has a
  // wrong type; records before it stay appended.
  static std::int64_t getAllAlarmCfg(std::vector<AlarmCfg>& out);

  // The same for every alarm reason; the closing record's reasonId is -999 too.
  static std::int64_t getAllAlarmReason(std::vector<AlarmReason>& out);

  // Appends the alarms whose severity was redefined, from one request: the first 500 as the service
  // counts. A member that is absent is logged and leaves its field as constructed. Returns 0; 1
  // with nothing appended when there was nothing to read, which a failed request is, too. A
  // ProcessException is logged, and the result is 0 then too, meant so. Throws Json::LogicError
  // when a member has a wrong type; records before it stay appended.
  static std::int64_t getRedefineAlarmInfo(std::vector<AlarmCfg>& out);
};
