# emf_platform_module(NAME name SOURCES ... [PUBLIC ...] [PRIVATE ...])
# One shared library of the platform: target orma_<name>, alias orma::<name>, headers below
# platform/<name>/include, inner headers in platform/<name>/src.
function(emf_platform_module)
  cmake_parse_arguments(arg "" "NAME" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  set(target orma_${arg_NAME})
  add_library(${target} SHARED ${arg_SOURCES})
  add_library(orma::${arg_NAME} ALIAS ${target})
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:include>
    PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/src)
  target_link_libraries(${target} PUBLIC ${arg_PUBLIC} PRIVATE emf_options ${arg_PRIVATE})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${arg_NAME} VERSION ${PROJECT_VERSION}
                        SOVERSION ${PROJECT_VERSION_MAJOR})
  set_property(GLOBAL APPEND PROPERTY EMF_INSTALLED_TARGETS ${target})
  set_property(GLOBAL APPEND PROPERTY EMF_INSTALLED_HEADER_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/include/)
endfunction()

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

# emf_add_test(name SOURCES ... [LIBRARIES ...] [LABELS ...] [ENVIRONMENT ...] [TIMEOUT seconds])
# One GoogleTest program; each of its cases is a ctest test. Labels: "unit" runs under the address
# sanitizer too, "threads" under the thread sanitizer too, "system" starts whole programs.
function(emf_add_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS;ENVIRONMENT" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE emf_options ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
  emf_count_test(${name} ${arg_LABELS})
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
endfunction()
