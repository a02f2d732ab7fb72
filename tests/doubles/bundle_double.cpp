#include "bundle_double.h"

#include <utility>

#include "orma/bundle/config_items.h"
#include "outage.h"
#include "platform.h"
#include "printf_text.h"

namespace emf::doubles {

NS_BUNDLEMGR1::Bundle* BundleDouble::findLocked(const std::string& name) const {
  for (const auto& bundle : bundles_) {
    if (bundle->GetName() == name) return bundle.get();
  }
  return nullptr;
}

void BundleDouble::add(const std::string& bundle, const std::string& service,
                       NS_BUNDLEMGR1::ServiceObjectBase* object) {
  add(bundle);
  std::lock_guard lock(mutex_);
  services_[bundle][service] = object;
}

void BundleDouble::add(const std::string& bundle) {
  std::lock_guard lock(mutex_);
  if (findLocked(bundle) == nullptr) {
    bundles_.push_back(std::make_unique<NS_BUNDLEMGR1::Bundle>(bundle));
  }
}

std::vector<std::string> BundleDouble::questions() const {
  std::lock_guard lock(mutex_);
  return questions_;
}

void BundleDouble::reset() {
  std::lock_guard lock(mutex_);
  bundles_.clear();
  services_.clear();
  questions_.clear();
  onQuestion_ = nullptr;
}

void BundleDouble::onQuestion(std::function<void(const std::string&)> hook) {
  std::lock_guard lock(mutex_);
  onQuestion_ = std::move(hook);
}

void BundleDouble::noteQuestion(const std::string& question) {
  std::function<void(const std::string&)> hook;
  {
    std::lock_guard lock(mutex_);
    questions_.push_back(question);
    hook = onQuestion_;
  }
  if (hook) hook(question);
}

void BundleDouble::list(std::list<NS_BUNDLEMGR1::Bundle*>& bundles) {
  noteQuestion("GetBundles");
  std::lock_guard lock(mutex_);
  bundles.clear();
  for (const auto& bundle : bundles_) bundles.push_back(bundle.get());
}

NS_BUNDLEMGR1::Bundle* BundleDouble::find(const std::string& name) {
  noteQuestion("FindBundle " + name);
  std::lock_guard lock(mutex_);
  return findLocked(name);
}

Services BundleDouble::servicesOf(const std::string& bundle) {
  noteQuestion("GetServices " + bundle);
  std::lock_guard lock(mutex_);
  return services_[bundle];
}

namespace {

// Keeps what SetBundle, SetModule and SetSource told it and records each Print with it.
class RecordingProxy : public NS_BUNDLEMGR1::DefaultLogProxy {
 public:
  explicit RecordingProxy(const char* key) { state_.key = key; }

  void SetSource(const char* file, int line) override {
    platform().proxies.recordCall(std::string("SetSource ") + file);
    std::lock_guard lock(mutex_);
    state_.file = file;
    state_.line = line;
  }
  void SetBundle(const char* bundleName) override {
    platform().proxies.recordCall(std::string("SetBundle ") + bundleName);
    std::lock_guard lock(mutex_);
    state_.bundle = bundleName;
  }
  void SetModule(const char* moduleName) override {
    platform().proxies.recordCall(std::string("SetModule ") + moduleName);
    std::lock_guard lock(mutex_);
    state_.module = moduleName;
  }
  void Print(int level, const char* text) override {
    platform().proxies.recordCall(std::string("Print ") + text);
    std::lock_guard lock(mutex_);
    state_.level = level;
    state_.text = text;
    platform().proxies.recordLine(state_);
  }
  void PrintFormat(const char* format, ...) override __attribute__((format(printf, 2, 3))) {
    va_list arguments;
    va_start(arguments, format);
    platform().proxies.recordCall("PrintFormat " + printfText(format, arguments));
    va_end(arguments);
  }
  std::string GetProxyName() override { return "RecordingProxy"; }

 private:
  std::mutex mutex_;
  ProxyLine state_;
};

}  // namespace

std::ostream& operator<<(std::ostream& out, const ProxyLine& line) {
  return out << line.key << ' ' << line.bundle << '/' << line.module << " (" << line.level << ") "
             << line.file << ':' << line.line << " \"" << line.text << '"';
}

void ProxyDouble::present() {
  std::lock_guard lock(mutex_);
  present_ = true;
  givesNull_ = false;
}

void ProxyDouble::absent() {
  std::lock_guard lock(mutex_);
  present_ = false;
}

void ProxyDouble::givesNull() {
  std::lock_guard lock(mutex_);
  present_ = true;
  givesNull_ = true;
}

std::vector<ProxyLine> ProxyDouble::lines() const {
  std::lock_guard lock(mutex_);
  return lines_;
}

std::vector<std::string> ProxyDouble::calls() const {
  std::lock_guard lock(mutex_);
  return calls_;
}

void ProxyDouble::reset() {
  absent();
  std::lock_guard lock(mutex_);
  lines_.clear();
  calls_.clear();
}

NS_BUNDLEMGR1::LogProxyFactory* ProxyDouble::factory() {
  std::lock_guard lock(mutex_);
  return present_ ? this : nullptr;
}

NS_BUNDLEMGR1::LogProxy* ProxyDouble::CreateLogProxy(const char* key) {
  static auto& proxies = *new std::map<std::string, std::unique_ptr<RecordingProxy>>;
  recordCall(std::string("CreateLogProxy ") + key);
  std::lock_guard lock(mutex_);
  if (givesNull_) return nullptr;
  auto& proxy = proxies[key];
  if (!proxy) proxy = std::make_unique<RecordingProxy>(key);
  return proxy.get();
}

void ProxyDouble::recordCall(std::string call) {
  platform().journal.note("proxy: " + call);
  std::lock_guard lock(mutex_);
  calls_.push_back(std::move(call));
}

void ProxyDouble::recordLine(ProxyLine line) {
  std::lock_guard lock(mutex_);
  lines_.push_back(std::move(line));
}

void ConfigDouble::item(const std::string& name, int value) {
  std::lock_guard lock(mutex_);
  items_[name] = value;
}

void ConfigDouble::environment(const std::string& directory) {
  std::lock_guard lock(mutex_);
  environment_ = directory;
}

void ConfigDouble::rootPath(const std::string& directory) {
  std::lock_guard lock(mutex_);
  rootPath_ = directory;
}

std::vector<std::string> ConfigDouble::itemQuestions() const {
  std::lock_guard lock(mutex_);
  return questions_;
}

void ConfigDouble::reset() {
  std::lock_guard lock(mutex_);
  items_.clear();
  environment_.clear();
  rootPath_.clear();
  questions_.clear();
}

bool ConfigDouble::readItem(const std::string& name, int& value) {
  platform().journal.note("config: " + name);
  std::lock_guard lock(mutex_);
  questions_.push_back(name);
  if (outage("configuration item", 1) == 0) return false;
  const auto item = items_.find(name);
  if (item == items_.end()) return false;
  value = item->second;
  return true;
}

std::string ConfigDouble::environment() const {
  if (outage("environment", 1) == 0) return std::string();
  std::lock_guard lock(mutex_);
  return environment_;
}

std::string ConfigDouble::rootPath() const {
  if (outage("root path", 1) == 0) return std::string();
  std::lock_guard lock(mutex_);
  return rootPath_;
}

}  // namespace emf::doubles

namespace NS_BUNDLEMGR1 {

using emf::doubles::platform;

struct Bundle::State {
  std::string name;
};

Bundle::Bundle(std::string name) : state_(new State{std::move(name)}) {}
Bundle::~Bundle() = default;
const std::string& Bundle::GetName() const { return state_->name; }
void Bundle::GetServices(std::map<std::string, ServiceObjectBase*>& services) const {
  services = platform().bundles.servicesOf(state_->name);
}

struct BundleMgr::State {};

BundleMgr::BundleMgr() = default;
BundleMgr::~BundleMgr() = default;
BundleMgr* BundleMgr::Instance() {
  static auto* manager = new BundleMgr;
  return manager;
}
void BundleMgr::GetBundles(std::list<Bundle*>& bundles) { platform().bundles.list(bundles); }
Bundle* BundleMgr::FindBundle(const std::string& name) { return platform().bundles.find(name); }
LogProxyFactory* BundleMgr::GetLogProxyFactory() { return platform().proxies.factory(); }

CorbaConfigItems* CorbaConfigItems::Instance() {
  static auto* items = new CorbaConfigItems;
  return items;
}
bool CorbaConfigItems::GetIntItemInfo(const std::string& name, int& value) {
  return platform().config.readItem(name, value);
}

std::string GetORMAEnvironment() {
  platform().journal.note("environment");
  return platform().config.environment();
}
std::string GetORMARootPath() { return platform().config.rootPath(); }

}  // namespace NS_BUNDLEMGR1
