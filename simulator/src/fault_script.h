// The fault script: named requests that fail in named ways (docs/simulator.md).
//
//   FaultScript script = FaultScript::load("faults.json", {"/rest/…/dev-properties"});
//   if (const Fault* fault = script.next(path)) …
//
// Thread-safety: next is thread-safe. Failure: load throws SimError that names the file, the rule
// and the member, and says what would be right.
#pragma once

#include <json/value.h>

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ormasim {

enum class FaultAction {
  Refuse,         // close without a byte of an answer
  Stall,          // hold the answer
  Cut,            // close in the middle of the answer's body
  Garbage,        // answer 200 with bytes that are no JSON
  WrongType,      // give a member another JSON type
  RemoveKey,      // leave a member out
  ReplaceKey,     // give a member another value
  Status,         // answer with a status
  Repeat,         // give the answer before once more
  ExpireCursors,  // end all walks, then answer
  // Of the fault server only:
  Error,        // put an error code into a reply
  Reject,       // end the exchange with an error code
  Empty,        // leave the items of a reply out
  Bare,         // leave the optional fields of its items out
  WrongOrder,   // number a frame wrongly
  OtherCommand  // answer another command
};

struct Fault {
  std::string path;
  std::uint64_t from = 1;               // the requests from this one on:
  std::uint64_t oneIn = 1;              // one in so many of them, by lot
  std::uint64_t lot = 0;                // another one draws others
  std::vector<std::uint64_t> requests;  // or, when not empty, these, counted from 1
  FaultAction action = FaultAction::Refuse;
  int status = 0;                                 // Status
  std::string key;                                // WrongType, RemoveKey, ReplaceKey
  Json::Value value;                              // ReplaceKey
  std::uint32_t code = 0;                         // Error, Reject
  std::uint64_t frame = 1;                        // of the fault server's reply; 0: every one
  std::optional<std::chrono::milliseconds> time;  // Stall; none: until the connection ends
};

// The path of the fault server's commands in a script.
constexpr char kFaultServerPath[] = "fault-server";

class FaultScript {
 public:
  // No faults.
  FaultScript() = default;
  // A rule for any other path than `servedPaths` would never act and is refused.
  static FaultScript load(const std::string& file, const std::vector<std::string>& servedPaths);
  static FaultScript parse(const std::string& text, const std::string& name,
                           const std::vector<std::string>& servedPaths);

  // Counts a request for the path; the first rule that names it, or null.
  const Fault* next(const std::string& path);
  // Whether a rule repeats an answer of this path.
  bool repeats(const std::string& path) const;

 private:
  struct Counts {
    std::mutex mutex;
    std::map<std::string, std::uint64_t> requests;  // guarded by mutex
  };
  std::vector<Fault> faults_;
  std::unique_ptr<Counts> counts_ = std::make_unique<Counts>();
};

}  // namespace ormasim
