# Settings that hold for every target of the tree.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(EMF_CCACHE ccache)
if(EMF_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # A precompiled header is known by its content, not by its time.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros ${EMF_CCACHE})
endif()

# A debug build links many programs; what is shipped is linked as the system does.
find_program(EMF_LLD ld.lld)
if(EMF_LLD AND CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_link_options(-fuse-ld=lld)
endif()

add_library(emf_options INTERFACE)
target_compile_options(emf_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                       -Wformat=2 -Wimplicit-fallthrough)
# What --version prints.
target_compile_definitions(emf_options INTERFACE EMF_VERSION="${PROJECT_VERSION}")
if(EMF_WARNINGS_AS_ERRORS)
  target_compile_options(emf_options INTERFACE -Werror)
endif()

# Sanitizers and coverage act on the whole tree: a half-instrumented process reports nonsense.
if(EMF_SANITIZE)
  add_compile_options(-fsanitize=${EMF_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${EMF_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The instrumentation hides initialisations from the compiler, in the standard library too.
    target_compile_options(emf_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
# emf_count_coverage()
# With EMF_COVERAGE, counts in what this directory and those below compile. Only the product counts:
# the tests then come from the compiler cache.
function(emf_count_coverage)
  if(EMF_COVERAGE)
    # Threads count in the same counters.
    add_compile_options(--coverage -fprofile-update=atomic)
  endif()
endfunction()
if(EMF_COVERAGE)
  add_link_options(--coverage)
endif()
