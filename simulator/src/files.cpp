#include "files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include "error.h"
#include "inventory_schema.h"

namespace ormasim {
namespace {

[[noreturn]] void fail(const std::string& action, const std::string& file) {
  throw SimError("cannot " + action + " " + file + ": " + std::strerror(errno));
}

}  // namespace

bool fileExists(const std::string& file) {
  struct stat status {};
  return ::lstat(file.c_str(), &status) == 0;
}

std::string readFile(const std::string& file, std::size_t limitBytes) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) fail("read", file);
  if (!S_ISREG(status.st_mode)) throw SimError("cannot read " + file + ": it is no regular file");
  if (static_cast<std::size_t>(status.st_size) > limitBytes) {
    throw SimError("cannot read " + file + ": it has more than " + std::to_string(limitBytes) +
                   " bytes");
  }
  std::ifstream stream(file, std::ios::binary);
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  if (!stream.read(text.data(), static_cast<std::streamsize>(text.size()))) fail("read", file);
  return text;
}

void writeFile(const std::string& file, const std::string& text, unsigned mode) {
  TemporaryFile temporary(file);
  if (::chmod(temporary.name().c_str(), mode) != 0) fail("write", file);
  std::ofstream stream(temporary.name(), std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) fail("write", file);
  temporary.renameToTarget();
}

TemporaryFile::TemporaryFile(const std::string& target) : target_(target) {
  name_ = target + ".tmp.XXXXXX";
  const int descriptor = ::mkstemp(name_.data());
  if (descriptor < 0) fail("write", target);
  ::close(descriptor);
}

TemporaryFile::~TemporaryFile() {
  if (!name_.empty()) ::unlink(name_.c_str());
}

void TemporaryFile::renameToTarget() {
  const int descriptor = ::open(name_.c_str(), O_RDONLY | O_CLOEXEC);
  const bool durable = descriptor >= 0 && ::fsync(descriptor) == 0;
  if (descriptor >= 0) ::close(descriptor);
  if (!durable || std::rename(name_.c_str(), target_.c_str()) != 0) fail("write", target_);
  name_.clear();
}

NewDatabaseFile::NewDatabaseFile(const std::string& file) : temporary_(file), file_(file) {
  database_ = std::make_unique<Database>(temporary_.name(), Database::Mode::Create);
  // Nobody reads the file before publish, and a failure throws it away: no journal is needed.
  database_->execute("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN;");
  database_->execute(kInventorySchema);
}

void NewDatabaseFile::publish() {
  database_->execute("COMMIT");
  database_.reset();
  if (::chmod(temporary_.name().c_str(), 0644) != 0) fail("write", file_);
  // A journal that an earlier database of this name left would be played into the new one.
  for (const char* suffix : {"-journal", "-wal", "-shm"}) ::unlink((file_ + suffix).c_str());
  temporary_.renameToTarget();
}

}  // namespace ormasim
