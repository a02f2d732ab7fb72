// The device types that count as access network elements, from the installation's file.
#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "emfglobal.h"
#include "emfresinterface.h"
#include "orma/bundle/config_items.h"
#include "orma/ident/sdxml_interpreter_mgr.h"
#include "watchedcall.h"

namespace {

constexpr char kSourceName[] = "emfresinterface";
constexpr char kFile[] = "/etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/devicetype.cfg";
constexpr char kKey[] = "ACCESS";
constexpr std::size_t kLineBytes = 510;

// The platform's own device types from 1 to 85 are known northbound by other numbers.
constexpr int kLastShiftedType = 85;
constexpr int kTypeShift = 268389720;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::string configurationFile(std::string root) {
  if (root.back() == '/' || root.back() == '\\') root.pop_back();
  return root + kFile;
}

// Null unless the path leads to a regular file that can be read: anything else could block or go on
// without end.
File openFile(const std::string& path) {
  char resolved[PATH_MAX] = {};
  static_assert(sizeof resolved == 4096);
  if (::realpath(path.c_str(), resolved) == nullptr) return {nullptr, std::fclose};
  const int descriptor = ::open(resolved, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return {nullptr, std::fclose};
  struct stat status = {};
  std::FILE* file = nullptr;
  if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    file = ::fdopen(descriptor, "r");
  }
  if (file == nullptr) ::close(descriptor);
  return {file, std::fclose};
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
  const File file = openFile(configurationFile(root));
  if (!file) return 0;
  types.clear();
  for (const int type : accessTypes(file.get())) {
    const bool shifted = type >= 1 && type <= kLastShiftedType;
    types.emplace(shifted ? type + kTypeShift : type, kKey);
  }
  return 0;
}
