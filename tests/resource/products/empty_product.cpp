// A library under the product's name that is none.
extern "C" __attribute__((visibility("default"))) int somethingElse();

int somethingElse() { return 1; }
