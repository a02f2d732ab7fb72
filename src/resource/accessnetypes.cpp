// The device types that count as access network elements, from the installation's file.
#include <limits.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "emfglobal.h"
#include "emfresinterface.h"
#include "inputfile.h"
#include "orma/bundle/config_items.h"
#include "orma/ident/sdxml_interpreter_mgr.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emfresinterface";
constexpr char kFile[] = "/etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/devicetype.cfg";
constexpr char kKey[] = "ACCESS";
constexpr std::size_t kLineBytes = 510;

// A type from 1 to 85 is handed out as one that is so much greater: meant so.
constexpr int kLastShiftedType = 85;
constexpr int kTypeShift = 268389720;

std::string configurationFile(std::string root) {
  if (root.back() == '/' || root.back() == '\\') root.pop_back();
  return root + kFile;
}

emf::InputFile openFile(const std::string& path) {
  char resolved[PATH_MAX] = {};
  static_assert(sizeof resolved == 4096);
  if (::realpath(path.c_str(), resolved) == nullptr) return {nullptr, std::fclose};
  return emf::openInput(resolved);
}

enum class LineRead { kLine, kTooLong, kEnd };

// The next line without its end. Of one that is too long nothing is kept but its place: reading
// goes on behind it.
LineRead readLine(std::FILE* file, std::string& line) {
  line.clear();
  int byte = std::getc(file);
  if (byte == EOF) return LineRead::kEnd;
  for (; byte != EOF && byte != '\n'; byte = std::getc(file)) {
    if (line.size() <= kLineBytes) line.push_back(static_cast<char>(byte));
  }
  return line.size() > kLineBytes ? LineRead::kTooLong : LineRead::kLine;
}

// The integers of the first "ACCESS" line.
std::list<int> accessTypes(std::FILE* file) {
  std::list<int> types;
  std::string line;
  int number = 0;
  for (LineRead read; (read = readLine(file, line)) != LineRead::kEnd;) {
    ++number;
    if (read == LineRead::kTooLong) {
      EMF_TRACE(kSourceName,
                TaDebugWithPara(1,
                                "EMFResMgrI::getAccessNETypeList line %d of devicetype.cfg is "
                                "longer than %d bytes and passed over",
                                number, static_cast<int>(kLineBytes)));
      continue;
    }
    if (line.empty() || line.front() == '#') continue;
    const std::size_t equals = line.find('=');
    if (line.compare(0, equals, kKey) != 0) continue;
    const std::string value = equals == std::string::npos ? "" : line.substr(equals + 1);
    NS_UTIL::SDXMLInterpreterMgr::Instance()->ParseIntList(value.c_str(), types);
    break;
  }
  return types;
}

}  // namespace

std::int64_t EMFResMgrI::getAccessNETypeList(std::map<int, std::string>& types) {
  const emf::WatchedCall call("EMFResMgrI::getAccessNETypeList");
  const std::string root = NS_BUNDLEMGR1::GetORMARootPath();
  if (root.empty()) return 0;
  const emf::InputFile file = openFile(configurationFile(root));
  if (!file) return 0;
  std::map<int, std::string> found;
  for (const int type : accessTypes(file.get())) {
    const bool shifted = type >= 1 && type <= kLastShiftedType;
    found.emplace(shifted ? type + kTypeShift : type, kKey);
  }
  types.swap(found);
  return 0;
}
