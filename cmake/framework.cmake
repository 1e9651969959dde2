# Lays the sources out as a framework for the platform's own build tools; needs no compiler:
#
#   cmake -DOUT=<workspace> -P cmake/framework.cmake
#
# <workspace>/VornTools is written anew: identity card, exported headers, and one module with all sources in one folder.
# No file that the build tools write is among them.
cmake_minimum_required(VERSION 3.20)

include(${CMAKE_CURRENT_LIST_DIR}/Frameworks.cmake)

if(NOT OUT)
    message(FATAL_ERROR "usage: cmake -DOUT=<workspace> -P cmake/framework.cmake")
endif()
get_filename_component(OUT ${OUT} ABSOLUTE)
set(root ${VORNTOOLS_SOURCE_ROOT})
set(framework ${OUT}/VornTools)
set(module ${framework}/VornTools.m)
file(REMOVE_RECURSE ${framework})

vorntools_needed_of_workstation()

# The tools look for headers in these folders and not below them: all lie side by side, named without their folder.
set(names)
foreach(folder ${VORNTOOLS_LIBRARY_FOLDERS})
    file(GLOB files ${root}/${folder}/*.h ${root}/${folder}/*.cpp)
    foreach(file IN LISTS files)
        get_filename_component(name ${file} NAME)
        if(name IN_LIST names OR EXISTS ${root}/include/${name})
            message(FATAL_ERROR "two files are called ${name}")
        endif()
        list(APPEND names ${name})
        file(READ ${file} text)
        string(REGEX REPLACE "(#include \")[a-z]+/" "\\1" text "${text}")
        if(name MATCHES "[.]h$")
            file(WRITE ${module}/LocalInterfaces/${name} "${text}")
        else()
            file(WRITE ${module}/src/${name} "${text}")
        endif()
    endforeach()
endforeach()
file(GLOB headers ${root}/include/*.h)
file(COPY ${headers} DESTINATION ${framework}/PublicInterfaces)

vorntools_identity_card(card)
file(WRITE ${framework}/IdentityCard/IdentityCard.h "${card}")

# A line of the makefile takes as many libraries as fit into it.
set(link_with "LINK_WITH=")
set(width 10)
foreach(library IN LISTS needed_libraries)
    string(LENGTH "${library} " length)
    math(EXPR width "${width} + ${length}")
    if(width GREATER 110)
        string(APPEND link_with "\\\n          ")
        math(EXPR width "10 + ${length}")
    endif()
    string(APPEND link_with "${library} ")
endforeach()
string(STRIP "${link_with}" link_with)
file(WRITE ${module}/Imakefile.mk "\
BUILT_OBJECT_TYPE=SHARED LIBRARY

${link_with}

OS = win_b64
# The platform's guards stand for the language's exceptions, whose words stay as they are.
LOCAL_CCFLAGS=/std:c++17 /Zc:__cplusplus /EHsc /utf-8 -DNATIVE_EXCEPTION -D_CRT_SECURE_NO_WARNINGS
CXX_EXCEPTION=

OS = COMMON
")

foreach(name build.bat run.bat)
    configure_file(${root}/cmake/workstation/${name} ${OUT}/${name} @ONLY NEWLINE_STYLE CRLF)
endforeach()
