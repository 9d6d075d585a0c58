# Run by CPack between the installation into a folder of its own and the packing of it: what Debian asks of a package and
# nobody else needs. A changelog, a copyright file and the exceptions to its rules are added, manual pages compressed, and the
# licence is left out, which every Debian system has.

find_program(GZIP gzip REQUIRED)
set(source ${CMAKE_CURRENT_LIST_DIR}/../data/debian)
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(documents ${share}/doc/quillmark)

file(COPY_FILE ${source}/changelog ${documents}/changelog.Debian)
file(COPY_FILE ${source}/copyright ${documents}/copyright)
file(MAKE_DIRECTORY ${share}/lintian/overrides)
file(COPY_FILE ${source}/lintian-overrides ${share}/lintian/overrides/quillmark)
file(REMOVE ${documents}/LICENSE)
file(GLOB pages ${share}/man/man1/*.1)
execute_process(COMMAND ${GZIP} -9 -n -f ${documents}/changelog.Debian ${pages} COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD ${documents}/changelog.Debian.gz ${documents}/copyright ${share}/lintian/overrides/quillmark
     PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
