#include "torment.h"

#include <ace/Thread_Manager.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <thread>

#include "corbaemfinterface.h"
#include "deviceinfo.h"
#include "failing_allocation.h"
#include "orma/asn1/csm_exception.h"
#include "platform.h"
#include "processexception.h"
#include "submapbufmgr.h"
#include "transmitassistant.h"

namespace emf::torture {
namespace {

// A call takes milliseconds; only one that waits for a lock takes so long.
constexpr unsigned int kHangSeconds = 60;
// What of an operation's allocations is tried unless all are.
constexpr long kSomeAllocations = 12;

char place[200];  // of the call that is being made

void setPlace(const Operation& operation, const Fault& fault) {
  const char* const kinds[] = {"without a fault", "allocation", "allocations from", "outward call"};
  std::snprintf(place, sizeof place, "%s, %s %ld, way %d", operation.name,
                kinds[static_cast<int>(fault.kind)], fault.number, fault.way);
}

void writePlace(const char* what) {
  const char* const parts[] = {"\n", what, place, "\n"};
  for (const char* text : parts) {
    if (::write(STDERR_FILENO, text, std::strlen(text)) < 0) return;
  }
}

extern "C" void tellHang(int) {
  writePlace("hangs: ");
  std::abort();
}

[[noreturn]] void tellTermination() {
  writePlace("std::terminate: ");
  std::abort();
}

void watchForHangs() {
  std::signal(SIGALRM, tellHang);
  std::set_terminate(tellTermination);
  ::alarm(kHangSeconds);
}

// Whether each of `texts` stands in `whole` or may stand in the place of one that does, in order.
bool isPartOf(const Texts& texts, const Operation& operation, bool fromTheStart) {
  auto next = operation.whole.records.begin();
  const auto end = operation.whole.records.end();
  for (const std::string& text : texts) {
    const auto stands = [&](const std::string& record) {
      if (record == text) return true;
      const auto others = operation.inPlaceOf.find(record);
      return others != operation.inPlaceOf.end() &&
             std::count(others->second.begin(), others->second.end(), text) > 0;
    };
    const auto found = std::find_if(next, end, stands);
    if (found == end || (fromTheStart && found != next)) return false;
    next = found + 1;
  }
  return true;
}

bool isLeftRight(const Operation& operation, const Texts& records) {
  const Texts& whole = operation.whole.records;
  switch (operation.left) {
    case Left::kAnything:
      return true;
    case Left::kWhole:
      return isPartOf(records, operation, true) &&
             (records.size() == whole.size() || records.size() == operation.before);
    case Left::kStart:
    case Left::kSome:
      break;
  }
  return records.size() >= operation.before &&
         isPartOf(records, operation, operation.left == Left::kStart);
}

std::string joined(const Outcome& outcome) {
  std::string text = "  " + outcome.result;
  for (const std::string& record : outcome.records) text += "\n    " + record;
  return text;
}

// The results of "one|other".
Texts alternatives(const std::string& text) {
  Texts results;
  std::istringstream words(text);
  for (std::string word; std::getline(words, word, '|');) results.push_back(word);
  return results;
}

// What went wrong since the start of the program.
long problems = 0;

void tellProblem(const std::string& text) {
  ++problems;
  ADD_FAILURE() << text;
}

bool contains(const Texts& texts, const std::string& text) {
  return std::count(texts.begin(), texts.end(), text) > 0;
}

// What a call in a process of its own tells the one that made it.
struct Told {
  Struck struck;
  bool isDone;
  bool hasEnded;  // by _exit, inside the call
};

Told& told() {
  static void* const shared =
      ::mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  return *static_cast<Told*>(shared);
}

bool isWarm = false;

// How many of an operation's allocations fail in processes of their own, which cost twenty times as
// much.
long coldAllocationsOf(const Operation& operation) {
  if (isWhole()) return 24;
  return operation.onlyCold ? 3 : 1;
}

}  // namespace

// The end that is asked for, with what belongs to the end of a program.
extern "C" void __wrap__exit(int status) __attribute__((noreturn));
extern "C" void __wrap__exit(int status) {
  told().struck = disarm();
  told().hasEnded = true;
  std::exit(status);
}

std::string currentException() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return kNoMemory;
  } catch (const ProcessException& failure) {
    return "throws ProcessException " + std::to_string(failure.errCode);
  } catch (CSM_Exception* failure) {
    delete failure;
    return "throws CSM_Exception";
  } catch (const std::out_of_range&) {
    return "throws std::out_of_range";
  } catch (const std::exception& failure) {
    return std::string("throws ") + failure.what();
  } catch (...) {
    return "throws something else";
  }
}

Injected& injected() {
  static Injected counts;
  return counts;
}

bool isWhole() {
  const char* const wish = std::getenv("EMF_TORTURE");
  return wish != nullptr && std::string(wish) == "whole";
}

std::string complaint(const Operation& operation, const Fault& fault, const Outcome& outcome) {
  Texts results = operation.withoutMemory;
  if (!operation.throwsNothing) results.push_back(kNoMemory);
  bool isWhole = outcome.result == operation.whole.result;
  if (outcome.struck.call.kind != nullptr) {
    const auto outages = operation.outages.find(outcome.struck.call.kind);
    const bool isNoticed = outages != operation.outages.end();
    results = isNoticed ? alternatives(outages->second.at(static_cast<std::size_t>(fault.way)))
                        : Texts{operation.whole.result};
    // What goes unnoticed leaves the whole output.
    if (!isNoticed && outcome.records != operation.whole.records) return "changes the output";
    isWhole = isWhole && contains(results, outcome.result);
  }
  if (isWhole && outcome.records == operation.whole.records) return std::string();
  if (!contains(results, outcome.result)) return "gives another result than it should";
  if (!isLeftRight(operation, outcome.records)) return "leaves what it should not";
  return std::string();
}

void cleanUp() {
  DeviceInfo::Destroy();
  SubmapBufMgr::Destroy();
  CAEmfMcdbErrorCodeMgr::Destroy();
  TransmitAssistant::Destroy();
  doubles::platform().reset();
}

void Torment::expectWhole(const char* where) const {
  const Outcome outcome = operation_.run(Fault());
  if (outcome.result != operation_.whole.result || outcome.records != operation_.whole.records) {
    tellProblem(std::string(place) + ", " + where + ":\n" + joined(outcome) + "\ninstead of\n" +
                joined(operation_.whole));
  }
  cleanUp();
}

Struck Torment::attempt(const Fault& fault) const {
  setPlace(operation_, fault);
  watchForHangs();
  const Outcome outcome = operation_.run(fault);
  const char* const kind = outcome.struck.call.kind;
  if (outcome.struck.any()) {
    const std::string wrong = complaint(operation_, fault, outcome);
    if (!wrong.empty()) {
      tellProblem(std::string(place) + (kind != nullptr ? std::string(": ") + kind : "") + " " +
                  wrong + ":\n" + joined(outcome) + "\ninstead of\n" + joined(operation_.whole));
    }
  }
  cleanUp();
  // A lock that is still held stops the other thread for ever.
  std::thread([this] { expectWhole("then on another thread"); }).join();
  expectWhole("then on the same thread");
  ::alarm(0);
  return outcome.struck;
}

// What the child's expectations say goes to the same output.
Struck Torment::coldAttempt(const Fault& fault) const {
  told() = {};
  // Made ahead: what is made at a first call is the plug-in's alone. ACE's manager of threads
  // crashes when it was made with too little memory.
  doubles::platform();
  ACE_Thread_Manager::instance();
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    const long before = problems;
    told().struck = attempt(fault);
    told().isDone = problems == before;
    // With what belongs to the end of a program: the report of leaks.
    std::exit(EXIT_SUCCESS);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  setPlace(operation_, fault);
  if (told().hasEnded) {
    Outcome outcome;
    outcome.result = kEndsTheProcess;
    outcome.struck = told().struck;
    const std::string wrong = complaint(operation_, fault, outcome);
    if (!wrong.empty()) tellProblem(std::string(place) + " ends the process");
  } else if (!told().isDone || status != 0) {
    tellProblem(std::string(place) + ", in a process of its own: status " + std::to_string(status));
  }
  return told().struck;
}

// Tries `most` of the allocations, spread over all of them; 0: each one.
template <class Attempt>
void Torment::everyAllocation(Fault::Kind kind, long most, Attempt attempt) const {
  const long all = attempt(Fault()).allocations;
  const long count = most == 0 ? all : std::min(all, most);
  const long before = problems;
  for (long step = 0; step < count; ++step) {
    const long number = count == 1 ? (all + 1) / 2 : 1 + step * (all - 1) / (count - 1);
    // Fewer than before are those of a library that keeps room for later.
    if (attempt({kind, number, 0}).memory) ++injected().allocations;
    if (problems > before) return;  // one of a kind is enough
  }
}

// The kinds of the calls.
template <class Attempt>
std::set<std::string> Torment::everyOutwardCall(Attempt attempt) const {
  std::set<std::string> kinds;
  for (long number = 1;; ++number) {
    for (int way = 0, ways = 1; way < ways; ++way) {
      const Struck struck = attempt({Fault::Kind::kOutwardCall, number, way});
      if (struck.call.kind == nullptr) return kinds;
      kinds.insert(struck.call.kind);
      ++injected().outwardCalls;
      ways = struck.call.ways;
    }
  }
}

// A row that tells of a call that the operation does not make tells nothing.
void Torment::expectKinds(const std::set<std::string>& kinds, const std::string& onlyFirst) const {
  for (const auto& [kind, results] : operation_.outages) {
    if (kind != onlyFirst && kinds.count(kind) == 0) {
      tellProblem(std::string(operation_.name) + " makes no call of the kind " + kind);
    }
  }
}

// An attempt that leaves no allocation behind, but for what the first failure of its kind puts into
// caches, of log objects say.
Struck Torment::warmAttempt(const Fault& fault) const {
  Struck struck;
  long left = 1;
  for (int run = 0; run < 2 && left != 0; ++run) {
    const long before = test::allocationsInUse();
    struck = attempt(fault);
    left = test::allocationsInUse() - before;
  }
  if (left != 0) {
    setPlace(operation_, fault);
    tellProblem(std::string(place) + ": allocations left: " + std::to_string(left));
  }
  return struck;
}

void Torment::fillCaches() const {
  isWarm = true;
  for (int run = 0; run < 2; ++run) expectWhole("to fill the caches");
}

void Torment::allocations(Fault::Kind kind) const {
  fillCaches();
  everyAllocation(kind, isWhole() ? 0 : kSomeAllocations,
                  [this](const Fault& fault) { return warmAttempt(fault); });
}

void Torment::outwardCalls() const {
  fillCaches();
  expectKinds(everyOutwardCall([this](const Fault& fault) { return warmAttempt(fault); }),
              "mapping");
}

void Torment::coldAllocations(Fault::Kind kind) const {
  ASSERT_FALSE(isWarm) << "a call has been made in this process";
  everyAllocation(kind, coldAllocationsOf(operation_),
                  [this](const Fault& fault) { return coldAttempt(fault); });
}

void Torment::coldOutwardCalls() const {
  ASSERT_FALSE(isWarm) << "a call has been made in this process";
  expectKinds(everyOutwardCall([this](const Fault& fault) { return coldAttempt(fault); }), "");
}

}  // namespace emf::torture
