#include "orma/bundle/log_proxy.h"

#include <ace/OS_NS_stdio.h>

namespace NS_BUNDLEMGR1 {

LogProxy::~LogProxy() = default;

LogProxyFactory::~LogProxyFactory() = default;

DefaultLogProxy::~DefaultLogProxy() = default;

void DefaultLogProxy::Print(int, const char* text) {
  if (text != nullptr) ACE_OS::printf("%s", text);
}

void DefaultLogProxy::PrintFormat(const char*, ...) {}

void DefaultLogProxy::Reserved1() {}
void DefaultLogProxy::Reserved2() {}
int DefaultLogProxy::Reserved3() { return 0; }
int DefaultLogProxy::Reserved4() { return 0; }
int DefaultLogProxy::Reserved5() { return 0; }
int DefaultLogProxy::Reserved6() { return 0; }
int DefaultLogProxy::Reserved7() { return 0; }
void DefaultLogProxy::Reserved8() {}
int DefaultLogProxy::Reserved9() { return 0; }
void DefaultLogProxy::SetSource(const char*, int) {}
void DefaultLogProxy::SetBundle(const char*) {}
void DefaultLogProxy::SetModule(const char*) {}

std::string DefaultLogProxy::GetProxyName() { return "DefaultLogProxy"; }

}  // namespace NS_BUNDLEMGR1
