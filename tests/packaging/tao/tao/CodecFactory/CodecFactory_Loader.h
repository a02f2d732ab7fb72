// As much of the ORB's header as the plug-in uses.
#pragma once

class TAO_CodecFactory_Loader {
 public:
  static int Initializer();
};
