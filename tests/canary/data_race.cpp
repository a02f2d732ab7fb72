// Two threads write one variable without order: the thread sanitizer has to report it.
#include <cstdio>
#include <thread>

namespace {

int shared = 0;

void writeMany() {
  for (int value = 0; value < 100000; ++value) shared = value;
}

}  // namespace

int main() {
  std::thread first(writeMany);
  std::thread second(writeMany);
  first.join();
  second.join();
  std::printf("survived: %d\n", shared);
}
