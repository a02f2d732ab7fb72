// Reads one byte behind a heap block: the address sanitizer has to stop it.
#include <cstdio>
#include <vector>

int main(int argc, char**) {
  const std::vector<char> bytes(16, 'x');
  const char* volatile first = bytes.data();
  std::printf("survived: %d\n", first[15 + argc]);
}
