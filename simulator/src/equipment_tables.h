// What shelves are made of, and what stands beside them: boards, attributes, keepers, types.
#pragma once

#include <cstdint>

namespace ormasim {

struct MainTypeName {
  std::int64_t id;
  const char* name;
};

// Those with resources of their own in an inventory, and some that only have a name.
constexpr std::int64_t kElementType = 1;
constexpr std::int64_t kFrameType = 3;
constexpr std::int64_t kSlotType = 4;
constexpr std::int64_t kDaughterSlotType = 5;
constexpr std::int64_t kPortType = 6;
constexpr std::int64_t kCardType = 20;
constexpr std::int64_t kDaughterCardType = 21;

constexpr MainTypeName kMainTypes[] = {
    {kElementType, "Network element"},
    {2, "子网"},
    {kFrameType, "机框"},
    {kSlotType, "Slot"},
    {kDaughterSlotType, "Daughter slot"},
    {kPortType, "端口"},
    {7, "Liaison montante dédiée"},
    {8, "Faser"},
    {9, "Enlace óptico"},
    {20, "单板"},
    {kDaughterCardType, "Daughter card"},
    {30, "Power supply"},
    {31, "Lüfter"},
};

// A card: what it is called, how many ports it has, and how many slots for daughter cards.
struct Board {
  const char* name;
  const char* chinese;
  std::int64_t type;
  std::int64_t ports;
  std::int64_t daughterSlots;
};

constexpr Board kBoards[] = {
    {"MPU", "主控板", 1001, 2, 0},
    {"LPU-8XGE", "八端口板", 1008, 8, 0},
    {"LPU-12XGE", "十二端口板", 1012, 12, 0},
    {"LPU-16XGE", "十六端口板", 1016, 16, 0},
    {"LPU-24XGE", "业务板", 1024, 24, 0},
    {"LPU-48XFE", "快速以太网板", 1048, 48, 0},
    {"NPU-4X10GE", "上联板", 1004, 4, 0},
    {"SPU-2", "业务处理板", 1102, 2, 2},
    {"FPIC-4", "子卡承载板", 1104, 4, 4},
};

// Cards with daughter slots carry these.
constexpr Board kDaughterBoards[] = {
    {"PIC-2XSTM1", "光子卡", 2002, 2, 0},
    {"PIC-4XE1", "电路子卡", 2004, 4, 0},
    {"PIC-8XGE", "以太网子卡", 2008, 8, 0},
};

// The cards of line terminals whose ports go to customers.
constexpr Board kAccessBoards[] = {
    {"GPON-8", "八口光接入板", 3008, 8, 0},
    {"GPON-16", "十六口光接入板", 3016, 16, 0},
    {"VDSL-32", "用户线板", 3032, 32, 0},
};

// What a slot holds where links end, by the ports that they need.
constexpr Board kLinkBoard = {"LPU-24XGE", "业务板", 1024, 24, 0};

constexpr std::int64_t kEthernetPort = 0x10002;
constexpr std::int64_t kCustomerPort = 0x20001;
constexpr std::int64_t kLineTerminalMainType = 4;

// The slots of a frame; its type is 5000 and their number.
constexpr std::int64_t kSlotsOfAFrame[] = {8, 8, 10, 12, 14, 16, 18};
constexpr std::int64_t kFrameTypes = 5000;
// The frames of an element that has none yet, in percent of such elements.
constexpr std::int64_t kFramesOfAnElement[] = {1, 1, 1, 1, 1, 2, 2, 2, 3, 4};

// What some ports have behind their name. Not all of it is GBK or ISO-8859-1.
constexpr const char* kPortRemarks[] = {" (备用)", " → 北京", " réservé",
                                        " größer", " ☎ 值班", " ñandú"};

// The words of names in one script.
struct EquipmentWords {
  const char* frame;
  const char* slot;
  const char* daughterSlot;
  const char* street;
  const char* houseNumber;  // what follows the number
};

// By Script.
constexpr EquipmentWords kEquipmentWords[] = {
    {"Frame ", "Slot ", "Subslot ", "Rue de l'Hôpital ", ""},
    {"机框", "槽位", "子槽位", "人民路", "号"},
};

// Numbers of attributes. 30 and 60 to 63 are the platform's own.
constexpr std::int64_t kModelAttribute = 1;
constexpr std::int64_t kSerialNumberAttribute = 2;
constexpr std::int64_t kInstalledAttribute = 3;
constexpr std::int64_t kHardwareAttribute = 4;
constexpr std::int64_t kRateAttribute = 10;
constexpr std::int64_t kWidthAttribute = 11;
constexpr std::int64_t kOwnerAttribute = 59;
constexpr std::int64_t kContractAttribute = 64;
constexpr std::int64_t kPlatformAttributes[] = {30, 60, 61, 62, 63};

constexpr const char* kOwners[] = {"Telecom Régionale", "城市电信", "Stadtwerke",
                                   "Compañía de Red"};

struct Keeper {
  const char* name;
  const char* dept;
  const char* phoneNo;
  const char* email;
};

// Numbered from 1.
constexpr Keeper kKeepers[] = {
    {"Anna Müller", "Netzbetrieb", "+41 44 555 01 01", "anna.mueller@example.net"},
    {"王伟", "运维一部", "+86 10 5550 0102", "wang.wei@example.net"},
    {"José Peña", "Mantenimiento", "+34 91 555 01 03", "jose.pena@example.net"},
    {"Claire Lefèvre", "Exploitation réseau", "+33 1 55 50 01 04", "claire.lefevre@example.net"},
    {"李娜", "传输维护中心", "+86 21 5550 0105", "li.na@example.net"},
    {"John Smith", "Field operations", "+44 20 5550 0106", "john.smith@example.net"},
    {"João Araújo", "Operações", "+55 11 5555 0107", ""},
    {"值班室", "", "+86 28 5550 0108", ""},
};

}  // namespace ormasim
