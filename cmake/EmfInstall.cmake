# Installation: libraries, headers, a CMake package and a pkg-config file. The targets and header
# directories are those that the modules have named on the way (see EmfModule); the programs install
# themselves.
include(CMakePackageConfigHelpers)
set(emf_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/ii_ormaiac_emf)
set(emf_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ii_ormaiac_emf)

get_property(emf_targets GLOBAL PROPERTY EMF_INSTALLED_TARGETS)
install(TARGETS ${emf_targets} EXPORT ii_ormaiac_emf
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT plugin NAMELINK_COMPONENT dev
  INCLUDES DESTINATION ${emf_include_dir})
get_property(emf_header_dirs GLOBAL PROPERTY EMF_INSTALLED_HEADER_DIRS)
install(DIRECTORY ${emf_header_dirs} DESTINATION ${emf_include_dir} COMPONENT dev
  FILES_MATCHING PATTERN "*.h")

install(EXPORT ii_ormaiac_emf NAMESPACE ii_ormaiac_emf:: DESTINATION ${emf_package_dir}
  COMPONENT dev FILE ii_ormaiac_emfTargets.cmake)
configure_package_config_file(cmake/ii_ormaiac_emfConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/ii_ormaiac_emfConfig.cmake INSTALL_DESTINATION ${emf_package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ii_ormaiac_emfConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ii_ormaiac_emfConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ii_ormaiac_emfConfigVersion.cmake
  DESTINATION ${emf_package_dir} COMPONENT dev)

# The prefix is found from the file's own place, so that an installed tree can be moved.
file(RELATIVE_PATH emf_pc_to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/ii_ormaiac_emf.pc.in ${CMAKE_CURRENT_BINARY_DIR}/ii_ormaiac_emf.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ii_ormaiac_emf.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
