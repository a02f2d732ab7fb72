# The messages of the alarm exchange as asn1c's generated code reads and writes them: a peer that
# shares nothing with ours, and what the benchmarks compare with. Targets alarm_asn1c_implicit and
# alarm_asn1c_explicit; one program can link one of them, for their symbols are the same. Nothing
# is defined without asn1c or a C compiler. To be included by a directory's list file.
include_guard(GLOBAL)
include(CheckLanguage)
include(EmfAlarmExchange)
find_program(EMF_ASN1C asn1c)
check_language(C)
if(NOT EMF_ASN1C OR NOT CMAKE_C_COMPILER)
  message(STATUS "asn1c: not found; messages are not compared with its code")
  return()
endif()
# A C compiler of another make than the C++ compiler would change what CMake calls the precompiled
# headers of both.
set(emf_pch_extension ${CMAKE_PCH_EXTENSION})
enable_language(C)
set(CMAKE_PCH_EXTENSION ${emf_pch_extension})

foreach(tagging IMPLICIT EXPLICIT)
  string(TOLOWER ${tagging} mode)
  set(directory ${CMAKE_CURRENT_BINARY_DIR}/asn1c/${mode})
  set(module ${directory}/alarm_exchange.asn1)
  set(stamp ${directory}/generated)
  emf_alarm_exchange_module(${tagging} ${module})
  if(NOT EXISTS ${stamp} OR ${module} IS_NEWER_THAN ${stamp})
    execute_process(COMMAND ${EMF_ASN1C} ${module} WORKING_DIRECTORY ${directory}
                    OUTPUT_QUIET ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${directory}/converter-sample.c)  # a program of its own
    file(TOUCH ${stamp})
  endif()
  file(GLOB sources ${directory}/*.c)
  add_library(alarm_asn1c_${mode} STATIC EXCLUDE_FROM_ALL ${sources})
  target_include_directories(alarm_asn1c_${mode} SYSTEM PUBLIC ${directory})
  # The generated code shifts negative numbers, which is for its makers to mend.
  target_compile_options(alarm_asn1c_${mode} PRIVATE -w -fno-sanitize=undefined)
endforeach()
