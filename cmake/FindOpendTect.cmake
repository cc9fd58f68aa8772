# Finds the development files of the OpendTect host in OpendTect_DIR: the folder of an installed development package,
# or of a built tree. Defines OpendTect::host (everything a plug-in with windows links) and
#   OpendTect_VERSION           the release found
#   OpendTect_LIBRARY_DIR_NAME  where its libraries lie, relative to the host's software folder
#   OpendTect_PLATFORM          the host's name of the platform


set(OpendTect_PLATFORM lux64)

set(version_header ${OpendTect_DIR}/include/Basic/odversion.h)
if(NOT EXISTS ${version_header})
    message(FATAL_ERROR "OpendTect_DIR (${OpendTect_DIR}) holds no development files of OpendTect: "
        "include/Basic/odversion.h is missing there. Give the folder of an installed development package of release "
        "${OpendTect_FIND_VERSION}, or that of a built tree.")
endif()

set(numbers)
foreach(part Major Minor Patch)
    file(STRINGS ${version_header} line REGEX "define[ \t]+mOD${part}Version[ \t]")
    string(REGEX MATCH "[0-9]+" number "${line}")
    list(APPEND numbers "${number}")
endforeach()
list(JOIN numbers "." OpendTect_VERSION)
if(NOT OpendTect_VERSION MATCHES "^${OpendTect_FIND_VERSION}\\.")
    message(FATAL_ERROR "OpendTect_DIR (${OpendTect_DIR}) holds OpendTect ${OpendTect_VERSION}; the plug-in needs a "
        "release ${OpendTect_FIND_VERSION}, the last series on Qt 5.")
endif()

# A package has all headers in one place; a built tree has the generated ones, and knows where the others are.
set(include_roots ${OpendTect_DIR}/include)
if(NOT EXISTS ${OpendTect_DIR}/include/Basic/commondefs.h)
    file(STRINGS ${OpendTect_DIR}/CMakeCache.txt line REGEX "^CMAKE_HOME_DIRECTORY:")
    string(REGEX REPLACE "^[^=]*=" "" source_dir "${line}")
    list(APPEND include_roots ${source_dir}/include)
endif()

unset(OpendTect_LIBRARY_DIR_NAME)
foreach(configuration Release RelWithDebInfo Debug)
    if(NOT OpendTect_LIBRARY_DIR_NAME
       AND EXISTS ${OpendTect_DIR}/bin/${OpendTect_PLATFORM}/${configuration}/libBasic.so)
        set(OpendTect_LIBRARY_DIR_NAME bin/${OpendTect_PLATFORM}/${configuration})
    endif()
endforeach()
if(NOT OpendTect_LIBRARY_DIR_NAME)
    message(FATAL_ERROR "OpendTect_DIR (${OpendTect_DIR}) holds headers of OpendTect, but no libraries: "
        "bin/${OpendTect_PLATFORM}/Release/libBasic.so is missing there.")
endif()
set(library_dir ${OpendTect_DIR}/${OpendTect_LIBRARY_DIR_NAME})

set(missing)
set(include_dirs)
set(libraries)
# Users stand before what they use.
foreach(module uiODMain uiBase Well General Algo Basic)
    foreach(root ${include_roots})
        if(IS_DIRECTORY ${root}/${module})
            list(APPEND include_dirs ${root}/${module})
        endif()
    endforeach()
    if(NOT EXISTS ${library_dir}/lib${module}.so)
        list(APPEND missing lib${module}.so)
    endif()
    if(NOT TARGET OpendTect::${module})
        add_library(OpendTect::${module} SHARED IMPORTED)
        set_target_properties(OpendTect::${module} PROPERTIES IMPORTED_LOCATION ${library_dir}/lib${module}.so)
    endif()
    list(APPEND libraries OpendTect::${module})
endforeach()
if(missing)
    list(JOIN missing ", " missing)
    message(FATAL_ERROR "The libraries of OpendTect in ${library_dir} are not complete: ${missing} missing.")
endif()

if(NOT TARGET OpendTect::host)
    add_library(OpendTect::host INTERFACE IMPORTED)
    # The host's headers are not written for our warnings; imported targets' headers count as the system's.
    target_include_directories(OpendTect::host SYSTEM INTERFACE ${include_dirs})
    target_compile_definitions(OpendTect::host INTERFACE __cmake__ __${OpendTect_PLATFORM}__=1)
    target_link_libraries(OpendTect::host INTERFACE ${libraries})
    # The libraries that the host's libraries need lie beside them.
    target_link_options(OpendTect::host INTERFACE LINKER:-rpath-link,${library_dir})
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpendTect REQUIRED_VARS OpendTect_DIR OpendTect_LIBRARY_DIR_NAME
    VERSION_VAR OpendTect_VERSION)
