# emf_add_fuzz_target(name SOURCES ... [LIBRARIES ...])
# One fuzz target: a source with LLVMFuzzerTestOneInput, and its corpus in fuzz/corpus/<name>/. With
# EMF_BUILD_FUZZ it becomes the libFuzzer program <name>_fuzz. With the tests, in any build, it
# becomes <name>_replay, which ctest runs over the corpus as fuzz.<name>.
function(emf_add_fuzz_target name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  if(EMF_BUILD_FUZZ)
    add_executable(${name}_fuzz ${arg_SOURCES})
    target_link_libraries(${name}_fuzz PRIVATE emf_options ${arg_LIBRARIES})
    target_link_options(${name}_fuzz PRIVATE -fsanitize=fuzzer)
    add_dependencies(emf_fuzz_targets ${name}_fuzz)
  endif()
  if(EMF_BUILD_TESTS)
    add_executable(${name}_replay ${arg_SOURCES} ${PROJECT_SOURCE_DIR}/fuzz/replay.cpp)
    target_link_libraries(${name}_replay PRIVATE emf_options ${arg_LIBRARIES})
    emf_count_test(${name}_replay unit)
    add_test(NAME fuzz.${name}
             COMMAND ${name}_replay ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    set_tests_properties(fuzz.${name} PROPERTIES LABELS unit TIMEOUT 120)
  endif()
endfunction()

if(EMF_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "EMF_BUILD_FUZZ needs clang: configure with -DCMAKE_CXX_COMPILER=clang++")
  endif()
  # The whole tree tells the fuzzer where it has been; only the targets bring the fuzzer's main.
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
  add_custom_target(emf_fuzz_targets)
endif()
