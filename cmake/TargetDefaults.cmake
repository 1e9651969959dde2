# What every target of ours has in common.

find_program(VORNTOOLS_CCACHE ccache)
if(PROJECT_IS_TOP_LEVEL AND VORNTOOLS_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Build folders of one checkout share their entries: only the recorded folders would differ.
    if(CMAKE_HOST_UNIX)
        set(base_dir ${PROJECT_SOURCE_DIR})
        if(DEFINED ENV{CCACHE_BASEDIR})
            set(base_dir $ENV{CCACHE_BASEDIR})
        endif()
        set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=${base_dir} ${VORNTOOLS_CCACHE})
    else()
        set(CMAKE_CXX_COMPILER_LAUNCHER ${VORNTOOLS_CCACHE})
    endif()
endif()

# Language level, warnings, sanitizers, hidden symbols.
function(vorntools_target_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    if(MSVC)
        # A workstation's headers are not ours to mend.
        if(NOT VORNTOOLS_PLATFORM STREQUAL catia)
            target_compile_options(${target} PRIVATE /permissive-)
        endif()
        target_compile_options(${target} PRIVATE /W4 /utf-8 /Zc:__cplusplus $<$<BOOL:${VORNTOOLS_DEVELOPER}>:/WX>)
        target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS)
        return()
    endif()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
        $<$<BOOL:${VORNTOOLS_DEVELOPER}>:-Werror>)
    if(VORNTOOLS_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
    if(VORNTOOLS_LIBFUZZER)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
    if(MINGW)
        # The runtime goes into each module: nothing has to be shipped beside it.
        target_link_options(${target} PRIVATE -static)
    endif()
endfunction()

# vorntools_unity_by_folder(<target> [EXCEPT <source>...]): with VORNTOOLS_UNITY the target's sources of one folder are
# compiled as one, which takes less than half the time. So what stands in unnamed namespaces has a name of its own within
# its folder; sources that share one with a neighbour are compiled by themselves.
function(vorntools_unity_by_folder target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" EXCEPT)
    if(NOT VORNTOOLS_UNITY)
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${source}/..)
        string(MAKE_C_IDENTIFIER "${folder}" group)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
        # The macros of this header are for no other source.
        file(STRINGS ${source} system_header REGEX "windows[.]h")
        if(system_header)
            list(APPEND arg_EXCEPT ${source})
        endif()
    endforeach()
    # It takes every source but the one that includes the others for a header.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    set_source_files_properties(${arg_EXCEPT} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# vorntools_shared_library(<target> DESCRIPTION <text> [VERSION_SCRIPT <file>]): names, versions and exports.
function(vorntools_shared_library target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION;VERSION_SCRIPT" "")
    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
        set(name ${target})
    endif()
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "")
        set(version_name ${name})
        set(version_description ${arg_DESCRIPTION})
        string(REPLACE "." "," version_numbers ${PROJECT_VERSION},0)
        enable_language(RC)
        configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${PROJECT_BINARY_DIR}/${name}.rc @ONLY)
        target_sources(${target} PRIVATE ${PROJECT_BINARY_DIR}/${name}.rc)
    elseif(UNIX AND NOT APPLE)
        # A sanitizer's functions and a workstation's libraries come in at load time.
        if(NOT VORNTOOLS_SANITIZE AND NOT VORNTOOLS_PLATFORM STREQUAL catia)
            target_link_options(${target} PRIVATE -Wl,-z,defs)
        endif()
        if(arg_VERSION_SCRIPT)
            target_link_options(${target} PRIVATE -Wl,--version-script=${arg_VERSION_SCRIPT})
            set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${arg_VERSION_SCRIPT})
        endif()
        set_target_properties(${target} PROPERTIES INSTALL_RPATH $ORIGIN)
    endif()
endfunction()

# What programs of ours add: they find the libraries in the installed tree wherever it lies.
function(vorntools_program target)
    vorntools_target_defaults(${target})
    if(UNIX AND NOT APPLE)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
    endif()
endfunction()

# How a program that was built here names a folder of the build machine: Wine maps the root folder to Z:.
if(WIN32 AND CMAKE_CROSSCOMPILING)
    set(VORNTOOLS_HOST_ROOT Z:)
else()
    set(VORNTOOLS_HOST_ROOT "")
endif()
