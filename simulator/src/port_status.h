// The status command: what a port is, which links end at it, and its two states, which can be
// changed while another program serves the database.
//
//   std::string line = portStatus(database, *portOf("2/0/1/0/3"), statesOf("1,0"));
//   // {"portId":3,"place":"2/0/1/0/3","name":"GE0/1/3","states":[1,0],"links":["204:2"]}
//
// Thread-safety: thread-compatible. Failure: portOf and statesOf give nothing for a text that is
// malformed; portStatus throws SimError.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "sqlite.h"

namespace ormasim {

// Device, frame, slot, card and port.
using PortPlace = std::array<std::int64_t, 5>;
// By its id or its place.
using PortName = std::variant<std::int64_t, PortPlace>;
// As they go into port.state_a and port.state_b.
using PortStates = std::array<std::int32_t, 2>;

// "17" or "2/0/1/0/3".
std::optional<PortName> portOf(const std::string& text);
// "1,0"; states may be negative.
std::optional<PortStates> statesOf(const std::string& text);

// The port as one line of JSON without its end, after its states were changed if some are given.
std::string portStatus(Database& database, const PortName& port,
                       const std::optional<PortStates>& states);

// The same for a file, which is opened for writing only if states are given.
std::string portStatus(const std::string& databaseFile, const PortName& port,
                       const std::optional<PortStates>& states);

}  // namespace ormasim
