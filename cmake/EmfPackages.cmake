# Debian packages, one for each component of the installation:
#
#   cpack -G DEB --config build/release/CPackConfig.cmake
#
# scripts/package.sh builds a release, makes them and checks them.
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(EMF_PACKAGES
  plugin:ii-ormaiac-emf dev:ii-ormaiac-emf-dev agent:ormaagent simulator:ormasim)

# The documents that each package has to have, in its own directory.
set(changelog ${CMAKE_CURRENT_BINARY_DIR}/changelog)
configure_file(${packaging}/changelog ${changelog} COPYONLY)
add_custom_command(OUTPUT ${changelog}.gz DEPENDS ${packaging}/changelog
  COMMAND gzip -9 -n -k -f ${changelog} VERBATIM)
add_custom_target(emf_changelog ALL DEPENDS ${changelog}.gz)
foreach(row ${EMF_PACKAGES})
  string(REPLACE ":" ";" row ${row})
  list(GET row 0 component)
  list(GET row 1 package)
  install(FILES ${packaging}/copyright ${changelog}.gz COMPONENT ${component}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_FILE_NAME DEB-DEFAULT)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
endforeach()
install(FILES ${packaging}/ii-ormaiac-emf.lintian-overrides COMPONENT plugin
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ii-ormaiac-emf)

# What is built is packed; without this, packing would build everything, the tests among it.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ii-ormaiac-emf)
set(CPACK_PACKAGE_CONTACT
    "ii_ormaiac_emf maintainers <maintainers@users.noreply.c-seed-9164cb56.example>")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
# The configuration lies outside the prefix, so everything is installed below DESTDIR.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/open_directories.cmake)

set(same_version "(= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# Each description below begins with its own summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_PLUGIN_DESCRIPTION "alarm, topology and resource queries for a northbound agent
The plug-in ii_ormaiac_emf gives the code of a northbound agent query
interfaces over a telecommunications network-management platform. With it
come open implementations of those libraries of the platform that it calls.")
set(CPACK_DEBIAN_DEV_DESCRIPTION "headers of the plug-in ii_ormaiac_emf
What code of a northbound agent builds against: the headers of the plug-in's
interface and of its platform libraries, a CMake package and a pkg-config file.")
set(CPACK_DEBIAN_AGENT_DESCRIPTION "host program of the plug-in ii_ormaiac_emf
The agent loads the services that its configuration names, answers queries on
the command line, and keeps the services loaded as a service of the system.")
set(CPACK_DEBIAN_SIMULATOR_DESCRIPTION "stand-in network for a northbound agent
The simulator makes networks, or reads them from GraphML files, and serves one
as the platform's services, for trying and testing an agent without a platform.")
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "ii-ormaiac-emf ${same_version}, libace-dev, libjsoncpp-dev")
set(CPACK_DEBIAN_PLUGIN_PACKAGE_CONTROL_EXTRA ${packaging}/triggers)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_AGENT_PACKAGE_DEPENDS "ii-ormaiac-emf ${same_version}")
set(CPACK_DEBIAN_AGENT_PACKAGE_SUGGESTS "graphviz, ormasim")
set(CPACK_DEBIAN_AGENT_PACKAGE_CONTROL_EXTRA
    ${packaging}/postinst ${packaging}/prerm ${packaging}/postrm ${packaging}/conffiles)
set(CPACK_DEBIAN_AGENT_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
