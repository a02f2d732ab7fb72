// Somebody else's program, built against an installed tree: every header of the interface, one
// call into the library, one exported record and its type.
#include <deviceinfo.h>
#include <emfresinterface.h>
#include <emftopointerface.h>
#include <errorcodebufif.h>
#include <processexception.h>

#include <iostream>
#include <string>
#include <typeinfo>

int main() {
  std::string fdn;
  const std::int32_t length = EMFResMgrI::AdpDevID2FDN(12, fdn);
  Device device;
  const bool sameType = typeid(device) == typeid(Device) && device.id == 0;
  std::cout << "fdn " << fdn << ' ' << length << '\n'
            << "device " << (sameType && DeviceInfo::Instance() != nullptr ? "yes" : "no") << '\n';
}
