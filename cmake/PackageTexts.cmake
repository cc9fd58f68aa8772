# Run by CPack on the files of the package, before they are packed: what Debian wants of a package and an installation by
# hand does not.
set(share ${CPACK_TEMPORARY_DIRECTORY}/usr/share)
configure_file(${CPACK_LORVA_PACKAGING_DIR}/changelog ${share}/doc/lorva/changelog COPYONLY)
configure_file(${CPACK_LORVA_PACKAGING_DIR}/lintian-overrides ${share}/lintian/overrides/lorva COPYONLY)
file(GLOB pages ${share}/man/man1/*.1)
execute_process(COMMAND gzip -9n ${pages} ${share}/doc/lorva/changelog COMMAND_ERROR_IS_FATAL ANY)
