// The order of virtual operations, as g++ dumps it, against the order that others were built
// against.
#include <cxxabi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// One table: the entries behind its type information. "pure" stands for a pure virtual one.
using Table = std::vector<std::string>;
using Tables = std::vector<Table>;

std::string outputOf(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                             ::pclose);
  std::string output;
  char chunk[4096];
  while (pipe != nullptr) {
    const std::size_t size = std::fread(chunk, 1, sizeof chunk, pipe.get());
    if (size == 0) break;
    output.append(chunk, size);
  }
  return output;
}

std::string demangled(const std::string& name) {
  const std::unique_ptr<char, void (*)(void*)> text(
      abi::__cxa_demangle(name.c_str(), nullptr, nullptr, nullptr), std::free);
  return text ? text.get() : name;
}

// "8     (int (*)(...))A::f" as "A::f"; a thunk by its own name.
std::string entryText(const std::string& line) {
  constexpr char kCast[] = "(int (*)(...))";
  const std::size_t cast = line.find(kCast);
  if (cast == std::string::npos) return line.substr(line.find_last_of(' ') + 1);
  const std::string entry = line.substr(cast + sizeof kCast - 1);
  if (entry == "__cxa_pure_virtual") return "pure";
  const std::size_t thunk = entry.find("_ZT");
  return thunk == std::string::npos ? entry : demangled(entry.substr(thunk));
}

// Offsets between parts of an object; 0 is a destructor that an abstract class cannot need.
bool isOffset(const std::string& entry) {
  return entry.find_first_not_of("-0123456789") == std::string::npos && entry != "0";
}

// The tables of each class in a dump.
std::map<std::string, Tables> tablesIn(const std::string& dump) {
  constexpr char kStart[] = "Vtable for ";
  std::map<std::string, Tables> all;
  std::istringstream lines(dump);
  Tables* current = nullptr;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(kStart, 0) == 0) {
      current = &all[line.substr(sizeof kStart - 1)];
    } else if (line.empty()) {
      current = nullptr;
    } else if (current != nullptr && std::isdigit(static_cast<unsigned char>(line[0])) != 0) {
      if (line.find("(& _ZTI") != std::string::npos) {
        current->emplace_back();
      } else if (!current->empty() && !isOffset(entryText(line))) {
        current->back().push_back(entryText(line));
      }
    }
  }
  return all;
}

class VirtualTables : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    const std::string compiler = EMF_DUMP_COMPILER;
    if (compiler.empty()) return;
    tables_ =
        tablesIn(outputOf("'" + compiler +
                          "' -std=c++17 -fsyntax-only "
                          "-fdump-lang-class=stdout @'" EMF_DUMP_FLAGS "' '" EMF_DUMP_SOURCE "'"));
  }
  void SetUp() override {
    if (std::string(EMF_DUMP_COMPILER).empty()) {
      GTEST_SKIP() << "only g++ dumps its virtual tables; this build uses another compiler";
    }
  }
  static Tables tablesOf(const std::string& name) { return tables_[name]; }

  // The tables of all classes whose names begin so, without the names of the classes in them.
  static Tables operationsOf(const std::string& beginning) {
    Tables all;
    for (const auto& [name, tables] : tables_) {
      if (name.rfind(beginning, 0) != 0) continue;
      for (Table table : tables) {
        for (std::string& entry : table) entry.erase(0, entry.rfind("::") + 2);
        all.push_back(std::move(table));
      }
    }
    return all;
  }

  static inline std::map<std::string, Tables> tables_;
};

// The operations of ACE's event handler, behind the two destructors of the class.
Table withEventHandler(const std::string& destructor) {
  Table entries = {destructor, destructor};
  for (const char* operation :
       {"get_handle", "set_handle", "priority", "priority", "handle_input", "handle_output",
        "handle_exception", "handle_timeout", "handle_exit", "handle_close", "handle_signal",
        "resume_handler", "handle_qos", "handle_group_qos", "reactor", "reactor",
        "reactor_timer_interface", "add_reference", "remove_reference"}) {
    entries.push_back(std::string("ACE_Event_Handler::") + operation);
  }
  return entries;
}

Table joined(Table table, const Table& tail) {
  table.insert(table.end(), tail.begin(), tail.end());
  return table;
}

TEST_F(VirtualTables, ServiceObject) {
  const std::string own = "NS_ORMACORBA::ii_ormaiac_emf::";
  const std::string base = "NS_BUNDLEMGR1::ServiceObjectBase::";
  const Table primary =
      joined(withEventHandler(own + "~ii_ormaiac_emf"),
             {"ACE_Service_Object::suspend", "ACE_Service_Object::resume", base + "UnRegistSvc",
              base + "GetName", own + "ExitSvc", base + "GetInterface", own + "CreateInterface",
              base + "RemoveInterface", own + "fini", own + "init"});
  const Table shared = {
      "non-virtual thunk to " + own + "~ii_ormaiac_emf()",
      "non-virtual thunk to " + own + "~ii_ormaiac_emf()",
      "non-virtual thunk to " + own + "init(int, char**)",
      "non-virtual thunk to " + own + "fini()",
      "ACE_Shared_Object::info",
  };
  EXPECT_THAT(tablesOf("NS_ORMACORBA::ii_ormaiac_emf"),
              ElementsAre(ElementsAreArray(primary), ElementsAreArray(shared)));
}

TEST_F(VirtualTables, SubnetLinkTask) {
  const std::string own = "SubmapBufMgr::";
  const std::string base = "ACE_Task_Base::";
  const Table primary =
      joined(withEventHandler(own + "~SubmapBufMgr"),
             {base + "suspend", base + "resume", base + "open", base + "close",
              base + "module_closed", base + "put", own + "svc", base + "activate", base + "wait"});
  const std::string destructor = "non-virtual thunk to " + own + "~SubmapBufMgr()";
  const Table shared = {destructor, destructor, "ACE_Shared_Object::init",
                        "ACE_Shared_Object::fini", "ACE_Shared_Object::info"};
  EXPECT_THAT(tablesOf("SubmapBufMgr"),
              ElementsAre(ElementsAreArray(primary), ElementsAreArray(shared)));
}

TEST_F(VirtualTables, ErrorCodeBufIf) {
  EXPECT_THAT(tablesOf("NS_BUNDLEMGR1::ServiceInterface"),
              ElementsAre(ElementsAre("0", "0", "pure", "pure")));
  EXPECT_THAT(tablesOf("ErrorCodeBufIf"),
              ElementsAre(ElementsAre("0", "0", "pure", "pure", "pure")));
  EXPECT_THAT(tablesOf("ErrorCodeBufIfImpl"),
              ElementsAre(ElementsAre(
                  "ErrorCodeBufIfImpl::~ErrorCodeBufIfImpl",
                  "ErrorCodeBufIfImpl::~ErrorCodeBufIfImpl", "ErrorCodeBufIfImpl::GetIFName",
                  "ErrorCodeBufIfImpl::IsValid", "ErrorCodeBufIfImpl::GetErrorInfo")));
}

TEST_F(VirtualTables, NULLServiceInterface) {
  const std::string own = "NS_BUNDLEMGR1::NULLServiceInterface::";
  const std::string destructor = own + "~NULLServiceInterface";
  EXPECT_THAT(tablesOf("NS_BUNDLEMGR1::NULLServiceInterface"),
              ElementsAre(ElementsAre(destructor, destructor, own + "GetIFName", own + "IsValid"),
                          ElementsAre("virtual thunk to " + destructor + "()",
                                      "virtual thunk to " + destructor + "()")));
}

TEST_F(VirtualTables, LogProxy) {
  const Tables abstract = tablesOf("NS_BUNDLEMGR1::LogProxy");
  ASSERT_EQ(abstract.size(), 1U);
  EXPECT_EQ(abstract[0].size(), 17U);
  const std::string own = "NS_BUNDLEMGR1::DefaultLogProxy::";
  const Table operations = {
      own + "~DefaultLogProxy",
      own + "~DefaultLogProxy",
      own + "Reserved1",
      own + "Reserved2",
      own + "Print",
      own + "PrintFormat",
      own + "Reserved3",
      own + "Reserved4",
      own + "Reserved5",
      own + "Reserved6",
      own + "Reserved7",
      own + "Reserved8",
      own + "Reserved9",
      own + "SetSource",
      own + "SetBundle",
      own + "SetModule",
      own + "GetProxyName",
  };
  EXPECT_THAT(tablesOf("NS_BUNDLEMGR1::DefaultLogProxy"),
              ElementsAre(ElementsAreArray(operations)));
}

TEST_F(VirtualTables, MessagesAndTheirListsDifferInTheEighthPlaceAlone) {
  EXPECT_THAT(
      operationsOf("emf::AsnMessage<"),
      AllOf(SizeIs(9), Each(Table{"~AsnMessage", "~AsnMessage", "clone", "BDec", "BEnc", "Print",
                                  "typeName", "reflect", "BEncContent", "BDecContent"})));
  EXPECT_THAT(
      operationsOf("AsnNamedSeqOf<"),
      AllOf(SizeIs(11), Each(Table{"~AsnNamedSeqOf", "~AsnNamedSeqOf", "clone", "BDec", "BEnc",
                                   "Print", "typeName", "assign", "BEncContent", "BDecContent"})));
}

TEST_F(VirtualTables, AccessProductIsInitialisedByItsThirdPlace) {
  const std::string own = "PRDU_ORMA::PrduResInfoConvert::";
  const std::string destructor = own + "~PrduResInfoConvert";
  EXPECT_THAT(tablesOf("PRDU_ORMA::PrduResInfoConvert"),
              ElementsAre(ElementsAre(destructor, destructor, own + "Init")));
}

TEST_F(VirtualTables, ResourceRecordsHaveNone) {
  for (const std::string record :
       {"ResTypeID", "ResourceDn", "Resource", "ResourceEightLoc", "LocationInfo_",
        "MaintenanceInfo", "ResourceAttribute", "NbiResMainType"}) {
    EXPECT_THAT(tablesOf(record), IsEmpty()) << record;
  }
}

TEST_F(VirtualTables, RecordsHaveTheirDestructorAlone) {
  for (const std::string record : {"Device", "Node", "SubMap", "DispLink", "UpdateDevice",
                                   "SimNode", "FaultRecord", "AlarmCfg", "AlarmReason"}) {
    const std::string destructor = record + "::~" + record;
    EXPECT_THAT(tablesOf(record), ElementsAre(ElementsAre(destructor, destructor)));
  }
}

TEST_F(VirtualTables, PhysicalLinkHasNone) { EXPECT_THAT(tablesOf("PhysicalLink"), IsEmpty()); }

}  // namespace
