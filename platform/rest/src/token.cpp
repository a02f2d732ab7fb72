#include "token.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace orma::rest {
namespace {

constexpr std::size_t kMaxTokenBytes = 16384;

class FileDescriptor {
 public:
  explicit FileDescriptor(int value) : value_(value) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (value_ >= 0) ::close(value_);
  }
  int get() const { return value_; }

 private:
  int value_;
};

// Reads the file's text, at most one byte over the limit; 0 or an error number. A pipe or device
// is refused, since reading it could block.
int readSmallFile(const std::string& name, std::string& text) {
  const FileDescriptor file(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status = {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0) return errno;
  if (!S_ISREG(status.st_mode)) return EINVAL;
  text.resize(kMaxTokenBytes + 1);
  std::size_t filled = 0;
  while (filled < text.size()) {
    const ssize_t got = ::read(file.get(), text.data() + filled, text.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return errno;
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  text.resize(filled);
  return 0;
}

void trim(std::string& text) {
  constexpr const char* kBlanks = " \t\r\n";
  text.erase(text.find_last_not_of(kBlanks) + 1);
  text.erase(0, text.find_first_not_of(kBlanks));
}

bool fitsHeader(const std::string& text) {
  return std::none_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7f;
  });
}

}  // namespace

bool currentToken(const Settings& settings, std::string& token, Failure& failure) {
  token.clear();
  if (!settings.tokenFile.empty()) {
    failure.check = "rest.token.file";
    const int error = readSmallFile(settings.tokenFile, token);
    if (error != 0) {
      failure.reason = "the token file " + printable(settings.tokenFile) +
                       " cannot be read: " + std::generic_category().message(error);
      return false;
    }
  } else if (!settings.tokenEnvironment.empty()) {
    failure.check = "rest.token.environment";
    const char* value = std::getenv(settings.tokenEnvironment.c_str());
    if (value != nullptr) token = value;
  } else {
    return true;
  }
  trim(token);
  if (token.empty()) {
    failure.reason = "the configured token is empty or missing";
  } else if (token.size() > kMaxTokenBytes || !fitsHeader(token)) {
    failure.reason = "the configured token holds control characters or is too long";
    token.clear();
  }
  return !token.empty();
}

}  // namespace orma::rest
