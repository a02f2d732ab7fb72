#include "fault_world.h"

#include <ace/Service_Object.h>
#include <json/writer.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "orma/bundle/configuration.h"
#include "orma/bundle/interface_slot.h"
#include "orma/bundle/service_object_base.h"
#include "orma/log/log_sink.h"

extern "C" ACE_Service_Object* _make_orma_log_service(void (**deleter)(void*));

namespace emf::faults {
namespace {

std::shared_ptr<const orma::Configuration> parsed(const Json::Value& root,
                                                  const std::string& directory) {
  std::vector<orma::ConfigProblem> problems;
  auto configuration = orma::Configuration::parse(
      Json::writeString(Json::StreamWriterBuilder(), root), "test.json", directory, problems);
  for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  return configuration;
}

std::size_t entriesOf(const char* directory) {
  const std::filesystem::directory_iterator entries(directory);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

NS_LOG_SERVICE1::LogSvcInterface& logService() {
  static auto* const service = [] {
    void (*deleter)(void*) = nullptr;
    auto* object =
        dynamic_cast<NS_BUNDLEMGR1::ServiceObjectBase*>(_make_orma_log_service(&deleter));
    auto* const log = dynamic_cast<NS_LOG_SERVICE1::LogSvcInterface*>(object->GetInterface());
    deleter(object);  // the interface stays
    return log;
  }();
  return *service;
}

Holdings Holdings::now() { return {entriesOf("/proc/self/fd"), entriesOf("/proc/self/task")}; }

void PrintTo(const Holdings& holdings, std::ostream* out) {
  *out << holdings.descriptors << " descriptors, " << holdings.threads << " threads";
}

FaultWorld::FaultWorld(LogService service) {
  Json::Value root;
  root["log"]["stderr"] = false;
  root["log"]["file"] = file("agent.log");
  root["log"]["level"] = 3;
  orma::configureLog(*parsed(root, directory_.path().string()));
  auto* slot = NS_BUNDLEMGR1::CheckIFBuf("LogSvcInterface");
  if (service == LogService::Running && slot->empty()) slot->push_back(&logService());
}

FaultWorld::~FaultWorld() {
  Json::Value silent;
  silent["log"]["stderr"] = false;
  orma::configureLog(*parsed(silent, "/"));
  orma::Configuration::install(nullptr);
}

void FaultWorld::configure(const Json::Value& root) const {
  orma::Configuration::install(parsed(root, directory_.path().string()));
}

std::string FaultWorld::logged() {
  orma::flushLog();
  std::ifstream log(file("agent.log"), std::ios::binary);
  log.seekg(static_cast<std::streamoff>(logRead_));
  std::string lines(std::istreambuf_iterator<char>(log), {});
  logRead_ += lines.size();
  return lines;
}

// A thread that was joined may still be on its way out of the system's list.
void FaultWorld::expectHoldings(const Holdings& holdings) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!(Holdings::now() == holdings) && std::chrono::steady_clock::now() < end) {
    std::this_thread::yield();
  }
  EXPECT_EQ(Holdings::now(), holdings);
}

}  // namespace emf::faults
