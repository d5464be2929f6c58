# What `cpack -G DEB` makes: the packages quillpress, libquillpress1 and libquillpress-dev, one of each component.

set(CPACK_PACKAGE_NAME quillpress)
set(CPACK_PACKAGE_VENDOR Quillpress)
set(CPACK_PACKAGE_CONTACT "Quillpress maintainers <maintainers@quillpress.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/Documents.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/Scripts.cmake)
# What that script needs to know.
set(CPACK_QUILLPRESS_SOURCES ${PROJECT_SOURCE_DIR})

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "convert PostScript jobs to PDF")
set(about "Quillpress reads PostScript of any program, LanguageLevel 1 to 3, and writes
small PDF files whose text can be searched and copied.")
set(CPACK_COMPONENTS_ALL program library development)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "${about}
.
This package contains the libraries for programs that embed it.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${about}
.
This package contains headers, static libraries, the CMake package
and the pkg-config files.")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "${about}
.
This package contains the command line, its manual page and completions.")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME quillpress)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "libquillpress1 (= ${PROJECT_VERSION})")
# The standard fonts, which many jobs name and do not carry.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS fonts-urw-base35)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libquillpress${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS fonts-urw-base35)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquillpress-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libquillpress${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}), libdeflate-dev, libjpeg-dev, liblcms2-dev, zlib1g-dev")

include(CPack)
