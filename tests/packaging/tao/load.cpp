// load PLUGIN: loads the plug-in and tells how often each of the ORB's load-time calls came, before
// and after.
#include <dlfcn.h>

#include <cstdio>

extern "C" int taoPoaCalls;
extern "C" int taoCodecCalls;

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::printf("before %d %d\n", taoPoaCalls, taoCodecCalls);
  if (dlopen(argv[1], RTLD_NOW) == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  std::printf("after %d %d\n", taoPoaCalls, taoCodecCalls);
}
