# emf_precompile(target header...)
# emf_precompile(target REUSE_FROM other)
# With EMF_PRECOMPILED_HEADERS, compiles headers that many sources of a target include once. The
# sources include what they use all the same.
function(emf_precompile target)
  if(NOT EMF_PRECOMPILED_HEADERS)
    return()
  endif()
  if(ARGV1 STREQUAL "REUSE_FROM")
    target_precompile_headers(${target} REUSE_FROM ${ARGV2})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
  # The compiler cache knows such headers by their content if it is told these.
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()
