// Start-up of the plug-in's own parts, and the error-code table: numeric code to text, read from
// the resource files of the configured language.
//
// Thread-safety: Init belongs to the start-up thread; lookups are thread-safe after it, because
// nothing writes the table then. A reload while serving would need a lock.
#pragma once

#include <list>
#include <map>
#include <string>

#include "errorcodebufif.h"

class CAEmfInterface {
 public:
  // Nothing to bring up: always true. The caller treats false as a refusal to start.
  static bool Init();
  // Releases the database engine.
  static void Fini();
};

class CAEmfMcdbErrorCodeMgr {
 public:
  // The singleton, made at the first call; null only when the process-wide lock fails.
  static CAEmfMcdbErrorCodeMgr* Instance();
  // Deletes the singleton. No caller here: the table lives until the process ends.
  static void Destroy();

  // Reads every resource file. Always true: what could be read is in the table.
  bool Init();
  void LoadAll();
  // Reads one file into the table; a later text for a code replaces an earlier one.
  void LoadFile(const std::string& path);
  // Replaces `text` by the code's text, or by "unknown".
  void GetErrorInfo(std::string& text, const unsigned long& code);

 private:
  CAEmfMcdbErrorCodeMgr() = default;
  ~CAEmfMcdbErrorCodeMgr() = default;

  std::map<unsigned long, std::string> m_errorTexts;
  static CAEmfMcdbErrorCodeMgr* m_pInstance;
};

class ErrorCodeBufIfImpl : public ErrorCodeBufIf {
 public:
  std::string GetIFName() override;
  int IsValid() override;
  void GetErrorInfo(std::string& text, const unsigned long& code) override;
};
