# What platform/ stands on. Kept apart from EmfDependencies, so that the plug-in built against a
# platform's own libraries asks for none of it.
include_guard(GLOBAL)
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
find_package(CURL REQUIRED)
find_package(spdlog REQUIRED)
find_package(simdjson REQUIRED)

# SOCI comes without a CMake or pkg-config file.
find_path(SOCI_INCLUDE_DIR soci/soci.h REQUIRED)
add_library(soci_all INTERFACE)
add_library(soci::soci ALIAS soci_all)
target_include_directories(soci_all SYSTEM INTERFACE ${SOCI_INCLUDE_DIR} ${SOCI_INCLUDE_DIR}/soci)
foreach(part core sqlite3 postgresql)
  find_library(SOCI_${part}_LIBRARY soci_${part} REQUIRED)
  target_link_libraries(soci_all INTERFACE ${SOCI_${part}_LIBRARY})
endforeach()
