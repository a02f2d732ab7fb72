// Files without permission, also for tests that the superuser runs.
//
//   openToAll(directory);
//   fs::permissions(file, fs::perms::none);
//   const OrdinaryUser user;
//   EXPECT_FALSE(canRead(file));
//
// Thread-safety: none; the user is the whole process's.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace emf::doubles {

// Works as a user who may not read everything; the superuser borrows such a one.
class OrdinaryUser {
 public:
  OrdinaryUser() : borrowed_(::geteuid() == 0 && ::seteuid(kNobody) == 0) {}
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (borrowed_ && ::seteuid(0) != 0) std::abort();
  }

 private:
  static constexpr uid_t kNobody = 65534;
  bool borrowed_;
};

// Lets every user into a directory and all below it.
inline void openToAll(const std::filesystem::path& directory) {
  const auto permissions = std::filesystem::perms::all;
  std::filesystem::permissions(directory, permissions);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    std::filesystem::permissions(entry.path(), permissions);
  }
}

}  // namespace emf::doubles
