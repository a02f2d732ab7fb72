// A PostgreSQL server of the test program's own: its data and its socket lie in a temporary
// directory, and it listens on no port. It ends with the program, however that ends.
#pragma once

#include <sys/types.h>

#include <string>

namespace dao::test {

class PrivatePostgres {
 public:
  // The program's server, started at the first call. Null where none can run, and then the reason.
  static PrivatePostgres* instance(std::string& whyNot);

  PrivatePostgres(const PrivatePostgres&) = delete;
  PrivatePostgres& operator=(const PrivatePostgres&) = delete;
  ~PrivatePostgres();

  // libpq's options that reach one of its databases.
  std::string conninfo(const std::string& database) const;
  void stop() { command("stop"); }
  void start() { command("start"); }
  // How often a text stands in the server's log.
  int timesLogged(const std::string& text) const;

 private:
  explicit PrivatePostgres(const std::string& binaries);
  // Sends a word to the keeper and waits for its answer. Throws std::runtime_error unless "ok".
  void command(const std::string& word);
  std::string answer();

  std::string directory_;
  pid_t keeper_ = -1;
  int toKeeper_ = -1;
  int fromKeeper_ = -1;
};

}  // namespace dao::test
