# Run by cpack on the finished packages: CPack gives those with libraries scripts that call ldconfig, where Debian has a
# trigger, which is in the packages too. https://www.debian.org/doc/debian-policy/ch-sharedlibs.html

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(folder ${package}.contents)
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS ${folder}/DEBIAN/triggers)
    file(REMOVE ${folder}/DEBIAN/postinst ${folder}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group --build ${folder} ${package} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
  file(REMOVE_RECURSE ${folder})
endforeach()
