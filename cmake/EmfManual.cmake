# emf_add_manual_page(program component word page)
# Has the program write a manual page, by its hidden option --generate, and installs it compressed.
function(emf_add_manual_page program component word page)
  set(file ${CMAKE_BINARY_DIR}/share/man/${page})
  add_custom_command(OUTPUT ${file} ${file}.gz
    DEPENDS ${program}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/share/man
    COMMAND ${program} --generate ${word} > ${file}
    # Without name and time, so that the same text gives the same file.
    COMMAND gzip -9 -n -k -f ${file}
    COMMENT "Writing the manual page ${page}" VERBATIM)
  add_custom_target(${program}_${word} ALL DEPENDS ${file})
  string(REGEX MATCH "[0-9]$" section ${page})
  install(FILES ${file}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section}
    COMPONENT ${component})
endfunction()

# emf_add_manual(program component)
# The program's page of section 1 and its completion for bash.
function(emf_add_manual program component)
  emf_add_manual_page(${program} ${component} man ${program}.1)
  set(file ${CMAKE_BINARY_DIR}/share/bash-completion/completions/${program})
  add_custom_command(OUTPUT ${file}
    DEPENDS ${program}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/share/bash-completion/completions
    COMMAND ${program} --generate bash > ${file}
    COMMENT "Writing the completion of ${program}" VERBATIM)
  add_custom_target(${program}_bash ALL DEPENDS ${file})
  install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    COMPONENT ${component})
endfunction()
