#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>

#include "orma/text/text.h"

namespace {

// All of them keep the ASCII characters at their own codes and hold no state between characters.
constexpr std::array<const char*, 3> kSetNames = {"UTF-8", "GBK", "ISO-8859-1"};
constexpr std::size_t kSetCount = kSetNames.size();

// Every character of every set is in this one, in four bytes.
constexpr const char* kUniversalSet = "UTF-32LE";
constexpr std::size_t kLongestCharacterBytes = 4;

std::optional<std::size_t> findSet(const std::string& name) {
  const auto found = std::find(kSetNames.begin(), kSetNames.end(), name);
  if (found == kSetNames.end()) return std::nullopt;
  return static_cast<std::size_t>(found - kSetNames.begin());
}

// An iconv descriptor, opened at its first use.
class Descriptor {
 public:
  Descriptor() = default;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (handle_ != kNone) iconv_close(handle_);
  }

  bool open(const char* from, const char* to) {
    if (handle_ == kNone) handle_ = iconv_open(to, from);
    return handle_ != kNone;
  }

  // 0 when all of the input was taken, otherwise the errno of the stop; both pairs move on.
  int convert(const char*& in, std::size_t& inLeft, char*& out, std::size_t& outLeft) {
    char* const start = const_cast<char*>(in);  // iconv reads through it only
    char* position = start;
    const std::size_t result = iconv(handle_, &position, &inLeft, &out, &outLeft);
    in += position - start;
    return result == static_cast<std::size_t>(-1) ? errno : 0;
  }

 private:
  inline static const iconv_t kNone = reinterpret_cast<iconv_t>(-1);
  iconv_t handle_ = kNone;
};

// A thread's descriptors. iconv allows each to one thread at a time, and opening one costs far
// more than converting a name.
struct ThreadDescriptors {
  std::array<std::array<Descriptor, kSetCount>, kSetCount> converters;  // [from][to]
  std::array<Descriptor, kSetCount> probes;                             // [from], to kUniversalSet
};

ThreadDescriptors& threadDescriptors() {
  thread_local ThreadDescriptors descriptors;
  return descriptors;
}

// The length of the character at the front of the text, 0 when its first byte starts none.
std::size_t characterLength(Descriptor& probe, const char* text, std::size_t available) {
  const std::size_t longest = std::min(available, kLongestCharacterBytes);
  for (std::size_t length = 1; length <= longest; ++length) {
    const char* in = text;
    std::size_t inLeft = length;
    char character[kLongestCharacterBytes];
    char* out = character;
    std::size_t outLeft = sizeof character;
    const int stop = probe.convert(in, inLeft, out, outLeft);
    if (stop == 0) return length;
    if (stop != EINVAL) return 0;
  }
  return 0;
}

// Does not use iconv's own substitution: its result differs with the locale and the C library.
std::string convertAll(Descriptor& converter, Descriptor& probe, const std::string& input) {
  // glibc goes over all it was given once more for each character that it stops at: in slices, a
  // long text full of them costs no more for each than a short one.
  constexpr std::size_t kSliceBytes = 128;
  std::string result;
  const char* in = input.data();
  const char* const end = in + input.size();
  while (in != end) {
    const auto left = static_cast<std::size_t>(end - in);
    std::size_t sliceLeft = std::min(left, kSliceBytes);
    const bool isLastSlice = sliceLeft == left;
    char converted[4 * kSliceBytes];
    char* out = converted;
    std::size_t outLeft = sizeof converted;
    const int stop = converter.convert(in, sliceLeft, out, outLeft);
    result.append(converted, out);
    if (stop == 0 || stop == E2BIG) continue;
    if (stop == EINVAL && !isLastSlice) continue;  // the slice ended within a character
    result += '?';
    // What is left of a character at the text's end counts as one.
    in += stop == EINVAL ? sliceLeft
                         : std::max<std::size_t>(1, characterLength(probe, in, sliceLeft));
  }
  return result;
}

bool isAscii(const std::string& text) {
  return std::all_of(text.begin(), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

}  // namespace

namespace OrmaGlobalUtils {

void OrmaCodeSetConvert(const std::string& from, const std::string& to, const std::string& input,
                        std::string& output) {
  const auto source = findSet(from);
  const auto target = findSet(to);
  if (!source || !target || isAscii(input)) {
    output = input;
    return;
  }
  ThreadDescriptors& descriptors = threadDescriptors();
  Descriptor& converter = descriptors.converters[*source][*target];
  Descriptor& probe = descriptors.probes[*source];
  if (!converter.open(kSetNames[*source], kSetNames[*target]) ||
      !probe.open(kSetNames[*source], kUniversalSet)) {
    output = input;  // an installation without this set: as good as an unknown name
    return;
  }
  output = convertAll(converter, probe, input);
}

}  // namespace OrmaGlobalUtils
