// A fresh directory that goes, with everything in it, when the object does.
//
// Thread-safety: thread-compatible. Throws std::filesystem::filesystem_error.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace emf::doubles {

class TempDirectory {
 public:
  TempDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "emf-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
      throw std::filesystem::filesystem_error("mkdtemp", name,
                                              std::error_code(errno, std::generic_category()));
    }
    path_ = name;
  }
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;
  ~TempDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }

  // Writes a file below the directory, with the directories it needs; its path.
  std::filesystem::path write(const std::string& name, const std::string& content) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace emf::doubles
