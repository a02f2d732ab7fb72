// An idle singleton of the interface: it is made, found and deleted, and nothing else.
//
//   if (TransmitAssistant* assistant = TransmitAssistant::Instance()) keep(assistant);
//
// Failure is a null pointer; nothing is thrown but std::bad_alloc. Nothing blocks but while another
// singleton is being made.
//
// Thread-safety: thread-safe but for Destroy.
#pragma once

#include <ace/RW_Mutex.h>

#include <map>

#include "emfexport.h"

class EMF_API TransmitAssistant {
 public:
  // The singleton, made at the first call; null only when the process-wide lock fails.
  static TransmitAssistant* Instance();
  // The same.
  static TransmitAssistant* getInstance();
  // Deletes the singleton, if there is one; nothing may be using it. Does nothing when the
  // process-wide lock fails. The plug-in itself never calls it: the singleton lives on after fini.
  static void Destroy();

 private:
  TransmitAssistant();
  TransmitAssistant(const TransmitAssistant&) = delete;
  TransmitAssistant& operator=(const TransmitAssistant&) = delete;
  ~TransmitAssistant();

  std::map<int, int> entries;  // never filled
  ACE_RW_Mutex rwLock;

  static TransmitAssistant* m_pInstance;
};
