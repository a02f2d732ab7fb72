# What the host program and the simulator stand on, beside the platform's libraries.
include_guard(GLOBAL)
set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
find_package(CLI11 REQUIRED)
find_package(pugixml REQUIRED)
find_package(SQLite3 REQUIRED)
pkg_check_modules(HTTPLIB REQUIRED IMPORTED_TARGET GLOBAL cpp-httplib)
pkg_check_modules(SYSTEMD REQUIRED IMPORTED_TARGET GLOBAL libsystemd)
