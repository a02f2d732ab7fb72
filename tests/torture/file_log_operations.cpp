// The local file logs. Their files stay open as long as the process lives.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "captured_output.h"
#include "filelogs.h"
#include "operation.h"
#include "platform.h"
#include "temp_directory.h"

namespace emf::torture {
namespace {

namespace fs = std::filesystem;
using doubles::platform;

const std::string kText = "a line of the log that takes memory of its own";
// One that makes the agent log rotate behind it, and one for the exception log.
const std::string kAgentFull(100001, 'x');
const std::string kExceptionFull(200001, 'x');
constexpr int kRow = 5;

// The directory that the logs lie in; this process works in it from the first call on.
const fs::path& directory() {
  static const fs::path& path = *[] {
    static doubles::TempDirectory made;
    fs::create_directory(made.path() / "log");
    if (::chdir(made.path().c_str()) != 0) std::abort();
    ::setenv(".", made.path().c_str(), 1);
    static const fs::path log = made.path() / "log";
    return &log;
  }();
  return path;
}

std::map<std::string, std::uintmax_t> sizes() {
  std::map<std::string, std::uintmax_t> found;
  for (const auto& entry : fs::directory_iterator(directory())) {
    found[entry.path().filename()] = entry.file_size();
  }
  return found;
}

// What was appended to the logs since then; of a text of one letter its length, and without the
// number of the thread.
Texts appendedSince(const std::map<std::string, std::uintmax_t>& before) {
  Texts texts;
  for (const auto& [name, size] : sizes()) {
    const auto old = before.find(name);
    const std::uintmax_t start = old == before.end() ? 0 : old->second;
    if (size <= start) continue;
    std::ifstream file(directory() / name, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(start));
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.find_first_not_of('x') == std::string::npos) text = std::to_string(text.size());
    const std::size_t thread = text.find("Thread:");
    if (thread != std::string::npos) {
      const std::size_t number = thread + 7;
      text.erase(number, text.find_first_not_of("-0123456789", number) - number);
    }
    texts.push_back(text);
  }
  return texts;
}

template <class Call>
std::function<Outcome(const Fault&)> writing(Call call) {
  return [call](const Fault& fault) {
    const auto before = sizes();
    Outcome outcome;
    outcome.result = resultOf(fault, outcome.struck, call);
    outcome.records = appendedSince(before);
    return outcome;
  };
}

// The name of a rotated exception log is the second, so what is in it may be gone the next time.
Outcome rotateExceptionLog(const Fault& fault) {
  emf::openExceptionLog(directory().parent_path().c_str());
  Outcome outcome;
  outcome.result = resultOf(fault, outcome.struck, [] { WriteException(kExceptionFull.c_str()); });
  return outcome;
}

Outcome traceRow(const Fault& fault) {
  Outcome outcome;
  outcome.result =
      resultOf(fault, outcome.struck, [] { DbTrace("row %d of a table of some length", kRow); });
  outcome.records = platform().trace.texts();
  return outcome;
}

const std::string kAsn = "Thread:, ASN Trace:\n" + kText;

}  // namespace

const std::vector<Operation>& fileLogOperations() {
  const bool onlyCold = true;
  static const std::vector<Operation> rows = {
      {"WriteLog",
       writing([] { WriteLog(kText.c_str()); }),
       {"done", {kText}, {}},
       Left::kSome,
       {{"file", {"done"}}, {"path", {"done"}}, {"writing", {"done"}}},
       {},
       {},
       0,
       false,
       onlyCold},
      {"WriteLog of nothing",
       writing([] { WriteLog(nullptr); }),
       {"done", {}, {}},
       Left::kSome,
       {},
       {},
       {},
       0,
       false,
       onlyCold},
      {"WriteLog that rotates",
       writing([] { WriteLog(kAgentFull.c_str()); }),
       {"done", {"100001"}, {}},
       Left::kSome,
       {{"file", {"done|ends the process"}},
        {"path", {"done|ends the process"}},
        {"writing", {"done"}}},
       {},
       {},
       0,
       false,
       onlyCold},
      {"WriteException that rotates",
       rotateExceptionLog,
       {"done", {}, {}},
       Left::kSome,
       {{"file", {kEndsTheProcess}}, {"path", {kEndsTheProcess}}},
       {},
       {},
       0,
       false,
       onlyCold},
      {"WriteBothLogs",
       writing([] { WriteBothLogs("%s", kText.c_str()); }),
       {"done", {"Thread:, " + kText}, {}},
       Left::kSome,
       {{"file", {"done"}},
        {"path", {"done"}},
        {"writing", {"done"}},
        {"formatting", {"done"}},
        {"formatting a list", {"done"}}},
       {},
       {{"Thread:, " + kText, {kText, "Thread:, "}}},
       0,
       false,
       onlyCold},
      {"WriteAsnTrace",
       writing([] { emf::writeAsnText(kText.c_str()); }),
       {"done", {kAsn}, {}},
       Left::kSome,
       {{"file", {"done"}},
        {"path", {"done"}},
        {"writing", {"done"}},
        {"formatting", {"done"}},
        {"formatting a list", {"done"}}},
       {},
       {{kAsn, {kText, "Thread:, ASN Trace:\n"}}},
       0,
       false,
       onlyCold},
      {"ConsolePrint",
       callingPrinter(scriptNothing, [] { ConsolePrint("%s\n", kText.c_str()); }),
       {"done", {kText + "\n"}, {}},
       Left::kWhole,
       {{"formatting a list", {"done"}}},
       {},
       {{kText + "\n", {""}}},
       1},
      {"DbTrace",
       traceRow,
       {"done", {"[ORMACORBA DBLog][SATrace]:row 5 of a table of some length"}, {}},
       Left::kAnything,
       {{"formatting a list", {"done"}}}},
  };
  return rows;
}

}  // namespace emf::torture
