// A reply frame of alarms like those of a network, about 200 bytes each.
//
// Thread-safety: thread-safe.
#pragma once

#include <string>

// Frame `number` of `total`, with `items` alarms, encoded.
std::string alarmFrame(int items, int number = 1, int total = 1);
