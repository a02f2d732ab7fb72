#include "transmitassistant.h"

#include "singleton.h"

TransmitAssistant* TransmitAssistant::m_pInstance = nullptr;

TransmitAssistant::TransmitAssistant() = default;

TransmitAssistant::~TransmitAssistant() = default;

TransmitAssistant* TransmitAssistant::Instance() {
  return emf::singletonInstance(m_pInstance, [] { return new TransmitAssistant; });
}

TransmitAssistant* TransmitAssistant::getInstance() { return Instance(); }

void TransmitAssistant::Destroy() {
  emf::destroySingleton(m_pInstance, [](TransmitAssistant* instance) { delete instance; });
}
