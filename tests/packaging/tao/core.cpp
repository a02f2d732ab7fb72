// The ORB itself is not called when the plug-in is loaded; its library only has to be there.
extern "C" int taoVersion() { return 2; }
