// Adds past the largest int: the undefined-behaviour sanitizer has to stop it.
#include <climits>
#include <cstdio>

int main(int argc, char**) {
  volatile int largest = INT_MAX;
  const int sum = largest + argc;
  std::printf("survived: %d\n", sum);
}
