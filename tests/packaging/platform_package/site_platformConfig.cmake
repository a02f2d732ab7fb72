# A site's own platform: the targets that the plug-in links, under the names that it asks for. Here
# they come from an installed tree.
include(CMakeFindDependencyMacro)
find_dependency(ii_ormaiac_emf)
foreach(module access asn1 bundle channel dao ident log refl rest southbound text)
  add_library(orma::${module} ALIAS ii_ormaiac_emf::${module})
endforeach()
