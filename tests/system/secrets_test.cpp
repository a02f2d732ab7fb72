// Secrets come from files that others cannot read or from the environment, and are seen nowhere:
// in no answer, message or log of a command that fails, and in no core dump.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "silent_server.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace fs = std::filesystem;

constexpr char kSecret[] = "Sesame-4711";

void close(const fs::path& file) { ASSERT_EQ(::chmod(file.c_str(), 0600), 0); }

class Secrets : public World {
 protected:
  Secrets() { serve(); }

  fs::path secretFile(const std::string& content) {
    const fs::path file = directory_.write("secret", content);
    close(file);
    return file;
  }

  ProcessSetup setup() const {
    ProcessSetup setup;
    setup.environment = {"ORMAAGENT_CONFIG=" + configuration_.string(),
                         std::string("AGENT_TOKEN=") + kSecret};
    return setup;
  }
};

// A way to give the agent the secret, after which commands fail.
struct SecretPlace {
  const char* name;
  std::function<void(Json::Value&, const fs::path& secretFile)> configure;
};

void PrintTo(const SecretPlace& place, std::ostream* out) { *out << place.name; }

class SecretIn : public Secrets, public testing::WithParamInterface<SecretPlace> {};

const SecretPlace kPlaces[] = {
    {"TokenFile", [](Json::Value& document,
                     const fs::path& file) { document["rest"]["token"]["file"] = file.string(); }},
    {"TokenOfTheEnvironment",
     [](Json::Value& document, const fs::path&) {
       document["rest"]["token"]["environment"] = "AGENT_TOKEN";
     }},
    {"AddressOfTheRestService",
     [](Json::Value& document, const fs::path&) {
       document["rest"]["baseUrl"] = std::string("http://agent:") + kSecret + "@127.0.0.1:1/x";
     }},
    {"ConnectionOfTheDatabase",
     [](Json::Value& document, const fs::path&) {
       document["database"]["connection"] =
           std::string("postgresql:host=127.0.0.1 port=1 user=agent password=") + kSecret;
     }},
    {"AddressOfTheDatabase",
     [](Json::Value& document, const fs::path&) {
       document["database"]["connection"] =
           std::string("postgresql://agent:") + kSecret + "@127.0.0.1:1/net";
     }},
    {"ConnectionThatCannotBeRead",
     [](Json::Value& document, const fs::path&) {
       document["database"]["connection"] = std::string("postgresql:password='") + kSecret;
     }},
    {"DatabaseOfAnUnknownKind",
     [](Json::Value& document, const fs::path&) {
       document["database"]["connection"] = std::string("oracle:agent/") + kSecret;
     }},
    {"PasswordFile",
     [](Json::Value& document, const fs::path& file) {
       document["database"]["connection"] = "postgresql:host=127.0.0.1 port=1 user=agent";
       document["database"]["passwordFile"] = file.string();
     }},
    {"ValueOfAWrongKey",
     [](Json::Value& document, const fs::path&) { document["rest"]["tokken"] = kSecret; }},
    {"ValueOfAWrongType",
     [](Json::Value& document, const fs::path&) { document["rest"]["totalTimeoutMs"] = kSecret; }},
    {"ChoiceThatIsNone",
     [](Json::Value& document, const fs::path&) { document["onInitFailure"] = kSecret; }},
};

INSTANTIATE_TEST_SUITE_P(Places, SecretIn, testing::ValuesIn(kPlaces),
                         [](const auto& row) { return row.param.name; });

TEST_P(SecretIn, IsSeenNowhereWhenCommandsFail) {
  const fs::path secret = secretFile(std::string("*:*:*:*:") + kSecret + "\n");
  configure([&](Json::Value& document) {
    document["log"]["file"] = file("agent.log").string();
    GetParam().configure(document, secret);
  });
  close(configuration_);
  killSimulator();
  const std::vector<std::vector<std::string>> kCommands = {
      {"topo", "devices"},  {"topo", "device", "12"}, {"topo", "links"},
      {"topo", "tree"},     {"cache", "name", "x"},   {"res", "fdn", "12"},
      {"alarm", "current"}, {"alarm", "reasons"},     {"db", "query", "SELECT 1"},
      {"config", "check"}};
  for (std::vector<std::string> words : kCommands) {
    words.insert(words.begin(), {"--log-level", "9", "--timeout", "30"});
    const Outcome outcome = agent(words, setup());
    EXPECT_THAT(outcome.out, Not(HasSubstr(kSecret))) << words[4];
    EXPECT_THAT(outcome.err, Not(HasSubstr(kSecret))) << words[4];
  }
  std::ostringstream log;
  log << std::ifstream(file("agent.log")).rdbuf();
  EXPECT_THAT(log.str(), Not(HasSubstr(kSecret)));
}

TEST_F(Secrets, ThatEveryUserCanReadAreRefusedAndEveryOneIsTold) {
  const fs::path secret = secretFile(kSecret);
  configure([&](Json::Value& document) {
    document["rest"]["token"]["file"] = secret.string();
    document["database"]["connection"] = std::string("postgresql:host=db password=") + kSecret;
  });
  ASSERT_EQ(::chmod(secret.c_str(), 0644), 0);
  ASSERT_EQ(::chmod(configuration_.c_str(), 0644), 0);
  const auto bothFound = AllOf(
      HasSubstr("rest.token.file"), HasSubstr(" is open to every user (mode 0644) and holds a "),
      HasSubstr("database.connection"), HasSubstr("or move the password to database.passwordFile"),
      Not(HasSubstr(kSecret)));
  const Outcome query = agent({"topo", "devices"});
  EXPECT_EQ(query.status, 2);
  EXPECT_THAT(query.err, bothFound);
  EXPECT_EQ(agent({"serve"}).status, 2);
  const Outcome check = agent({"config", "check"});
  EXPECT_EQ(check.status, 2);
  EXPECT_THAT(check.out, bothFound);
}

// Where the system writes core dumps into the directory of the program.
bool coresAreFiles() {
  std::string pattern;
  std::getline(std::ifstream("/proc/sys/kernel/core_pattern"), pattern);
  return !pattern.empty() && pattern.find_first_of("|/") == std::string::npos;
}

fs::path coreIn(const fs::path& directory) {
  for (const auto& entry : fs::directory_iterator(directory)) {
    if (entry.path().filename().string().rfind("core", 0) == 0) return entry.path();
  }
  return {};
}

class MappedFile {
 public:
  explicit MappedFile(const fs::path& file) : size_(fs::file_size(file)) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    memory_ = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, descriptor, 0);
    ::close(descriptor);
    EXPECT_NE(memory_, MAP_FAILED);
  }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;
  ~MappedFile() { ::munmap(memory_, size_); }

  bool holds(const std::string& text) const {
    return ::memmem(memory_, size_, text.data(), text.size()) != nullptr;
  }

 private:
  const std::size_t size_;
  void* memory_;
};

TEST_F(Secrets, ATokenIsInNoCoreDump) {
  if (!coresAreFiles()) GTEST_SKIP() << "core dumps go elsewhere here";
  SilentServer server;
  const fs::path secret = secretFile(kSecret);
  configure([&](Json::Value& document) {
    document["rest"]["baseUrl"] = server.url();
    document["rest"]["token"]["file"] = secret.string();
  });
  ProcessSetup inDirectory = setup();
  inDirectory.directory = directory_.path().string();
  inDirectory.environment.pop_back();  // the token is in the file alone
  const auto agent = startAgent({"topo", "devices"}, inDirectory);
  ASSERT_THAT(server.readRequest(), HasSubstr(std::string("X-Auth-Token: ") + kSecret));
  // The request is out; from here on the client waits for the answer.
  agent->awaitSystemCall({SYS_poll, SYS_ppoll});
  const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
  ASSERT_EQ(::prlimit(agent->id(), RLIMIT_CORE, &unlimited, nullptr), 0);
  agent->send(SIGABRT);
  EXPECT_EQ(agent->finish().signal, SIGABRT);
  const fs::path core = coreIn(directory_.path());
  ASSERT_FALSE(core.empty());
  const MappedFile memory(core);
  EXPECT_TRUE(memory.holds(server.url())) << "the dump should hold what is no secret";
  EXPECT_FALSE(memory.holds(kSecret));
}

}  // namespace
}  // namespace systemtest
