# Runs PROGRAM; fails unless it ends with an error status and its standard error holds REPORT.
execute_process(COMMAND ${PROGRAM} RESULT_VARIABLE status OUTPUT_VARIABLE output
                ERROR_VARIABLE errors)
if(status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended well: the sanitizer is off. It wrote:\n${output}${errors}")
endif()
string(FIND "${errors}" "${REPORT}" place)
if(place EQUAL -1)
  message(FATAL_ERROR "${PROGRAM} ended with ${status}, without \"${REPORT}\":\n${errors}")
endif()
