// Runs a fuzz target over files, once each: the target's corpus as an ordinary test, without
// libFuzzer. A sanitizer's report or a crash ends it.
//
//   asn1_sequence_replay fuzz/corpus/asn1_sequence
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const fs::path& place) {
  if (!fs::is_directory(place)) return {place};
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(place)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

void replay(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  // Exactly as large as the input, so that the address sanitizer sees the first byte too many.
  const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
  if (in.bad()) throw std::runtime_error("cannot be read");
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int count, char** arguments) {
  std::size_t replayed = 0;
  for (int i = 1; i < count; ++i) {
    for (const fs::path& file : filesIn(arguments[i])) {
      try {
        replay(file);
      } catch (const std::exception& failure) {
        std::cerr << file << ": " << failure.what() << "\n";
        return 1;
      }
      ++replayed;
    }
  }
  std::cout << replayed << " inputs replayed\n";
  return replayed > 0 ? 0 : 1;
}
