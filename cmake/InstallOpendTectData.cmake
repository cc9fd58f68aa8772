# Run at installation: puts the pictures of ${source} into the data folder of the OpendTect host.
set(data ${CMAKE_INSTALL_PREFIX}/data) # file(INSTALL) puts DESTDIR before it
set(found_data $ENV{DESTDIR}${data})

# Whether that picture there is the host's: not one that an earlier installation put there.
function(is_foreign file_name result)
    set(there ${found_data}/icons.Default/${file_name})
    set(ours ${source}/icons.Default/${file_name})
    set(foreign FALSE)
    if(EXISTS ${there})
        set(foreign TRUE)
        if(EXISTS ${ours})
            file(SHA256 ${there} hash_there)
            file(SHA256 ${ours} hash_ours)
            if(hash_there STREQUAL hash_ours)
                set(foreign FALSE)
            endif()
        endif()
    endif()
    set(${result} ${foreign} PARENT_SCOPE)
endfunction()

# Some pictures go by names that the host uses too; its own stay as they are.
file(GLOB pictures ${source}/icons.Default/*.png)
foreach(picture ${pictures})
    get_filename_component(file_name ${picture} NAME)
    get_filename_component(name ${picture} NAME_WE)
    is_foreign(${file_name} is_present)
    if(NOT is_present AND file_name MATCHES "\\.small\\.png$")
        is_foreign(${name}.png is_present)
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
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES ${data}/Colorbars) # what a removal goes by
endif()
