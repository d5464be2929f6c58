# What `cmake --install` puts in place, in the three components that packages are made of: the libraries, what programs
# are built with, and the command line.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(library COMPONENT library)
set(development COMPONENT development)
set(program COMPONENT program)

install(FILES include/quillpress/converter.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillpress ${development})
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/quillpress ${program})

if(WIN32)
  # Only the library for Windows has the driver's functions, and a launcher to print with.
  install(FILES include/quillpress/driver.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillpress ${development})
  install(TARGETS quillpress twsmsnd RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} ${program}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} ${development})
  if(TARGET quillpress-cli)
    install(TARGETS quillpress-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} ${program})
  endif()
  return()
endif()

install(FILES include/quillpress/document.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillpress ${development})
install(TARGETS quillpress quillpress_document quillpress_static quillpress_level3 EXPORT QuillpressTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ${library} NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} ${development}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# CMake strips no archives. Symbols stay, or nothing could be linked with them.
set(archives libquillpress.a libquillpress-document.a)
list(TRANSFORM archives PREPEND "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/")
install(CODE "
  if(CMAKE_INSTALL_DO_STRIP)
    execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-debug --remove-section=.comment --remove-section=.note
      --remove-section=.gnu.lto_* --remove-section=.gnu.debuglto_* ${archives} COMMAND_ERROR_IS_FATAL ANY)
  endif()" ${development})

set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/Quillpress)
install(EXPORT QuillpressTargets NAMESPACE Quillpress:: DESTINATION ${packageFolder} ${development})
configure_package_config_file(cmake/QuillpressConfig.cmake.in ${PROJECT_BINARY_DIR}/package/QuillpressConfig.cmake
  INSTALL_DESTINATION ${packageFolder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/QuillpressConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/QuillpressConfig.cmake
  ${PROJECT_BINARY_DIR}/package/QuillpressConfigVersion.cmake DESTINATION ${packageFolder} ${development})

# quillpress_install_pkg_config(NAME description libraries-of-a-static-program)
function(quillpress_install_pkg_config name description privateLibraries)
  set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH prefixFromPkgConfig /${folder} /)
  configure_file(cmake/quillpress.pc.in ${PROJECT_BINARY_DIR}/package/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/package/${name}.pc DESTINATION ${folder} ${development})
endfunction()
quillpress_install_pkg_config(quillpress "PostScript of a printer driver to PDF page content" "-lstdc++ -lm")
quillpress_install_pkg_config(quillpress-document "PostScript jobs to PDF files"
  "-llcms2 -ldeflate -ljpeg -lz -lstdc++ -lm")

# quillpress_find_libraries(target installed built): where the loader finds the libraries of a file that is installed in one
# folder, and how they lie in the build folder, wherever all of it is moved to. The linker writes both at once: CMake ends
# what it is to change later with an empty entry, and that is the current folder to a loader.
function(quillpress_find_libraries target installed built)
  file(RELATIVE_PATH relative /${installed} /${CMAKE_INSTALL_LIBDIR})
  set(folders "$ORIGIN/${built}" "$ORIGIN/${relative}")
  list(TRANSFORM folders REPLACE "/$" "")
  list(REMOVE_DUPLICATES folders)
  set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "${folders}")
endfunction()

if(QUILLPRESS_COMMAND_LINE)
  quillpress_find_libraries(quillpress-cli ${CMAKE_INSTALL_BINDIR} ../lib)
  install(TARGETS quillpress-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} ${program})
  quillpress_find_libraries(quillpress_command ${CMAKE_INSTALL_LIBDIR} "")
  install(TARGETS quillpress_command LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ${program} NAMELINK_SKIP)
  # CUPS has one folder for its filters on every machine.
  quillpress_find_libraries(quillpress-filter lib/cups/filter ../lib)
  install(TARGETS quillpress-filter RUNTIME DESTINATION lib/cups/filter ${program})
  install(FILES cli/cups/quillpress.convs DESTINATION ${CMAKE_INSTALL_DATADIR}/cups/mime ${program})
  install(FILES cli/cups/quillpress.ppd DESTINATION ${CMAKE_INSTALL_DATADIR}/ppd/quillpress ${program})
  # What the build has made of the table of options, under the names by which man and shells look for it.
  set(manual ${PROJECT_BINARY_DIR}/share/quillpress)
  install(FILES ${manual}.man DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 RENAME quillpress.1 ${program})
  install(FILES ${manual}.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME quillpress
    ${program})
  install(FILES ${manual}.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _quillpress ${program})
  install(FILES ${manual}.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME quillpress.fish
    ${program})
endif()
