// The load-time calls of a library that uses the ORB.
#include <tao/CodecFactory/CodecFactory_Loader.h>
#include <tao/PortableServer/PortableServer.h>

namespace {

[[maybe_unused]] const int kPoaReady = TAO_POA_Initializer::init();
[[maybe_unused]] const int kCodecsReady = TAO_CodecFactory_Loader::Initializer();

}  // namespace
