// An access product's library that has no instance to give.
extern "C" __attribute__((visibility("default"))) void* createInstanceLib();

void* createInstanceLib() { return nullptr; }
