// As much of the ORB's header as the plug-in uses.
#pragma once

class TAO_POA_Initializer {
 public:
  static int init();
};
