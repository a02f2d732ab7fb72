// An inventory with links of every kind, and what the southbound set says of it, as texts.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "inventory_fixture.h"
#include "orma/southbound/southbound.h"

namespace orma::southbound::test {

using NS_DOMAIN_SOUTHAPISET::TEErrInfoReturn;
using NS_DOMAIN_SOUTHAPISET::TELinkInfo;
using NS_DOMAIN_SOUTHAPISET::TEPortOAMStatus;
using NS_DOMAIN_SOUTHAPISET::TEUniResID;

constexpr int kAllAttributes = 0x3FF;
constexpr int kReadFailed = 0x411800BA;

// Ports: 1 on device 2, states 1 and 0; 2 on device 3 with every special character in its name,
// without a card, states 1 and 1; 3 on device 2, states 0 and -1. Links: 5 virtual and 6 layer 2
// between ports 1 and 3, 77 IP from port 1 to port 2, 9 of another kind back.
class SouthboundTest : public dao::test::InventoryTest {
 protected:
  void SetUp() override;

  void addPort(const std::string& id, const std::string& place, const std::string& name = "GE",
               const std::string& type = "65538", const std::string& states = "1, 0");
  void addLink(const std::string& id, const std::string& kind, const std::string& source,
               const std::string& destination);
};

constexpr char kPort1[] = "NE=2,FR=0,S=1,SS=0,PP=1;0;65538;GE-1";
constexpr char kPort2[] = "NE=3,FR=0,S=2,PP=5;0;65537;LAG%3B1%2C2%3D%25 ü";
constexpr char kPort3[] = "NE=2,FR=0,S=1,SS=0,PP=3;0;65538;GE-3";

// Each operation's answer, one text a record: "IPLINK=204:77 IPLINK", "IPLINK=204:77 A - Z 6
// <source> -> <destination>", "<port> 1/0".
std::vector<std::string> linkIds(const std::vector<int>& elements = {},
                                 const std::vector<int>& kinds = {});
std::vector<std::string> linkInfos(const std::vector<std::string>& ids, int mask = kAllAttributes);
std::vector<std::string> portStates(const std::vector<std::string>& ids);

std::vector<TEUniResID> resourceIds(const std::vector<std::string>& ids);

// What an operation throws: its code, its place and its reason.
struct Thrown {
  int code = 0;
  std::string place;
  std::string reason;

  friend std::ostream& operator<<(std::ostream& out, const Thrown& thrown) {
    return out << thrown.code << " " << thrown.place << ": " << thrown.reason;
  }
};
template <typename Operation>
Thrown thrownBy(Operation operation) {
  try {
    operation();
  } catch (ProcessException& failure) {
    return {failure.errCode, failure.file.str() + " " + failure.function.str(),
            failure.detail.str()};
  }
  ADD_FAILURE() << "nothing was thrown";
  return {};
}

}  // namespace orma::southbound::test
