#include "emfmominterface.h"

int EMFMOMgrI::setUserLabel() { return 0; }

int EMFMOMgrI::setOwner() { return 0; }

int EMFMOMgrI::insertRecord() { return 0; }

int EMFMOMgrI::deleteRecord() { return 0; }
