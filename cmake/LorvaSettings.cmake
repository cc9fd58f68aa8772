# Compiler settings, output folders and small helpers shared by all folders.

set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Tests link the product as one shared library, which has to show its symbols. The plug-in shows two (plugin/exports.map).
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
include(GNUInstallDirs)

# The build tree has the layout of an installation, so programs find plug-ins and resources alike in both.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(LORVA_PLUGIN_OUTPUT_DIR ${CMAKE_BINARY_DIR}/lib/lorva/plugins)
set(LORVA_LIBRARY_OUTPUT_DIR ${CMAKE_BINARY_DIR}/lib/lorva)
set(LORVA_DATA_OUTPUT_DIR ${CMAKE_BINARY_DIR}/share/lorva)
set(LORVA_PLUGIN_INSTALL_DIR lib/lorva/plugins)
set(LORVA_LIBRARY_INSTALL_DIR lib/lorva)
set(LORVA_DATA_INSTALL_DIR share/lorva)

add_library(lorva_settings INTERFACE)
target_compile_features(lorva_settings INTERFACE cxx_std_17)
set_target_properties(lorva_settings PROPERTIES INTERFACE_POSITION_INDEPENDENT_CODE ON)
target_include_directories(lorva_settings INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(lorva_settings INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_STRICT_ITERATORS
    QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)
target_compile_options(lorva_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual)
if(CMAKE_UNITY_BUILD)
    target_compile_options(lorva_settings INTERFACE -Wno-subobject-linkage) # takes source files for headers there
endif()
# Line numbers and functions in stack traces; all of the debug information took half of the build's time and nine tenths of its
# place on the disk. The preset "debug" has it.
target_compile_options(lorva_settings INTERFACE $<$<CONFIG:RelWithDebInfo>:-g1>)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # Nobody replaces our functions one by one: they may be inlined and called directly although the symbols are seen.
    target_compile_options(lorva_settings INTERFACE -fno-semantic-interposition)
endif()
if(LORVA_WARNINGS_AS_ERRORS)
    target_compile_options(lorva_settings INTERFACE -Werror)
endif()
if(LORVA_SANITIZE)
    # A report names lines and functions; optimising takes three times as long to compile as the tests save.
    string(APPEND CMAKE_CXX_FLAGS_DEBUG " -g1")
    target_compile_options(lorva_settings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(lorva_settings INTERFACE -fsanitize=address,undefined)
endif()
if(LORVA_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "LORVA_FUZZ needs clang: configure with -DCMAKE_CXX_COMPILER=clang++")
    endif()
    target_compile_options(lorva_settings INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(lorva_settings INTERFACE -fsanitize=address,undefined)
endif()

# Qt's headers are most of what a compilation costs. Off: every file proves that it includes what it uses.
option(LORVA_PRECOMPILED_HEADERS "Precompile the Qt headers that most files include" ON)
set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
if(LORVA_PRECOMPILED_HEADERS)
    set(CMAKE_DISABLE_PRECOMPILE_HEADERS OFF)
endif()

# Some hundred programs are linked; the gold linker takes a third of the time of the default one.
find_program(LORVA_GOLD_LINKER ld.gold)
mark_as_advanced(LORVA_GOLD_LINKER)
if(LORVA_GOLD_LINKER)
    target_link_options(lorva_settings INTERFACE -fuse-ld=gold)
endif()
