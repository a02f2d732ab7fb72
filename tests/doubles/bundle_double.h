// The bundle manager and the agent's configuration: bundles with services, the factory of log
// proxies, configuration items, installation paths.
//
//   platform().bundles.add("ii_log_bundle", "ii_log_service", &service);
//   platform().config.item("IsReportSubnet", -1);
//
// Thread-safety: thread-safe.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "orma/bundle/bundle_mgr.h"

namespace emf::doubles {

using Services = std::map<std::string, NS_BUNDLEMGR1::ServiceObjectBase*>;

class BundleDouble {
 public:
  // A bundle, made if need be, with one more service (null: an entry without one).
  void add(const std::string& bundle, const std::string& service,
           NS_BUNDLEMGR1::ServiceObjectBase* object);
  // A bundle without services.
  void add(const std::string& bundle);
  // What the listing and finding operations were asked, as "GetBundles", "FindBundle b" and
  // "GetServices b".
  std::vector<std::string> questions() const;
  // Runs at each question, with the question, before it is answered; without a lock of this double.
  void onQuestion(std::function<void(const std::string&)> hook);
  void reset();

  void list(std::list<NS_BUNDLEMGR1::Bundle*>& bundles);
  NS_BUNDLEMGR1::Bundle* find(const std::string& name);
  Services servicesOf(const std::string& bundle);

 private:
  NS_BUNDLEMGR1::Bundle* findLocked(const std::string& name) const;
  void noteQuestion(const std::string& question);

  mutable std::mutex mutex_;
  std::list<std::unique_ptr<NS_BUNDLEMGR1::Bundle>> bundles_;
  std::map<std::string, Services> services_;
  std::vector<std::string> questions_;
  std::function<void(const std::string&)> onQuestion_;
};

struct ProxyLine {
  std::string key;
  std::string bundle;
  std::string module;
  std::string file;
  int line = 0;
  int level = 0;
  std::string text;
};
std::ostream& operator<<(std::ostream& out, const ProxyLine& line);

// The factory of log proxies. Proxies live until the process ends, as callers keep them.
class ProxyDouble : public NS_BUNDLEMGR1::LogProxyFactory {
 public:
  // Whether the bundle manager has the factory; it has none after a reset.
  void present();
  void absent();
  // Present, but its creating operation gives null.
  void givesNull();
  std::vector<ProxyLine> lines() const;
  // Every call of a proxy and of the factory, as text, in order.
  std::vector<std::string> calls() const;
  void reset();

  NS_BUNDLEMGR1::LogProxyFactory* factory();
  NS_BUNDLEMGR1::LogProxy* CreateLogProxy(const char* key) override;
  void recordCall(std::string call);
  void recordLine(ProxyLine line);

 private:
  mutable std::mutex mutex_;
  bool present_ = false;
  bool givesNull_ = false;
  std::vector<ProxyLine> lines_;
  std::vector<std::string> calls_;
};

class ConfigDouble {
 public:
  void item(const std::string& name, int value);
  void environment(const std::string& directory);
  void rootPath(const std::string& directory);
  // The names asked for, in order.
  std::vector<std::string> itemQuestions() const;
  void reset();

  bool readItem(const std::string& name, int& value);
  std::string environment() const;
  std::string rootPath() const;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, int> items_;
  std::string environment_;
  std::string rootPath_;
  std::vector<std::string> questions_;
};

}  // namespace emf::doubles
