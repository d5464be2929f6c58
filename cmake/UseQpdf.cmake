# libqpdf as the target qpdf::libqpdf: Debian's library natively, the one of scripts/windows-libraries for Windows.

if(NOT WIN32)
  find_package(qpdf REQUIRED)
  return()
endif()

if(NOT TARGET qpdf::libqpdf)
  find_package(ZLIB REQUIRED)
  find_package(JPEG REQUIRED)
  find_path(QPDF_INCLUDE_DIR qpdf/QPDF.hh REQUIRED)
  find_library(QPDF_LIBRARY qpdf REQUIRED)
  add_library(qpdf::libqpdf STATIC IMPORTED GLOBAL)
  set_target_properties(qpdf::libqpdf PROPERTIES
    IMPORTED_LOCATION ${QPDF_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${QPDF_INCLUDE_DIR})
  target_link_libraries(qpdf::libqpdf INTERFACE JPEG::JPEG ZLIB::ZLIB)
endif()
