#include <cstring>
#include <string_view>

#include "orma/text/text.h"

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return text.substr(0, 0);  // never a null pointer
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// One side of a pair while its line is being read: the first bytes that the caller's buffer can
// take, leading blanks left out so that they cannot push text beyond the cut.
class BoundedText {
 public:
  void append(char byte) {
    if (length_ == 0 && kBlanks.find(byte) != std::string_view::npos) return;
    if (length_ < sizeof bytes_) bytes_[length_++] = byte;
  }
  bool isEmpty() const { return length_ == 0; }
  void copyTo(char* buffer) const {
    const std::string_view text = trimmed({bytes_, length_});
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
  }

 private:
  char bytes_[kOrmaLineBufferBytes - 1];
  std::size_t length_ = 0;
};

struct Line {
  BoundedText key;
  BoundedText value;
  bool hasSeparator = false;
  bool isComment = false;

  void append(char byte) {
    if (byte == '\0' || isComment) return;  // a NUL cannot stand in the caller's texts
    if (hasSeparator) {
      value.append(byte);
    } else if (byte == '=') {
      hasSeparator = true;
    } else if (byte == '#' && key.isEmpty()) {
      isComment = true;
    } else {
      key.append(byte);
    }
  }
};

// Holds the stream's lock for a whole line, so that its bytes can be read without one each.
class LockedStream {
 public:
  explicit LockedStream(std::FILE* file) : file_(file) { flockfile(file_); }
  ~LockedStream() { funlockfile(file_); }
  LockedStream(const LockedStream&) = delete;
  LockedStream& operator=(const LockedStream&) = delete;

  // Reads to the next line end or the end of the file. False when there was nothing left, or
  // the stream failed.
  bool readLine(Line& line) {
    int byte = getc_unlocked(file_);
    if (byte == EOF) return false;
    for (; byte != EOF && byte != '\n'; byte = getc_unlocked(file_)) {
      line.append(static_cast<char>(byte));
    }
    return byte != EOF || ferror_unlocked(file_) == 0;
  }

 private:
  std::FILE* file_;
};

}  // namespace

int OrmaGetLine(char* key, char* value, std::FILE* file) {
  constexpr int kEnd = 0;
  constexpr int kPair = 1;
  constexpr int kNoPair = 2;

  if (key == nullptr || value == nullptr || file == nullptr) return kEnd;
  Line line;
  if (!LockedStream(file).readLine(line)) return kEnd;
  if (!line.hasSeparator) return kNoPair;
  line.key.copyTo(key);
  line.value.copyTo(value);
  return kPair;
}

void OrmaTrim(char* text) {
  if (text == nullptr) return;
  const std::string_view kept = trimmed(text);
  std::memmove(text, kept.data(), kept.size());
  text[kept.size()] = '\0';
}
