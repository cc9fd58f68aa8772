# Run at installation: puts the pictures of ${source} into the data folder of the OpendTect host.
set(data ${CMAKE_INSTALL_PREFIX}/data) # file(INSTALL) puts DESTDIR before it
set(found_data $ENV{DESTDIR}${data})

# Some pictures go by names that the host uses too; its own stay as they are.
file(GLOB pictures ${source}/icons.Default/*.png)
foreach(picture ${pictures})
    get_filename_component(file_name ${picture} NAME)
    get_filename_component(name ${picture} NAME_WE)
    set(is_present FALSE)
    if(EXISTS ${found_data}/icons.Default/${file_name}
       OR (file_name MATCHES "\\.small\\.png$" AND EXISTS ${found_data}/icons.Default/${name}.png))
        set(is_present TRUE)
    endif()
    if(name MATCHES "_wlc$" OR NOT is_present)
        list(APPEND chosen ${picture})
    endif()
endforeach()
file(INSTALL ${chosen} DESTINATION ${data}/icons.Default)

# Both spellings of this folder are in use.
file(INSTALL ${source}/ColorBars DESTINATION ${data})
set(other_spelling ${found_data}/Colorbars)
if(IS_DIRECTORY ${other_spelling} AND NOT IS_SYMLINK ${other_spelling})
    file(INSTALL ${source}/ColorBars/ DESTINATION ${data}/Colorbars)
else()
    file(CREATE_LINK ColorBars ${other_spelling} SYMBOLIC)
endif()
