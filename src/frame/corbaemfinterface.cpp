#include "corbaemfinterface.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <ace/OS_NS_dirent.h>

#include "emfglobal.h"
#include "inputfile.h"
#include "orma/bundle/config_items.h"
#include "orma/dao/emf_comm_db_engine.h"
#include "orma/text/text.h"
#include "singleton.h"

namespace {

constexpr char kSourceName[] = "corbaemfinterface";
constexpr char kUnknownText[] = "unknown";
constexpr char kDefaultsFile[] = "errcode_ACCESS_TDT.res";
constexpr std::size_t kPathBytes = 4096;

std::string resourceDirectory() {
  const std::string base = NS_BUNDLEMGR1::GetORMAEnvironment();
  const bool chinese = Ormacommon::OrmaMsg::instance()->getLanguage() == "zh_CN";
  return base + (chinese ? "/../etc/nbires/zh_CN/" : "/../etc/nbires/en_US/");
}

// Every entry of the directory, in its own order, but for the file of defaults: it comes first, so
// that every other file wins over it.
std::list<std::string> resourceFiles(const std::string& directory) {
  std::list<std::string> paths;
  std::unique_ptr<ACE_DIR, void (*)(ACE_DIR*)> handle(
      ACE_OS::opendir(directory.c_str()), [](ACE_DIR* open) { ACE_OS::closedir(open); });
  if (!handle) return paths;
  while (const ACE_DIRENT* entry = ACE_OS::readdir(handle.get())) {
    const std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (name == kDefaultsFile) {
      paths.push_front(directory + name);
    } else {
      paths.push_back(directory + name);
    }
  }
  return paths;
}

void reportUnreadable(const std::string& path) {
  try {
    EMF_LOG(GetEmfLog(), kSourceName, LogText, 1, "Open file failed :" + path);
  } catch (...) {
    // A failure to report never stops the load.
  }
}

}  // namespace

bool CAEmfInterface::Init() { return true; }

void CAEmfInterface::Fini() {
  const std::string moduleName = CEmfCommDBEngine::GetModuleName();
  // The engine must exist before it may be released.
  CEmfCommDBEngine::Instance(moduleName);
  CEmfCommDBEngine::Destroy();
}

CAEmfMcdbErrorCodeMgr* CAEmfMcdbErrorCodeMgr::m_pInstance = nullptr;

CAEmfMcdbErrorCodeMgr* CAEmfMcdbErrorCodeMgr::Instance() {
  return emf::singletonInstance(m_pInstance, [] { return new CAEmfMcdbErrorCodeMgr; });
}

void CAEmfMcdbErrorCodeMgr::Destroy() {
  emf::destroySingleton(m_pInstance, [](CAEmfMcdbErrorCodeMgr* instance) { delete instance; });
}

bool CAEmfMcdbErrorCodeMgr::Init() {
  LoadAll();
  return true;
}

void CAEmfMcdbErrorCodeMgr::LoadAll() {
  for (const std::string& path : resourceFiles(resourceDirectory())) LoadFile(path);
}

void CAEmfMcdbErrorCodeMgr::LoadFile(const std::string& path) {
  char resolved[kPathBytes] = {};
  // The result is not looked at: the C library leaves a path that it cannot resolve in the buffer,
  // and opening that fails.
  const char* const unused = ::realpath(path.c_str(), resolved);
  static_cast<void>(unused);
  const emf::InputFile file = emf::openInput(resolved, emf::Directories::Opened);
  if (!file) {
    reportUnreadable(path);
    return;
  }
  char key[kOrmaLineBufferBytes] = {};
  char value[kOrmaLineBufferBytes] = {};
  for (;;) {
    const int result = OrmaGetLine(key, value, file.get());
    // Base 0: decimal, "0x" hexadecimal or "0" octal; a key that is no number is code 0.
    const unsigned long code = std::strtoul(key, nullptr, 0);
    if (result == 0) break;
    if (result == 1) m_errorTexts[code] = value;
  }
}

void CAEmfMcdbErrorCodeMgr::GetErrorInfo(std::string& text, const unsigned long& code) {
  text = kUnknownText;
  const auto entry = m_errorTexts.find(code);
  if (entry != m_errorTexts.end()) text = entry->second;
}

std::string ErrorCodeBufIfImpl::GetIFName() { return "ErrorCodeBufIfImpl"; }

int ErrorCodeBufIfImpl::IsValid() { return 1; }

void ErrorCodeBufIfImpl::GetErrorInfo(std::string& text, const unsigned long& code) {
  if (CAEmfMcdbErrorCodeMgr* table = CAEmfMcdbErrorCodeMgr::Instance()) {
    table->GetErrorInfo(text, code);
  } else {
    text = kUnknownText;
  }
}
