#include "emfinterfaceversion.h"

const int ii_ormaiac_emf_interface_version = kEmfInterfaceVersion;
