// Database sessions and cursors: the rows of the next statements by script, calls recorded as text.
//
//   platform().cursors.gives({"id", "name"}, {{CValue(std::int64_t{2}), CValue("core-1"s)}});
//   platform().cursors.refuses({dao::kExecStatementFailed, "no such table: t"});
//   EXPECT_THAT(platform().cursors.calls(), ElementsAre("session default", "open SELECT …"));
//
// A script serves one statement, in the order of their scripting; a statement without one has no
// columns and no rows.
//
// Thread-safety: thread-safe.
#pragma once

#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "orma/dao/exec_status.h"
#include "orma/refl/value.h"

namespace emf::doubles {

class CursorDouble {
 public:
  using Row = std::vector<refl::CValue>;

  struct Script {
    std::vector<std::string> columns;
    std::vector<Row> rows;
    dao::CExecStatus opened;  // anything but OK: the statement is refused
    dao::CExecStatus ended;   // how the read behind the last row goes
  };

  void gives(std::vector<std::string> columns, std::vector<Row> rows);
  // The same, and then reading fails.
  void breaksBehind(std::vector<std::string> columns, std::vector<Row> rows,
                    dao::CExecStatus failure);
  void refuses(dao::CExecStatus failure);
  // 0 after a reset.
  void serverType(int type);

  // "session NAME", "session gone NAME", "cursor", "cursor gone", "open STATEMENT", "fetch" and
  // "server type", in order.
  std::vector<std::string> calls() const;
  // The parameters of every statement.
  std::vector<Row> parameters() const;
  void reset();

  void note(const std::string& call);
  void noteEnd(const char* call, const std::string& name = std::string()) noexcept;
  Script open(const std::string& statement, const Row& parameters);
  int serverType();

 private:
  mutable std::mutex mutex_;
  std::deque<Script> scripts_;
  int serverType_ = 0;
  std::vector<std::string> calls_;
  std::vector<Row> parameters_;
};

}  // namespace emf::doubles
