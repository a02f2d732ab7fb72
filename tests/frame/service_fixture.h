// The service object as the bundle manager holds it, on an installation of its own.
#pragma once

#include <memory>

#include "error_table_fixture.h"
#include "orma/bundle/interface_slot.h"
#include "ormaemfsvc.h"
#include "submapbufmgr.h"

namespace emf::test {

class ServiceTest : public ErrorTableTest {
 protected:
  ServiceTest() {
    emf::doubles::platform().proxies.present();
    clearSlot();
  }
  ~ServiceTest() override {
    SubmapBufMgr::Destroy();
    clearSlot();
  }

  static NS_BUNDLEMGR1::InterfaceSlot& slot() {
    return *NS_BUNDLEMGR1::CheckIFBuf("ErrorCodeBufIf");
  }
  static void clearSlot() {
    for (auto* filed : slot().snapshot()) slot().remove(filed);
  }
  // What another bundle gets for a code.
  static std::string askForText(unsigned long code) {
    auto* errors = dynamic_cast<ErrorCodeBufIf*>(slot().front());
    std::string text = "no interface";
    if (errors != nullptr) errors->GetErrorInfo(text, code);
    return text;
  }

  struct Unload {
    ACE_Service_Object_Exterminator exterminate;
    void operator()(NS_BUNDLEMGR1::ServiceObjectBase* service) const {
      service->RemoveInterface();
      exterminate(static_cast<ACE_Service_Object*>(service));
    }
  };
  using Service = std::unique_ptr<NS_BUNDLEMGR1::ServiceObjectBase, Unload>;

  static Service load() {
    ACE_Service_Object_Exterminator exterminate = nullptr;
    ACE_Service_Object* made = _make_ii_ormaiac_emf(&exterminate);
    return Service(dynamic_cast<NS_BUNDLEMGR1::ServiceObjectBase*>(made), Unload{exterminate});
  }
};

}  // namespace emf::test
