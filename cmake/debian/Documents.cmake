# Run by cpack on what each package is made of: adds what Debian wants in every package, and takes away what it does
# not want. https://www.debian.org/doc/debian-policy/ch-docs.html

string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog "quillpress (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * Packaged by the project itself; CHANGELOG.md has its changes.

 -- ${CPACK_PACKAGE_CONTACT}  ${now}
")
set(copyright "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: Quillpress

Files: *
Copyright: 2026 The Quillpress authors
License: Apache-2.0
 On Debian systems, the text of the Apache licence, version 2.0, is in
 /usr/share/common-licenses/Apache-2.0.
")

# The best that gzip can, and nothing of the day in the file.
function(compress)
  execute_process(COMMAND gzip -9 -n -f ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX})
  set(documents ${root}/share/doc/${package})
  # Packages have the licence by its name, and files that are read as they are.
  file(REMOVE ${documents}/LICENSE)
  file(WRITE ${documents}/copyright "${copyright}")
  file(WRITE ${documents}/changelog "${changelog}")
  compress(${documents}/changelog)
  file(GLOB manuals ${root}/share/man/man*/*.[1-9])
  if(manuals)
    compress(${manuals})
  endif()
  # The libraries are where every program looks.
  file(GLOB_RECURSE programs ${root}/bin/* ${root}/lib/cups/filter/* ${root}/lib/libquillpress-command.so.*)
  foreach(program IN LISTS programs)
    file(RPATH_REMOVE FILE ${program})
  endforeach()
  file(GLOB overrides ${CPACK_QUILLPRESS_SOURCES}/cmake/debian/${package}.overrides)
  if(overrides)
    configure_file(${overrides} ${root}/share/lintian/overrides/${package} COPYONLY)
  endif()
  # Whatever the mask of who builds them.
  file(GLOB_RECURSE files LIST_DIRECTORIES true ${root}/*)
  foreach(file IN LISTS files ITEMS ${root})
    if(NOT IS_SYMLINK ${file} AND (IS_DIRECTORY ${file} OR file MATCHES "/(bin|lib/cups/filter)/[^/]*$"))
      file(CHMOD ${file} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    elseif(NOT IS_SYMLINK ${file})
      file(CHMOD ${file} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    endif()
  endforeach()
endforeach()
