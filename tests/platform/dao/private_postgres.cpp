#include "private_postgres.h"

#include <fcntl.h>
#include <glob.h>
#include <grp.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace dao::test {
namespace {

// Runs the server by the words that come in and takes everything away when no more can come:
// the end of the input is the end of the test program. $1 the server's programs, $2 the directory.
constexpr const char* kKeeperScript = R"(
cd "$2" || exit 1
unset PGDATA PGHOST PGPORT PGUSER PGDATABASE PGOPTIONS
export LC_ALL=C
control() { "$1/pg_ctl" -w -s -D data "$2" $3 </dev/null >>keeper.log 2>&1; }
start() { "$1/pg_ctl" -w -s -D data -l server.log \
  -o "-k '$2' -c listen_addresses='' -c fsync=off" start </dev/null >>keeper.log 2>&1; }
"$1/initdb" -D data -A trust -U orma -E UTF8 --locale=C --no-sync </dev/null >keeper.log 2>&1 &&
  start "$1" "$2" && echo ok || tail -n 1 keeper.log
while read -r word; do
  case $word in
    start) start "$1" "$2" ;;
    stop) control "$1" stop "-m fast" ;;
  esac && echo ok || tail -n 1 keeper.log
done
control "$1" stop "-m immediate"
cd / && rm -rf "$2"
)";

std::string serverPrograms() {
  glob_t found{};
  std::string result;
  if (glob("/usr/lib/postgresql/*/bin/initdb", 0, nullptr, &found) == 0) {
    result = std::filesystem::path(found.gl_pathv[found.gl_pathc - 1]).parent_path().string();
  }
  globfree(&found);
  return result;
}

struct Account {
  uid_t user;
  gid_t group;
};

// The server refuses to run as root; then it runs as its own user.
Account serverAccount() {
  if (geteuid() != 0) return {geteuid(), getegid()};
  const passwd* entry = getpwnam("postgres");
  if (entry == nullptr) {
    throw std::runtime_error("the server does not run as root, and there is no user postgres");
  }
  return {entry->pw_uid, entry->pw_gid};
}

std::string makeDirectory(const Account& owner) {
  std::string path = (std::filesystem::temp_directory_path() / "emf_pg_XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr || chown(path.c_str(), owner.user, owner.group) != 0) {
    throw std::runtime_error("no temporary directory for the server");
  }
  return path;
}

struct Pipe {
  Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    readEnd = ends[0];
    writeEnd = ends[1];
  }
  int readEnd;
  int writeEnd;
};

}  // namespace

PrivatePostgres* PrivatePostgres::instance(std::string& whyNot) {
  static std::string reason;
  static const std::unique_ptr<PrivatePostgres> server = []() -> std::unique_ptr<PrivatePostgres> {
    const std::string programs = serverPrograms();
    if (programs.empty()) {
      reason = "no PostgreSQL server is installed (/usr/lib/postgresql/*/bin); not tested";
      return nullptr;
    }
    try {
      std::unique_ptr<PrivatePostgres> result(new PrivatePostgres(programs));
      const std::string outcome = result->answer();
      if (outcome != "ok") throw std::runtime_error(outcome);
      return result;
    } catch (const std::runtime_error& failure) {
      reason = std::string("no PostgreSQL server could be started: ") + failure.what();
      return nullptr;
    }
  }();
  whyNot = reason;
  return server.get();
}

PrivatePostgres::PrivatePostgres(const std::string& binaries) {
  const Account account = serverAccount();
  directory_ = makeDirectory(account);
  const Pipe words;
  const Pipe answers;
  keeper_ = fork();
  if (keeper_ < 0) throw std::runtime_error("no process for the server");
  if (keeper_ == 0) {
    setpgid(0, 0);  // an interrupt from the keyboard is for the test alone
    if (geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(account.group) != 0 || setuid(account.user) != 0)) {
      _exit(1);
    }
    dup2(words.readEnd, STDIN_FILENO);
    dup2(answers.writeEnd, STDOUT_FILENO);
    execl("/bin/sh", "sh", "-c", kKeeperScript, "sh", binaries.c_str(), directory_.c_str(),
          static_cast<char*>(nullptr));
    _exit(1);
  }
  close(words.readEnd);
  close(answers.writeEnd);
  toKeeper_ = words.writeEnd;
  fromKeeper_ = answers.readEnd;
}

PrivatePostgres::~PrivatePostgres() {
  close(toKeeper_);
  close(fromKeeper_);
  waitpid(keeper_, nullptr, 0);
}

std::string PrivatePostgres::conninfo(const std::string& database) const {
  return "host=" + directory_ + " user=orma dbname=" + database;
}

int PrivatePostgres::timesLogged(const std::string& text) const {
  std::ifstream log(directory_ + "/server.log");
  int times = 0;
  for (std::string line; std::getline(log, line);) {
    if (line.find(text) != std::string::npos) ++times;
  }
  return times;
}

void PrivatePostgres::command(const std::string& word) {
  const std::string line = word + "\n";
  if (write(toKeeper_, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
    throw std::runtime_error("the server's keeper is gone");
  }
  const std::string result = answer();
  if (result != "ok") throw std::runtime_error(word + ": " + result);
}

std::string PrivatePostgres::answer() {
  std::string line;
  for (char byte = 0; read(fromKeeper_, &byte, 1) == 1 && byte != '\n';) line += byte;
  return line;
}

}  // namespace dao::test
