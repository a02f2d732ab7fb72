// Stands in front of the C library's look-up of host names (LD_PRELOAD): numbers are answered, a
// name never is, as by a name server that takes questions and says nothing.
#include <dlfcn.h>
#include <netdb.h>
#include <unistd.h>

#define PRELOADED extern "C" __attribute__((visibility("default")))

PRELOADED int getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                          addrinfo** answer) {
  using LookUp = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
  static const auto next = reinterpret_cast<LookUp>(::dlsym(RTLD_NEXT, "getaddrinfo"));
  const int numeric = AI_NUMERICHOST;
  addrinfo onlyNumbers{};
  if (hints != nullptr) onlyNumbers = *hints;
  onlyNumbers.ai_flags |= numeric;
  const int result = next(host, service, &onlyNumbers, answer);
  const bool asksForNumbers = hints != nullptr && (hints->ai_flags & numeric) != 0;
  if (result != EAI_NONAME || asksForNumbers) return result;
  for (;;) ::pause();
}
