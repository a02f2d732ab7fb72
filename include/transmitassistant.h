// An idle singleton of the interface: it is made, found and deleted, and nothing else.
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
  static TransmitAssistant* getInstance();
  // Deletes the singleton; nothing may be using it.
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
