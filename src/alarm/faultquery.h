// The query of the fault server behind EMFAlarmI::getAllAlarms and its neighbour.
//
// Thread-safety: thread-safe on distinct outputs.
#pragma once

#include <cstdint>
#include <list>

#include "emfalmrecords.h"

// The commands that the fault server answers with alarms.
constexpr unsigned long kQueryEventsSince = 2157;  // no operation sends it
constexpr unsigned long kQueryCurrentAlarms = 2158;

// Sends one query and appends a record for each alarm of each reply frame. `seconds`: how far back
// kQueryEventsSince reaches. Returns 0. Throws ProcessException with -1 for any other command,
// before anything is sent, and with the code of a failed exchange or of a frame; what the channel
// and the decoder throw passes. The records of earlier frames stay. Blocks until the server's last
// frame.
std::int64_t queryFaultRecords(std::list<FaultRecord>& out, unsigned long command,
                               unsigned int seconds);
