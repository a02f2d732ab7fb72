# Run by CPack over what is about to be packed: its directories are for everybody to read, whatever
# the umask of the user who packs. Files have their permissions from the rules that install them.
file(GLOB_RECURSE entries LIST_DIRECTORIES true "${CPACK_TEMPORARY_DIRECTORY}/*")
foreach(entry IN LISTS entries)
  if(IS_DIRECTORY "${entry}" AND NOT IS_SYMLINK "${entry}")
    file(CHMOD "${entry}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                    WORLD_READ WORLD_EXECUTE)
  endif()
endforeach()
