// What alarms are about: the kinds that devices of every group raise, and why.
#pragma once

#include <cstdint>

namespace ormasim {

struct AlarmCause {
  const char* causes;  // null: there is no such cause
  const char* repairAction;
};

struct AlarmKind {
  const char* name;
  const char* description;
  int eventType;     // 1 communications, 2 environment, 3 equipment, 4 quality, 5 processing
  int functionType;  // 1 power, 2 environment, 3 signal, …, 10 processing
  int severity;      // 1 critical, 2 major, 3 minor, 4 warning
  AlarmCause causes[3];
};

constexpr AlarmKind kAlarmKinds[] = {
    {"LINK_DOWN",
     "The physical link of a port is down",
     1,
     3,
     1,
     {{"The fibre is broken or unplugged", "Check the fibre and plug it in"},
      {"The peer port is shut down", "Open the peer port"},
      {"The optical module has failed", "Replace the optical module"}}},
    {"LOSS_OF_SIGNAL",
     "No optical power is received",
     1,
     3,
     1,
     {{"The fibre is broken", "Find the break by reflectometry and splice the fibre"},
      {"The peer transmits no light", "Check the peer's laser"}}},
    {"HIGH_BIT_ERROR_RATE",
     "The bit error rate is above its threshold",
     4,
     3,
     2,
     {{"Connectors are dirty", "Clean the connectors"},
      {"The received power is too low", "Check the attenuation of the line"}}},
    {"NE_UNREACHABLE",
     "The management system cannot reach the element",
     1,
     8,
     1,
     {{"The management network has failed", "Check the route to the element"},
      {"The element has lost its power", "Check the power supply"}}},
    {"BGP_PEER_LOST",
     "A routing session was lost",
     1,
     8,
     2,
     {{"The hold timer has expired", "Check the path to the peer"},
      {"The peer has closed the session", "Check the peer's configuration"}}},
    {"POWER_SUPPLY_FAILED",
     "One of the power supplies has failed",
     3,
     1,
     2,
     {{"The fuse has blown", "Replace the fuse"},
      {"The module has failed", "Replace the power module"}}},
    {"电源电压过低",
     "输入电压低于门限",
     3,
     1,
     3,
     {{"市电不稳定", "检查市电和整流器"}, {"蓄电池老化", "更换蓄电池"}}},
    {"BATTERY_DISCHARGING",
     "The site runs on its battery",
     2,
     1,
     2,
     {{"The mains have failed", "Start the generator or restore the mains"}}},
    {"TEMPERATURE_HIGH",
     "The temperature of a card is above its threshold",
     2,
     2,
     3,
     {{"The air filter is clogged", "Clean the air filter"},
      {"The air conditioning has failed", "Repair the air conditioning"}}},
    {"风扇故障", "风扇停止转动", 3, 5, 2, {{"风扇被堵住", "清理风扇"}, {"风扇损坏", "更换风扇框"}}},
    {"Tür geöffnet",
     "Die Tür des Schaltschranks steht offen",
     2,
     2,
     4,
     {{"Wartung ist im Gange", "Nach der Wartung schließen"},
      {"Das Schloss ist defekt", "Schloss prüfen"}}},
    {"CARD_FAILED",
     "A card does not work",
     3,
     5,
     1,
     {{"A self-test has failed", "Reset the card, replace it if the test fails again"},
      {"The card is not seated", "Seat the card"}}},
    {"CARD_REMOVED",
     "A card was taken out",
     3,
     5,
     2,
     {{"Somebody has removed the card", "Insert the card or remove it from the configuration"}}},
    {"CPU_OVERLOAD",
     "The processor load is above its threshold",
     4,
     7,
     3,
     {{"A storm of protocol messages", "Limit the rate of protocol messages"},
      {"Too many routes", "Aggregate routes"}}},
    {"MEMORY_LOW",
     "Little memory is left",
     5,
     6,
     3,
     {{"A process leaks memory", "Restart the process and report it"}}},
    {"SOFTWARE_RESTARTED",
     "A software process was restarted",
     5,
     6,
     4,
     {{"The watchdog has expired", "Collect the log and report it"},
      {"An operator has restarted it", "Nothing is to be done"}}},
    {"LICENSE_EXPIRING",
     "A licence ends within 30 days",
     5,
     10,
     4,
     {{"The licence is limited", "Order a new licence"}}},
    {"CONFIGURATION_CHANGED",
     "The configuration differs from the saved one",
     5,
     10,
     4,
     {{"It was changed and not saved", "Save the configuration"}}},
    {"PACKET_LOSS",
     "Packets are lost on a tunnel",
     4,
     9,
     3,
     {{"The link is congested", "Shape the traffic or widen the link"},
      {"A queue is too short", "Adjust the queue"}}},
    {"CLOCK_LOST",
     "The synchronisation source was lost",
     1,
     4,
     2,
     {{"The upstream clock has failed", "Check the upstream element"},
      {"The relay of the clock board sticks", "Replace the clock board"}}},
};

// The groups of alarms are the main types of the devices that raise them: those of the generated
// roles, and that of imported elements.
constexpr std::int64_t kFirstAlarmGroup = 1;
constexpr std::int64_t kLastAlarmGroup = 6;
constexpr std::int64_t kFirstAlarmId = 1001;
// Every so many definitions has its severity redefined.
constexpr std::int64_t kRedefinedEvery = 7;

constexpr const char* kOperators[] = {"admin", "dienst", "值班员", "noc-2"};

}  // namespace ormasim
