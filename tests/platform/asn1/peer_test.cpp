// The codec against two implementations that nobody here wrote: pyasn1, which knows the samples'
// schema, and OpenSSL's asn1parse, which knows tags, lengths and the universal types.
#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "codec.h"
#include "random_sample.h"
#include "temp_directory.h"

namespace {

using Tagging = AsnTagging;
using testing::SizeIs;

constexpr std::size_t kSamples = 2000;
constexpr const char* kPrintable =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789=,-";

std::string anyByteButZero() {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

const char* word(Tagging tagging) { return tagging == Tagging::Implicit ? "implicit" : "explicit"; }

std::string plainHex(const Bytes& bytes) {
  std::string text;
  for (const char c : toHex(bytes)) {
    if (c != ' ') text += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return text;
}

class Peer : public testing::Test {
 protected:
  // Runs a program with that input; the lines of its output.
  std::vector<std::string> run(const std::string& command, const std::string& input) {
    const auto in = directory_.write("input", input);
    const auto out = directory_.path() / "output";
    const std::string line = command + " <" + in.string() + " >" + out.string();
    EXPECT_EQ(std::system(line.c_str()), 0) << command;
    std::ifstream file(out);
    std::vector<std::string> lines;
    for (std::string text; std::getline(file, text);) lines.push_back(text);
    return lines;
  }

 private:
  emf::doubles::TempDirectory directory_;
};

const std::string kPeerScript = std::string(EMF_PYTHON " ") + EMF_PEER_SCRIPT;

// pyasn1 reads what we write as the same value, and would have written the same bytes.
TEST_F(Peer, Pyasn1ReadsWhatWeWrite) {
  std::mt19937 random(1);
  std::string input;
  std::vector<std::string> expected;
  for (std::size_t i = 0; i < kSamples; ++i) {
    Sample sample;
    fillRandomly(sample, random, anyByteButZero(), 2);
    const Tagging tagging = i % 2 == 0 ? Tagging::Implicit : Tagging::Explicit;
    const std::string hex = plainHex(encoded(sample, tagging));
    input += std::string(word(tagging)) + " " + hex + "\n";
    expected.push_back(valueText(sample) + " " + hex);
  }
  EXPECT_EQ(run(kPeerScript + " read", input), expected);
}

TEST_F(Peer, WeReadWhatPyasn1Writes) {
  const auto lines = run(kPeerScript + " write " + std::to_string(kSamples), "");
  ASSERT_THAT(lines, SizeIs(kSamples));
  for (const std::string& line : lines) {
    std::string tagging;
    std::string value;
    std::string hex;
    std::istringstream(line) >> tagging >> value >> hex;
    const Bytes bytes = fromHex(hex);
    const Tagging form = tagging == "implicit" ? Tagging::Implicit : Tagging::Explicit;
    Sample sample;
    ASSERT_EQ(decode(sample, bytes, form), all(bytes.size())) << line;
    ASSERT_EQ(valueText(sample), value);
    ASSERT_EQ(plainHex(encoded(sample, form)), hex);
  }
}

// What asn1parse shows of a value: one line for each element, "depth name value".
class Outline {
 public:
  explicit Outline(Tagging tagging) : tagging_(tagging) {}

  std::vector<std::string> lines;

  void add(int depth, const AsnInt& value) {
    std::ostringstream text;
    const long number = static_cast<int>(value);
    const std::string digits = hex(number < 0 ? -number : number);
    element(depth, "INTEGER", (number < 0 ? "-" : "") + digits);
  }
  void add(int depth, const AsnOcts& value) {
    element(depth, "OCTET STRING", value.bytes().data());
  }
  void add(int depth, const Point& point) {
    element(depth, "SEQUENCE", "");
    content(depth + 1, point);
  }
  void add(int depth, const Sample& sample) {
    element(depth, "SEQUENCE", "");
    content(depth + 1, sample);
  }
  template <typename T>
  void add(int depth, const ElementList<T>& list) {
    element(depth, "SEQUENCE", "");
    content(depth + 1, list);
  }

 private:
  static std::string hex(long number) {
    std::ostringstream text;
    text << std::uppercase << std::hex << number;
    return text.str().size() % 2 == 0 ? text.str() : "0" + text.str();
  }

  void element(int depth, const std::string& name, const std::string& value) {
    lines.push_back(std::to_string(depth) + " " + name + " " + value);
  }

  // Of primitive elements under an implicit tag asn1parse shows no value.
  void content(int, const AsnInt&) {}
  void content(int, const AsnOcts&) {}
  void content(int depth, const Point& point) {
    add(depth, point.x);
    add(depth, point.y);
  }
  template <typename T>
  void content(int depth, const ElementList<T>& list) {
    for (std::size_t i = 0; i < list.size(); ++i) add(depth, list[i]);
  }
  template <typename T>
  void optional(int depth, int number, const T* value) {
    if (value == nullptr) return;
    element(depth, "cont [ " + std::to_string(number) + " ]", "");
    tagging_ == Tagging::Explicit ? add(depth + 1, *value) : content(depth + 1, *value);
  }
  void content(int depth, const Sample& sample) {
    add(depth, sample.number);
    add(depth, sample.name);
    optional(depth, 0, sample.flag);
    add(depth, *sample.place);
    optional(depth, 2, sample.target);
    add(depth, sample.values);
    optional(depth, 1, sample.notes);
    optional(depth, 3, sample.children);
    optional(depth, 31, sample.code);
    optional(depth, 200, sample.label);
    optional(depth, 20000, sample.path);
    add(depth, sample.last);
  }

  Tagging tagging_;
};

// "   12:d=2  hl=2 l=   1 prim: INTEGER           :05" becomes "2 INTEGER 05".
std::vector<std::string> outlineOf(const std::vector<std::string>& parsed) {
  static const std::regex kLine(
      R"(^ *\d+:d=(\d+) +hl=\d+ l= *\d+ (?:cons|prim): (INTEGER|OCTET STRING|SEQUENCE|cont \[ \d+ \]) *:?(.*)$)");
  std::vector<std::string> lines;
  for (const std::string& line : parsed) {
    std::smatch parts;
    if (std::regex_match(line, parts, kLine)) {
      lines.push_back(parts.str(1) + " " + parts.str(2) + " " + parts.str(3));
    } else {
      lines.push_back("not understood: " + line);
    }
  }
  return lines;
}

class OpenSslPeer : public Peer, public testing::WithParamInterface<Tagging> {};

TEST_P(OpenSslPeer, ParsesWhatWeWrite) {
  std::mt19937 random(2);
  std::string input;
  Outline expected(GetParam());
  for (std::size_t i = 0; i < kSamples; ++i) {
    Sample sample;
    fillRandomly(sample, random, kPrintable, 2);
    const Bytes bytes = encoded(sample, GetParam());
    input.append(bytes.begin(), bytes.end());
    expected.add(0, sample);
  }
  EXPECT_EQ(outlineOf(run(EMF_OPENSSL " asn1parse -inform DER", input)), expected.lines);
}

INSTANTIATE_TEST_SUITE_P(Asn1, OpenSslPeer, testing::Values(Tagging::Implicit, Tagging::Explicit));

}  // namespace
