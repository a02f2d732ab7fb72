#include "tao/CodecFactory/CodecFactory_Loader.h"

extern "C" int taoCodecCalls = 0;

int TAO_CodecFactory_Loader::Initializer() { return ++taoCodecCalls; }
