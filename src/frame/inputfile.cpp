#include "inputfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace emf {

InputFile openInput(const char* path, Directories directories) {
  const int descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return {nullptr, std::fclose};
  struct stat status = {};
  std::FILE* file = nullptr;
  if (::fstat(descriptor, &status) == 0 &&
      (S_ISREG(status.st_mode) ||
       (S_ISDIR(status.st_mode) && directories == Directories::Opened))) {
    file = ::fdopen(descriptor, "r");
  }
  if (file == nullptr) ::close(descriptor);
  return {file, std::fclose};
}

}  // namespace emf
