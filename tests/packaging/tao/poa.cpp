#include "tao/PortableServer/PortableServer.h"

extern "C" int taoPoaCalls = 0;

int TAO_POA_Initializer::init() { return ++taoPoaCalls; }
