#include "orma/bundle/configuration.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <initializer_list>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "configuration_content.h"
#include "configuration_keys.h"
#include "strict_json.h"

namespace orma {

namespace {

constexpr std::size_t kMaxFileBytes = 1048576;

// Members of the root value.
constexpr char kValues[] = "values";
constexpr char kItems[] = "items";

std::string systemText(int error) { return std::generic_category().message(error); }

class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

// What keeps the file from being read, or nothing; `text` then holds it. Read without asking for
// its size, so that pipes work and an endless device ends at the limit.
std::string readWhole(const std::string& file, std::string& text) {
  const FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (descriptor.get() < 0) return "cannot be opened: " + systemText(errno);
  struct stat status {};
  if (::fstat(descriptor.get(), &status) == 0 && S_ISDIR(status.st_mode)) {
    return "is a directory; a configuration is one JSON file";
  }
  char block[16384];
  for (;;) {
    const ssize_t count = ::read(descriptor.get(), block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return "cannot be read: " + systemText(errno);
    if (count == 0) return "";
    text.append(block, static_cast<std::size_t>(count));
    if (text.size() > kMaxFileBytes) {
      return "is larger than " + std::to_string(kMaxFileBytes) + " bytes";
    }
  }
}

std::string absoluteDirectory(const std::string& directory) {
  std::error_code failure;
  const auto base = std::filesystem::current_path(failure);
  return (base / directory).string();
}

const Json::Value& valueOf(const Json::Value& root, const char* path,
                           std::initializer_list<ConfigType> types, const char* asked) {
  const ConfigKey* key = findConfigKey(path);
  if (key == nullptr) {
    throw std::logic_error(std::string("there is no configuration key ") + path);
  }
  for (const ConfigType type : types) {
    if (key->type == type) return root[kValues][path];
  }
  throw std::logic_error(std::string("the configuration key ") + path + " is no " + asked);
}

// Never destroyed: settings are read by static destructors and late threads too.
std::shared_ptr<const Configuration>& installed() {
  static auto* configuration = new std::shared_ptr<const Configuration>;
  return *configuration;
}

}  // namespace

Configuration::Configuration() : root_(Json::objectValue), directory_(absoluteDirectory("")) {
  ConfigurationContent content = defaultContent();
  root_[kValues] = std::move(content.values);
  root_[kItems] = std::move(content.items);
}

std::shared_ptr<const Configuration> Configuration::load(const std::string& file,
                                                         std::vector<ConfigProblem>& problems) {
  std::string text;
  std::string fault = file.empty() ? "no configuration file is named" : readWhole(file, text);
  if (!fault.empty()) {
    problems.push_back({file.empty() ? "configuration" : file, std::move(fault)});
    return nullptr;
  }
  return parse(text, file, std::filesystem::path(file).parent_path().string(), problems);
}

std::shared_ptr<const Configuration> Configuration::parse(const std::string& text,
                                                          const std::string& name,
                                                          const std::string& directory,
                                                          std::vector<ConfigProblem>& problems) {
  const std::size_t before = problems.size();
  Json::Value document;
  if (!parseStrictJson(text, name, document, problems)) return nullptr;
  ConfigurationContent content = readContent(document, name, problems);
  if (problems.size() > before) return nullptr;
  std::shared_ptr<Configuration> configuration(new Configuration);
  configuration->root_[kValues] = std::move(content.values);
  configuration->root_[kItems] = std::move(content.items);
  configuration->directory_ = absoluteDirectory(directory);
  configuration->services_ = std::move(content.services);
  return configuration;
}

void Configuration::install(std::shared_ptr<const Configuration> configuration) {
  std::atomic_store(&installed(), std::move(configuration));
}

std::shared_ptr<const Configuration> Configuration::current() {
  if (auto configuration = std::atomic_load(&installed())) return configuration;
  static const auto* defaults = new std::shared_ptr<const Configuration>(new Configuration);
  return *defaults;
}

std::string Configuration::text(const char* path) const {
  return valueOf(root_, path, {ConfigType::Text, ConfigType::Choice}, "text").asString();
}

std::string Configuration::path(const char* path) const {
  return absolutePath(valueOf(root_, path, {ConfigType::Path}, "path").asString());
}

std::string Configuration::absolutePath(const std::string& path) const {
  if (path.empty() || path.front() == '/') return path;
  return (std::filesystem::path(directory_) / path).string();
}

std::int64_t Configuration::integer(const char* path) const {
  return valueOf(root_, path, {ConfigType::Integer}, "integer").asInt64();
}

bool Configuration::boolean(const char* path) const {
  return valueOf(root_, path, {ConfigType::Boolean}, "boolean").asBool();
}

const Json::Value& Configuration::items() const { return root_[kItems]; }

const std::vector<ConfiguredService>& Configuration::services() const { return services_; }

}  // namespace orma
