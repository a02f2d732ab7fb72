# emf_alarm_messages: the messages of the alarm exchange without the rest of the plug-in, and what
# walks them (message_walk.h). For fuzz targets and benchmarks.
include_guard(GLOBAL)
set(sources ${PROJECT_SOURCE_DIR}/src/alarm)
add_library(emf_alarm_messages STATIC EXCLUDE_FROM_ALL ${sources}/asnlist.cpp
                                                       ${sources}/asnmessage.cpp)
target_include_directories(emf_alarm_messages PUBLIC ${sources} ${PROJECT_SOURCE_DIR}/tests/alarm)
target_link_libraries(emf_alarm_messages PUBLIC orma::asn1 PRIVATE emf_options)
