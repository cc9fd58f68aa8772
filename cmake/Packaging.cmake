# What a desktop needs of an installation, and the Debian package: ./package makes it.
include(GNUInstallDirs)
set(packaging_dir ${CMAKE_SOURCE_DIR}/packaging)
install(FILES ${packaging_dir}/lorva-workbench.desktop DESTINATION share/applications)
install(FILES ${packaging_dir}/lorva-las.xml DESTINATION share/mime/packages)
install(FILES ${packaging_dir}/lorva-workbench.1 DESTINATION share/man/man1)
install(FILES ${packaging_dir}/copyright DESTINATION share/doc/lorva)
set(icons_dir share/icons/hicolor)
install(FILES ${CMAKE_SOURCE_DIR}/icons/src/LORVA_wlc.small.svg DESTINATION ${icons_dir}/scalable/apps
    RENAME lorva-workbench.svg)
install(FILES ${CMAKE_SOURCE_DIR}/icons/icons.Default/LORVA_wlc.small.png DESTINATION ${icons_dir}/16x16/apps
    RENAME lorva-workbench.png)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lorva)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The LORVA maintainers <maintainers@lorva.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Well-log interpretation: workbench, batch tool and plug-in")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Without the plug-in for OpendTect, which belongs into that program's own folder.
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};${PROJECT_NAME};Unspecified;/")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Opens survey folders of the OpendTect platform, manages their wells,
imports and exports LAS files, and shows well logs as depth-scaled
displays and correlation panels.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${LORVA_LIBRARY_OUTPUT_DIR})
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, qt5-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_LORVA_PACKAGING_DIR ${packaging_dir})
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/PackageTexts.cmake)
include(CPack)
