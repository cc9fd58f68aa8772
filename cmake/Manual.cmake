# The manual: its pages for the workbench's own window, and LORVA_doc.pdf, which the plug-in's "Documentation" opens. The
# pictures in the PDF are taken by the programs of this build, so that they are never older than the windows. It takes seven
# seconds of one processor: a part of every optimised build, of others the target "manual".
set(doc_dir ${LORVA_DATA_OUTPUT_DIR}/doc)
set(work_dir ${CMAKE_BINARY_DIR}/manual)
set(pages_dir ${CMAKE_SOURCE_DIR}/docs/manual)
set(manual_pdf ${doc_dir}/LORVA_doc.pdf)
file(GLOB pages CONFIGURE_DEPENDS ${pages_dir}/*.md)

# The build tree gets links, so that a changed page needs no build step.
if(IS_SYMLINK ${doc_dir})
    file(REMOVE ${doc_dir})
endif()
file(MAKE_DIRECTORY ${doc_dir})
foreach(page ${pages})
    get_filename_component(name ${page} NAME)
    file(CREATE_LINK ${page} ${doc_dir}/${name} SYMBOLIC)
endforeach()

add_custom_command(OUTPUT ${work_dir}/pictures.stamp
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${work_dir}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${work_dir}
    COMMAND lorva-workbench --demo ${work_dir}/Demo > ${work_dir}/demo.log
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES=qt.qpa.*=false --unset=QT_SCALE_FACTOR
            $<TARGET_FILE:lorva-pictures> --documents ${work_dir}/Demo ${work_dir}/images > ${work_dir}/pictures.log
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${work_dir}/Demo
    COMMAND ${CMAKE_COMMAND} -E touch ${work_dir}/pictures.stamp
    DEPENDS lorva-workbench lorva-pictures LORVAOS
    COMMENT "Taking the pictures of the manual"
    VERBATIM)
add_custom_command(OUTPUT ${manual_pdf}
    COMMAND lorva-manual ${pages_dir} ${work_dir}/images ${manual_pdf} > ${work_dir}/manual.log
    DEPENDS lorva-manual ${work_dir}/pictures.stamp ${pages}
    COMMENT "Writing LORVA_doc.pdf"
    VERBATIM)
set(LORVA_BUILD_MANUAL OFF)
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND NOT LORVA_SANITIZE AND NOT LORVA_FUZZ)
    set(LORVA_BUILD_MANUAL ON)
endif()
if(LORVA_BUILD_MANUAL)
    add_custom_target(manual ALL DEPENDS ${manual_pdf})
else()
    add_custom_target(manual DEPENDS ${manual_pdf})
endif()

# What an installation has without the target "manual": the pages, and the pictures as they are in the sources.
install(FILES ${pages} DESTINATION ${LORVA_DATA_INSTALL_DIR}/doc)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/images/ DESTINATION ${LORVA_DATA_INSTALL_DIR}/images
    PATTERN "opendtect-*" EXCLUDE)
install(FILES ${manual_pdf} DESTINATION ${LORVA_DATA_INSTALL_DIR}/doc OPTIONAL)
if(OpendTect_DIR)
    install(FILES ${manual_pdf} DESTINATION doc COMPONENT opendtect OPTIONAL)
endif()
