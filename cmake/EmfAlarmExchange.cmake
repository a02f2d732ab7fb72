# emf_alarm_exchange_module(IMPLICIT|EXPLICIT file)
# Writes the ASN.1 module of the alarm exchange in one of its two tagging modes. Both come from one
# text, docs/formats/alarm_exchange.asn1.
function(emf_alarm_exchange_module tagging file)
  set(source ${PROJECT_SOURCE_DIR}/docs/formats/alarm_exchange.asn1)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} text)
  string(REPLACE "DEFINITIONS IMPLICIT TAGS" "DEFINITIONS ${tagging} TAGS" text "${text}")
  file(CONFIGURE OUTPUT ${file} CONTENT "${text}" @ONLY)
endfunction()
