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
