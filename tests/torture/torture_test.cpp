// Each operation of the plug-in while memory or the outside fails.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <set>

#include "torment.h"

namespace emf::torture {

const std::vector<Operation>& operations() {
  static const std::vector<Operation> rows = [] {
    std::vector<Operation> all;
    for (const auto* part : {&alarmOperations(), &rowOperations(), &resourceOperations(),
                             &labelOperations(), &topologyOperations(), &cacheOperations(),
                             &subnetOperations(), &frameOperations(), &fileLogOperations()}) {
      all.insert(all.end(), part->begin(), part->end());
    }
    return all;
  }();
  return rows;
}

namespace {

// Tells how much was done, for scripts/torture.sh.
class Torture : public ::testing::Test {
 protected:
  Torture() : before_(injected()) {}
  ~Torture() override {
    cleanUp();
    std::printf("injected: %ld allocations, %ld outward calls\n",
                injected().allocations - before_.allocations,
                injected().outwardCalls - before_.outwardCalls);
    std::fflush(stdout);
  }

  template <class Body>
  static void forEachOperation(Body body) {
    long called = 0;
    for (const Operation& operation : operations()) {
      if (!isWanted(operation)) continue;
      body(operation);
      ++called;
    }
    std::printf("called: %ld operations\n", called);
  }

 private:
  // EMF_TORTURE_ONLY=TEXT: those whose name holds the text, to look into one that failed.
  static bool isWanted(const Operation& operation) {
    const char* const only = std::getenv("EMF_TORTURE_ONLY");
    return only == nullptr || std::string(operation.name).find(only) != std::string::npos;
  }

  const Injected before_;
};

// These come first: the others fill the caches of the process.
TEST_F(Torture, FirstCallSurvivesEachAllocationThatFails) {
  forEachOperation([](const auto& row) { Torment(row).coldAllocations(Fault::Kind::kAllocation); });
}

TEST_F(Torture, FirstCallSurvivesMemoryThatRunsOut) {
  forEachOperation([](const auto& row) {
    if (isWhole() || row.onlyCold) Torment(row).coldAllocations(Fault::Kind::kAllocationsFrom);
  });
}

TEST_F(Torture, FirstCallSurvivesEachOutwardCallThatFails) {
  forEachOperation([](const auto& row) {
    if (isWhole() || row.onlyCold) Torment(row).coldOutwardCalls();
  });
}

TEST_F(Torture, EachAllocationThatFailsIsSurvived) {
  forEachOperation([](const auto& row) {
    if (!row.onlyCold) Torment(row).allocations(Fault::Kind::kAllocation);
  });
}

TEST_F(Torture, MemoryThatRunsOutIsSurvived) {
  forEachOperation([](const auto& row) {
    if (!row.onlyCold) Torment(row).allocations(Fault::Kind::kAllocationsFrom);
  });
}

TEST_F(Torture, EachOutwardCallThatFailsIsSurvived) {
  forEachOperation([](const auto& row) {
    if (!row.onlyCold) Torment(row).outwardCalls();
  });
}

// --- The table

// The names that the library exports, up to their parameters.
std::set<std::string> exportedNames() {
  std::set<std::string> names;
  std::ifstream file(EMF_EXPORTED_SYMBOLS);
  for (std::string line; std::getline(file, line);) {
    names.insert(line.substr(0, line.find_first_of("([")));
  }
  return names;
}

struct Exception {
  const char* reason;
  bool (*is)(const std::string& name);
};

bool startsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

bool isConstructor(const std::string& name) {
  const std::size_t colons = name.find("::");
  if (colons == std::string::npos) return false;
  const std::string type = name.substr(0, colons);
  const std::string method = name.substr(colons + 2);
  return method == type || method == "~" + type;
}

const Exception kExceptions[] = {
    {"no function",
     [](const std::string& name) {
       return startsWith(name, "typeinfo ") || startsWith(name, "vtable ") ||
              name == "ii_ormaiac_emf_interface_version";
     }},
    {"a static member",
     [](const std::string& name) { return name.find("::m_pInstance") != std::string::npos; }},
    {"made and gone with every record, reader and singleton of the table", isConstructor},
    {"private, called by the look-ups and fetches of the table",
     [](const std::string& name) {
       return name == "DeviceInfo::findById" || name == "DeviceInfo::findByName" ||
              name == "DbRowReader::nextRow";
     }},
};

TEST(TortureTable, HasEveryExportedOperation) {
  std::set<std::string> named;
  for (const Operation& operation : operations()) named.insert(operation.name);
  const std::set<std::string> exported = exportedNames();
  ASSERT_GT(exported.size(), 100U);
  for (const std::string& name : exported) {
    const auto* const exception =
        std::find_if(std::begin(kExceptions), std::end(kExceptions),
                     [&name](const Exception& row) { return row.is(name); });
    const bool isExempt = exception != std::end(kExceptions);
    EXPECT_NE(isExempt, named.count(name) > 0)
        << name << (isExempt ? ": in the table and exempt" : ": not in the table");
  }
  for (const Exception& exception : kExceptions) {
    EXPECT_TRUE(std::any_of(exported.begin(), exported.end(), exception.is)) << exception.reason;
  }
}

TEST(TortureTable, NamesEachOperationOnce) {
  std::set<std::string> named;
  for (const Operation& operation : operations()) {
    EXPECT_TRUE(named.insert(operation.name).second) << operation.name;
  }
}

// --- The torture itself

constexpr char kAnyText[] = "a text that takes memory of its own";

// An operation that appends one text, as `append` does it.
Operation appending(void (*append)(Texts& out)) {
  return {"appending",
          calling(scriptNothing, Texts{"before"}, [append](Texts& out) { append(out); }),
          {"done", {"before", kAnyText}, {}},
          Left::kStart,
          {},
          {},
          {},
          1};
}

void tormentByAllocation(void (*append)(Texts& out)) {
  const Operation operation = appending(append);
  Torment(operation).allocations(Fault::Kind::kAllocation);
}

TEST(TortureItself, FindsNothingInWhatIsRight) {
  tormentByAllocation([](Texts& out) { out.emplace_back(kAnyText); });
}

TEST(TortureItself, FindsALeak) {
  EXPECT_NONFATAL_FAILURE(tormentByAllocation([](Texts& out) {
                            auto* const leaked = new std::string;
                            try {
                              out.emplace_back(kAnyText);
                            } catch (...) {
                              static std::list<std::unique_ptr<std::string>> kept;
                              kept.emplace_back(leaked);
                              throw;
                            }
                            delete leaked;
                          }),
                          "allocations left: 2");
}

TEST(TortureItself, FindsWhatIsNotToldOrLeftOver) {
  Operation operation = appending(nullptr);
  operation.outages = {{"REST request", {"-1"}}};
  const Fault memory{Fault::Kind::kAllocation, 1, 0};
  const Fault call{Fault::Kind::kOutwardCall, 1, 0};
  const Struck lack{true, {}, 1};
  const Struck request{false, {"REST request", 1}, 1};
  const Struck lock{false, {"mutex", 1}, 1};
  const Texts whole = {"before", kAnyText};
  const Texts start = {"before"};
  const Texts wrong = {"before", "half a te"};
  struct {
    Fault fault;
    Outcome outcome;
    const char* complaint;
  } const cases[] = {
      {memory, {"done", whole, lack}, ""},
      {memory, {kNoMemory, start, lack}, ""},
      {memory, {"done", start, lack}, "gives another result than it should"},
      {memory, {kNoMemory, wrong, lack}, "leaves what it should not"},
      {memory, {kNoMemory, {}, lack}, "leaves what it should not"},
      {call, {"-1", start, request}, ""},
      {call, {"done", whole, request}, "gives another result than it should"},
      {call, {kNoMemory, start, request}, "gives another result than it should"},
      {call, {"done", whole, lock}, ""},
      {call, {"done", start, lock}, "changes the output"},
  };
  for (const auto& [fault, outcome, expected] : cases) {
    EXPECT_EQ(complaint(operation, fault, outcome), expected) << outcome.result;
  }
}

}  // namespace
}  // namespace emf::torture
