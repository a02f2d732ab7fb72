# emf_count_test(target label...)
# Makes the target part of emf_<label>_tests, which builds every test of that label and no other.
function(emf_count_test target)
  foreach(label ${ARGN})
    if(NOT TARGET emf_${label}_tests)
      add_custom_target(emf_${label}_tests)
    endif()
    add_dependencies(emf_${label}_tests ${target})
  endforeach()
endfunction()

# emf_test_headers()
# The headers that nearly every test includes, compiled once for all tests and for the libraries
# that support them, and how these are compiled: where a failure is to be seen, but without what
# only a debugger would ask for, since GoogleMock's templates make most of what the compiler has to
# write.
function(emf_test_headers)
  if(TARGET emf_test_headers)
    return()
  endif()
  set(source ${CMAKE_BINARY_DIR}/emf_test_headers.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "int main() {}\n")
  add_executable(emf_test_headers EXCLUDE_FROM_ALL ${source})
  target_link_libraries(emf_test_headers PRIVATE emf_options GTest::gmock)
  # Programs as libraries, since headers precompiled for the one fit the other only then.
  set(flags -fPIC $<$<CONFIG:Debug>:-g1>)
  if(EMF_SANITIZE MATCHES undefined)
    # A fifth of what is left: pointers that are null or not aligned end a test anyway.
    list(APPEND flags -fno-sanitize=null,alignment,vptr)
  endif()
  target_compile_options(emf_test_headers PRIVATE ${flags} INTERFACE ${flags}
    $<TARGET_PROPERTY:GTest::gmock,INTERFACE_COMPILE_OPTIONS>)
  emf_precompile(emf_test_headers
    <gmock/gmock.h> <gtest/gtest.h> <filesystem> <fstream> <functional> <map> <memory> <string>
    <thread> <vector>)
endfunction()

# emf_compile_as_test(target...)
# Compiles tests, or libraries that support tests, with the headers above and several files at once.
# Without tests in the build it does nothing.
function(emf_compile_as_test)
  if(NOT EMF_BUILD_TESTS)
    return()
  endif()
  emf_test_headers()
  foreach(target ${ARGN})
    target_compile_options(${target} PRIVATE
      $<TARGET_PROPERTY:emf_test_headers,INTERFACE_COMPILE_OPTIONS>)
    emf_precompile(${target} REUSE_FROM emf_test_headers)
    set_target_properties(${target} PROPERTIES
                          UNITY_BUILD ${EMF_UNITY_TESTS} UNITY_BUILD_BATCH_SIZE 6)
  endforeach()
endfunction()

# emf_add_test(name SOURCES ... [LIBRARIES ...] [LABELS ...] [ENVIRONMENT ...] [TIMEOUT seconds])
# One GoogleTest program; each of its cases is a ctest test, with sanitizers the whole program is
# one. Labels: "unit" runs under the address sanitizer too, "threads" under the thread sanitizer
# too, "system" starts whole programs. TIMEOUT is that of a case.
function(emf_add_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS;ENVIRONMENT" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE emf_options ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
  emf_compile_as_test(${name})
  emf_count_test(${name} ${arg_LABELS})
  if(EMF_SANITIZE)
    emf_add_whole_test()
  else()
    emf_add_test_cases()
  endif()
endfunction()

# For emf_add_test: most cases take less time than the start of a process with a sanitizer.
macro(emf_add_whole_test)
  math(EXPR timeout "5 * ${arg_TIMEOUT}")
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    LABELS "${arg_LABELS}" TIMEOUT ${timeout} ENVIRONMENT "GTEST_BRIEF=1;${arg_ENVIRONMENT}")
endmacro()

# For emf_add_test.
macro(emf_add_test_cases)
  include(GoogleTest)
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    TEST_LIST ${name}_cases)
  # gtest_discover_tests takes lists in PROPERTIES apart, so that only a first label would count.
  set(properties_file ${CMAKE_CURRENT_BINARY_DIR}/${name}_properties.cmake)
  file(CONFIGURE OUTPUT ${properties_file} @ONLY CONTENT [[
if(@name@_cases)
  set_tests_properties(${@name@_cases} PROPERTIES
    LABELS "@arg_LABELS@" TIMEOUT @arg_TIMEOUT@ ENVIRONMENT "@arg_ENVIRONMENT@")
endif()
]])
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${properties_file})
endmacro()

# emf_add_postgresql_test(name SOURCES ... [LIBRARIES ...] [LABELS ...] [TIMEOUT seconds])
# One ctest test for the whole program, which starts one server for all of its cases.
function(emf_add_postgresql_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 180)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE emf_options ${arg_LIBRARIES} dao_test_postgresql
                                        GTest::gtest_main)
  emf_compile_as_test(${name})
  emf_count_test(${name} ${arg_LABELS})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT ${arg_TIMEOUT}
                       SKIP_REGULAR_EXPRESSION "\\[  SKIPPED \\]")
endfunction()
