#include <cstddef>
#include <cstdio>

__attribute__((visibility("default"))) void fill(char* bytes, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) bytes[i] = 0;
}

std::size_t lengthOfCopy(const char* text);

int main(int argc, char** argv) {
  char line[1024];
  std::snprintf(line, sizeof line, "%s", argv[argc - 1]);
  return lengthOfCopy(line) == 5 ? 0 : 1;
}
