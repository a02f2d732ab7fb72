#include <cstddef>
#include <cstring>

void fill(char* bytes, std::size_t size);

// A buffer that wants a guard, a copy whose limit only the fortified function knows, and a frame
// of many pages.
__attribute__((visibility("default"))) std::size_t lengthOfCopy(const char* text) {
  char copy[128];
  std::strcpy(copy, text);
  char pages[100000];
  fill(pages, sizeof pages);
  return std::strlen(copy) + (pages[text[0] & 0x7f] == 0 ? 0 : 1);
}
