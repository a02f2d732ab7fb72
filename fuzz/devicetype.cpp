// A devicetype.cfg of any bytes: reading ends, and every type that it gives is "ACCESS".
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>

#include "emfresinterface.h"
#include "platform.h"
#include "temp_directory.h"

namespace {

constexpr char kFile[] = "etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/devicetype.cfg";

// Types up to 85 are moved, so none from 1 to 85 is left.
bool mayBeGiven(int type) { return type < 1 || type > 85; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const emf::doubles::TempDirectory root;
  root.write(kFile, std::string(reinterpret_cast<const char*>(data), size));
  emf::doubles::platform().reset();
  emf::doubles::platform().config.rootPath(root.path());
  std::map<int, std::string> types{{7, "before"}};
  if (EMFResMgrI::getAccessNETypeList(types) != 0) std::abort();
  for (const auto& [type, text] : types) {
    if (text != "ACCESS" || !mayBeGiven(type)) std::abort();
  }
  return 0;
}
