// How a statement ended.
//
// Thread-safety: immutable.
#pragma once

#include <string>
#include <utility>

#include "orma/bundle/export.h"

namespace dao {

// The codes of CExecStatus.
enum ExecCode : long {
  kExecOk = 0,
  kExecNotConfigured = 1,    // "database.connection" is missing or cannot be read
  kExecNotConnected = 2,     // the database could not be reached or opened
  kExecConnectionLost = 3,   // it went away again while the repeated statement ran
  kExecStatementFailed = 4,  // the database refused the statement: syntax, tables, locks, values
};

class ORMA_API CExecStatus {
 public:
  CExecStatus() = default;
  CExecStatus(ExecCode code, std::string message) : code_(code), message_(std::move(message)) {}

  bool IsOk() const { return code_ == kExecOk; }
  long GetErrCode() const { return code_; }
  // The reason in words; empty when all went well. It never holds a password.
  const std::string& GetMessage() const { return message_; }

 private:
  ExecCode code_ = kExecOk;
  std::string message_;
};

}  // namespace dao
