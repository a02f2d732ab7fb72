// Log proxies: the start-up diagnostics of services, before a log service is there.
//
// A message is two calls: SetSource with file and line, then Print with level and text.
//
// The order of the virtual operations is part of the binary interface. Slots named Reserved belong
// to the table but have no caller here.
//
// Thread-safety: thread-safe; the source is kept per thread by the implementations here.
#pragma once

#include <string>

#include "orma/bundle/export.h"

namespace NS_BUNDLEMGR1 {

class ORMA_API LogProxy {
 public:
  LogProxy() = default;
  LogProxy(const LogProxy&) = delete;
  LogProxy& operator=(const LogProxy&) = delete;
  virtual ~LogProxy();
  virtual void Reserved1() = 0;
  virtual void Reserved2() = 0;
  virtual void Print(int level, const char* text) = 0;
  virtual void PrintFormat(const char* format, ...) __attribute__((format(printf, 2, 3))) = 0;
  virtual int Reserved3() = 0;
  virtual int Reserved4() = 0;
  virtual int Reserved5() = 0;
  virtual int Reserved6() = 0;
  virtual int Reserved7() = 0;
  virtual void Reserved8() = 0;
  virtual int Reserved9() = 0;
  virtual void SetSource(const char* file, int line) = 0;
  virtual void SetBundle(const char* bundleName) = 0;
  virtual void SetModule(const char* moduleName) = 0;
  virtual std::string GetProxyName() = 0;
};

// The fallback: Print writes the bare text to standard output, everything else does nothing.
class ORMA_API DefaultLogProxy : public LogProxy {
 public:
  ~DefaultLogProxy() override;
  void Reserved1() override;
  void Reserved2() override;
  void Print(int level, const char* text) override;
  void PrintFormat(const char* format, ...) override __attribute__((format(printf, 2, 3)));
  int Reserved3() override;
  int Reserved4() override;
  int Reserved5() override;
  int Reserved6() override;
  int Reserved7() override;
  void Reserved8() override;
  int Reserved9() override;
  void SetSource(const char* file, int line) override;
  void SetBundle(const char* bundleName) override;
  void SetModule(const char* moduleName) override;
  std::string GetProxyName() override;  // "DefaultLogProxy"
};

// Makes proxies. A caller may keep a proxy for the life of the process, so a factory gives one
// object for each key and never frees it.
class ORMA_API LogProxyFactory {
 public:
  virtual ~LogProxyFactory();
  // key: bundle name and module name run together. Never null.
  virtual LogProxy* CreateLogProxy(const char* key) = 0;
};

}  // namespace NS_BUNDLEMGR1
