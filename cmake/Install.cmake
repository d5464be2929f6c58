# What `cmake --install` puts in place: the library, its headers, the command line, and what must go with them.

include(GNUInstallDirs)

install(TARGETS quillpress
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/quillpress/converter.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillpress)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(WIN32)
  # Only the library for Windows has the driver's functions, and a launcher to print with.
  install(FILES include/quillpress/driver.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillpress)
  install(TARGETS twsmsnd RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
else()
  install(TARGETS quillpress_document LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(FILES include/quillpress/document.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillpress)
  # The command line finds the libraries beside it, wherever all are installed.
  file(RELATIVE_PATH libraryFolder /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(quillpress-cli PROPERTIES INSTALL_RPATH "$ORIGIN/${libraryFolder}")
  install(TARGETS quillpress-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  # What the build has made of the table of options, under the names by which man and shells look for it.
  set(manual ${PROJECT_BINARY_DIR}/share/quillpress)
  install(FILES ${manual}.man DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 RENAME quillpress.1)
  install(FILES ${manual}.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME quillpress)
  install(FILES ${manual}.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _quillpress)
  install(FILES ${manual}.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME quillpress.fish)
endif()
