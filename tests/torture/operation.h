// The operations of the plug-in as rows of a table: how each is called on a scripted platform, what
// it gives when all goes well, and what it may give when something goes wrong.
//
//   {"EMFTopoI::getAllSubMaps",
//    calling(scriptSubMaps, kListBefore, [](auto& out) { return EMFTopoI::getAllSubMaps("S1", out);
//    }),
//    {"0", textsOf(kListAfter)},
//    Left::kStart,
//    {{"REST request", {"1092092116", "0", "1092092116", kNoMemory}}}}
//
// Thread-safety: immutable. Calls are thread-safe on distinct outputs, as the operations are.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "fault.h"

namespace emf::torture {

using Texts = std::vector<std::string>;

constexpr char kNoMemory[] = "throws std::bad_alloc";
constexpr char kEndsTheProcess[] = "ends the process";

// What a call gave: its result in words, and each record of its output as text.
struct Outcome {
  std::string result;
  Texts records;
  Struck struck;
};

// How much of the whole output may be there when the call failed.
enum class Left {
  kStart,     // the first of its records; all that was there before the call is
  kSome,      // some of its records, in their order, behind what was there before
  kWhole,     // all or nothing
  kAnything,  // nothing is promised of it
};

struct Operation {
  const char* name;  // as it is exported
  // Scripts the platform, makes the call with the fault, and tells what it gave.
  std::function<Outcome(const Fault&)> run;
  Outcome whole;  // what it gives when nothing fails
  Left left = Left::kStart;
  // The result of the call by the kind of outward call that failed and the way in which it did; a
  // kind that is not named changes nothing. Results with "|" between them: any of them, by the
  // place of the call.
  std::map<std::string, Texts> outages = {};
  // Results that a lack of memory may have, besides std::bad_alloc.
  Texts withoutMemory = {};
  // For each record: what may stand in its place when something failed.
  std::map<std::string, Texts> inPlaceOf = {};
  // How many records stood there before the call.
  std::size_t before = 0;
  // Whatever happens, no exception leaves it.
  bool throwsNothing = false;
  // Its state lasts as long as the process, so every fault has a process of its own.
  bool onlyCold = false;
};

const std::vector<Operation>& alarmOperations();
const std::vector<Operation>& rowOperations();
const std::vector<Operation>& resourceOperations();
const std::vector<Operation>& labelOperations();
const std::vector<Operation>& topologyOperations();
const std::vector<Operation>& cacheOperations();
const std::vector<Operation>& subnetOperations();
const std::vector<Operation>& frameOperations();
const std::vector<Operation>& fileLogOperations();
// All of them.
const std::vector<Operation>& operations();

// --- Making rows

// The exception that is being handled, in words; frees one that is thrown by pointer.
std::string currentException();

template <class Value>
std::string resultText(const Value& value) {
  return std::to_string(value);
}

// The result of the body in words, with the fault on during the body alone.
template <class Body>
std::string resultOf(const Fault& fault, Struck& struck, Body body) {
  fault.arm();
  try {
    if constexpr (std::is_void_v<decltype(body())>) {
      body();
      struck = disarm();
      return "done";
    } else {
      const auto result = body();
      struck = disarm();
      return resultText(result);
    }
  } catch (...) {
    struck = disarm();
    return currentException();
  }
}

template <class Record>
std::string textOf(const Record& record) {
  std::ostringstream text;
  text << record;
  return text.str();
}

template <class Record>
Texts textsOf(const Record& record) {
  return {textOf(record)};
}
template <class Record>
Texts textsOf(const std::list<Record>& records) {
  Texts texts;
  for (const Record& record : records) texts.push_back(textOf(record));
  return texts;
}
template <class Record>
Texts textsOf(const std::vector<Record>& records) {
  Texts texts;
  for (const Record& record : records) texts.push_back(textOf(record));
  return texts;
}
template <class Key, class Value>
Texts textsOf(const std::map<Key, Value>& records) {
  Texts texts;
  for (const auto& [key, value] : records) texts.push_back(textOf(key) + ": " + textOf(value));
  return texts;
}

// A call that writes to an output, which stands as `before` when it begins. What `call` needs must
// be there already: whatever it allocates counts as the operation's.
template <class Out, class Call>
std::function<Outcome(const Fault&)> calling(void (*script)(), const Out& before, Call call) {
  return [script, before, call](const Fault& fault) {
    script();
    Out out = before;
    Outcome outcome;
    outcome.result = resultOf(fault, outcome.struck, [&] { return call(out); });
    outcome.records = textsOf(out);
    return outcome;
  };
}

// A call without an output.
template <class Call>
std::function<Outcome(const Fault&)> calling(void (*script)(), Call call) {
  return [script, call](const Fault& fault) {
    script();
    Outcome outcome;
    outcome.result = resultOf(fault, outcome.struck, call);
    return outcome;
  };
}

inline void scriptNothing() {}

}  // namespace emf::torture
