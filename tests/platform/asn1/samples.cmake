# The sequences and lists of the ASN.1 tests, which fuzz targets and benchmarks use, too.
include_guard(GLOBAL)
add_library(emf_asn1_samples STATIC EXCLUDE_FROM_ALL
  ${CMAKE_CURRENT_LIST_DIR}/codec.cpp ${CMAKE_CURRENT_LIST_DIR}/sample.cpp)
target_include_directories(emf_asn1_samples PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(emf_asn1_samples PUBLIC orma::asn1 PRIVATE emf_options)
