#include "emfmominterface.h"

#include "watchedcall.h"

int EMFMOMgrI::setUserLabel() {
  const emf::WatchedCall call("EMFMOMgrI::setUserLabel");
  return 0;
}

int EMFMOMgrI::setOwner() {
  const emf::WatchedCall call("EMFMOMgrI::setOwner");
  return 0;
}

int EMFMOMgrI::insertRecord() {
  const emf::WatchedCall call("EMFMOMgrI::insertRecord");
  return 0;
}

int EMFMOMgrI::deleteRecord() {
  const emf::WatchedCall call("EMFMOMgrI::deleteRecord");
  return 0;
}
