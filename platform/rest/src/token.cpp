#include "token.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>
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

// Why the file's text cannot be had; empty when it is in `text`, at most one byte over the limit. A
// pipe or device is refused, since reading it could block.
std::string readSmallFile(const std::string& name, SecretText& text) {
  const auto cannotBeRead = [](int error) {
    return "cannot be read: " + std::generic_category().message(error);
  };
  const FileDescriptor file(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status = {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0) return cannotBeRead(errno);
  if (!S_ISREG(status.st_mode)) return cannotBeRead(EINVAL);
  const std::string fault = secretModeFault(status.st_mode, SecretReaders::kOwnerAndGroup);
  if (!fault.empty()) return fault;
  text = SecretText(kMaxTokenBytes + 1);
  std::size_t filled = 0;
  while (filled < text.capacity()) {
    const ssize_t got = ::read(file.get(), text.data() + filled, text.capacity() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return cannotBeRead(errno);
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  text.resize(filled);
  return "";
}

void trim(SecretText& text) {
  constexpr const char* kBlanks = " \t\r\n";
  std::string_view rest = text.view();
  rest = rest.substr(0, rest.find_last_not_of(kBlanks) + 1);
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  text.keep(rest);
}

bool fitsHeader(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7f;
  });
}

}  // namespace

bool currentToken(const Settings& settings, SecretText& token, Failure& failure) {
  token = SecretText();
  if (!settings.tokenFile.empty()) {
    failure.check = "rest.token.file";
    const std::string fault = readSmallFile(settings.tokenFile, token);
    if (!fault.empty()) {
      failure.reason = "the token file " + printable(settings.tokenFile) + " " + fault;
      return false;
    }
  } else if (!settings.tokenEnvironment.empty()) {
    failure.check = "rest.token.environment";
    const char* value = std::getenv(settings.tokenEnvironment.c_str());
    if (value != nullptr) token = SecretText(value, "");
  } else {
    return true;
  }
  trim(token);
  if (token.empty()) {
    failure.reason = "the configured token is empty or missing";
  } else if (token.view().size() > kMaxTokenBytes || !fitsHeader(token.view())) {
    failure.reason = "the configured token holds control characters or is too long";
    token = SecretText();
  }
  return !token.empty();
}

}  // namespace orma::rest
