#include "submapbufmgr.h"
