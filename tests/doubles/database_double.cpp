#include "database_double.h"

#include <new>
#include <utility>

#include "outage.h"
#include "platform.h"

namespace emf::doubles {

void DatabaseDouble::properties(std::list<stDevProperty> records, int result) {
  std::lock_guard lock(mutex_);
  properties_ = std::move(records);
  propertiesResult_ = result;
}

void DatabaseDouble::versionName(const std::string& version, int result) {
  std::lock_guard lock(mutex_);
  versionName_ = version;
  versionNameResult_ = result;
}

void DatabaseDouble::location(std::list<std::string> parts, int result) {
  std::lock_guard lock(mutex_);
  location_ = std::move(parts);
  locationResult_ = result;
}

void DatabaseDouble::nodes(std::list<NodeStruct> records, int result) {
  std::lock_guard lock(mutex_);
  nodes_ = std::move(records);
  nodesResult_ = result;
}

void DatabaseDouble::resources(std::map<int, _SResProperty> records, int result) {
  std::lock_guard lock(mutex_);
  resources_ = std::move(records);
  resourcesResult_ = result;
}

void DatabaseDouble::fails() {
  std::lock_guard lock(mutex_);
  fails_ = true;
}

std::vector<std::string> DatabaseDouble::calls() const {
  std::lock_guard lock(mutex_);
  return calls_;
}

bool DatabaseDouble::engineExists() const {
  std::lock_guard lock(mutex_);
  return exists_;
}

void DatabaseDouble::reset() {
  std::lock_guard lock(mutex_);
  fails_ = false;
  exists_ = false;
  properties_.clear();
  versionName_.clear();
  location_.clear();
  nodes_.clear();
  resources_.clear();
  propertiesResult_ = versionNameResult_ = locationResult_ = nodesResult_ = resourcesResult_ = 0;
  calls_.clear();
}

void DatabaseDouble::record(std::string call) {
  platform().journal.note("database: " + call);
  calls_.push_back(std::move(call));
}

// Fails with -1, and leaves the output as it is, or for want of memory.
bool DatabaseDouble::readFails() {
  const int way = outage("database read", 2);
  if (way == 1) throw std::bad_alloc();
  return way == 0;
}

void DatabaseDouble::noteInstance(const std::string& module) {
  std::lock_guard lock(mutex_);
  exists_ = true;
  record("Instance " + module);
}

void DatabaseDouble::noteDestroy() {
  std::lock_guard lock(mutex_);
  exists_ = false;
  record("Destroy");
}

int DatabaseDouble::readProperties(const std::list<unsigned int>& ids,
                                   std::list<stDevProperty>& out) {
  std::lock_guard lock(mutex_);
  std::string call = "GetDevProperty";
  for (const unsigned int id : ids) call += " " + std::to_string(id);
  record(std::move(call));
  if (readFails()) return -1;
  out.insert(out.end(), properties_.begin(), properties_.end());
  return fails_ ? -1 : propertiesResult_;
}

int DatabaseDouble::readVersionName(unsigned int id, std::string& out) {
  std::lock_guard lock(mutex_);
  record("GetDevVersionName " + std::to_string(id));
  if (readFails()) return -1;
  out = versionName_;
  return fails_ ? -1 : versionNameResult_;
}

int DatabaseDouble::readLocation(unsigned int id, std::list<std::string>& out) {
  std::lock_guard lock(mutex_);
  record("GetDevLocationByDevID " + std::to_string(id));
  if (readFails()) return -1;
  out.insert(out.end(), location_.begin(), location_.end());
  return fails_ ? -1 : locationResult_;
}

int DatabaseDouble::readResources(const std::list<int>& iids, const std::list<int>& attributes,
                                  std::map<int, _SResProperty>& out, int flag) {
  std::lock_guard lock(mutex_);
  std::string call = "GetResByIID";
  for (const int iid : iids) call += " " + std::to_string(iid);
  call += " /";
  for (const int attribute : attributes) call += " " + std::to_string(attribute);
  record(call + " / " + std::to_string(flag));
  if (readFails()) return -1;
  out.insert(resources_.begin(), resources_.end());
  return fails_ ? -1 : resourcesResult_;
}

int DatabaseDouble::readNodes(_ETopoQueryMode mode, const std::string& key,
                              std::list<NodeStruct>& out) {
  std::lock_guard lock(mutex_);
  record("GetBaseNode " + std::to_string(mode) + " " + key);
  if (readFails()) return -1;
  out.insert(out.end(), nodes_.begin(), nodes_.end());
  return fails_ ? -1 : nodesResult_;
}

}  // namespace emf::doubles

using emf::doubles::platform;

CEmfCommDBEngine::CEmfCommDBEngine() = default;
CEmfCommDBEngine::~CEmfCommDBEngine() = default;

std::string CEmfCommDBEngine::GetModuleName() { return "database-double"; }

CEmfCommDBEngine* CEmfCommDBEngine::Instance(const std::string& moduleName) {
  static auto* engine = new CEmfCommDBEngine;
  platform().database.noteInstance(moduleName);
  return engine;
}

void CEmfCommDBEngine::Destroy() { platform().database.noteDestroy(); }

int CEmfCommDBEngine::GetDevProperty(const std::list<unsigned int>& ids,
                                     std::list<stDevProperty>& out) {
  return platform().database.readProperties(ids, out);
}

int CEmfCommDBEngine::GetDevVersionName(unsigned int id, std::string& out) {
  return platform().database.readVersionName(id, out);
}

int CEmfCommDBEngine::GetDevLocationByDevID(unsigned int id, std::list<std::string>& out) {
  return platform().database.readLocation(id, out);
}

int CEmfCommDBEngine::GetResByIID(const std::list<int>& iids, const std::list<int>& attributes,
                                  std::map<int, _SResProperty>& out, int flag) {
  return platform().database.readResources(iids, attributes, out, flag);
}

int CEmfCommDBEngine::GetBaseNode(_ETopoQueryMode mode, const std::string& key,
                                  std::list<NodeStruct>& out) {
  return platform().database.readNodes(mode, key, out);
}
