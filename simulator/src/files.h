// Files that are either there whole or not at all.
//
//   NewDatabaseFile file("net.db");
//   fill(file.database());
//   file.publish();           // without it nothing of it remains
//
// Thread-safety: thread-compatible. Failure: SimError, with the file and the system's reason.
#pragma once

#include <memory>
#include <string>

#include "sqlite.h"

namespace ormasim {

bool fileExists(const std::string& file);
// The whole of a regular file of at most `limitBytes`.
std::string readFile(const std::string& file, std::size_t limitBytes);
// Writes beside the file and renames, so that a reader sees the old text or the new one.
void writeFile(const std::string& file, const std::string& text, unsigned mode);

// A name of its own beside a file, removed at the end unless it was renamed to that file.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& target);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& name() const { return name_; }
  // Makes the bytes durable and gives the file its name.
  void renameToTarget();

 private:
  std::string target_;
  std::string name_;
};

// An empty inventory in the making, with one open transaction for speed.
class NewDatabaseFile {
 public:
  explicit NewDatabaseFile(const std::string& file);

  Database& database() { return *database_; }
  void publish();

 private:
  TemporaryFile temporary_;
  std::string file_;
  std::unique_ptr<Database> database_;
};

}  // namespace ormasim
