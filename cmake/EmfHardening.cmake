# Hardening of the optimised configurations, for every target below. A debug build goes without, as
# does an instrumented one: the sanitizers' own checks and _FORTIFY_SOURCE exclude each other.
include_guard(GLOBAL)
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

# Makes CMAKE_POSITION_INDEPENDENT_CODE hold for the linking of programs, too.
check_pie_supported(LANGUAGES CXX)

set(emf_hardened $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
if(NOT EMF_SANITIZE AND NOT EMF_COVERAGE)
  # A compiler that defines _FORTIFY_SOURCE by itself would warn about a second definition.
  add_compile_options("$<${emf_hardened}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER EMF_HAS${flag} known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      add_compile_options("$<${emf_hardened}:${flag}>")
    endif()
  endforeach()
  add_link_options("$<${emf_hardened}:LINKER:-z,relro,-z,now>")
endif()
