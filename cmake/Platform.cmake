# VornTools::platform is what the library compiles against and runs on: the in-memory platform of embedded/, or the
# headers and libraries of a workstation.

if(VORNTOOLS_PLATFORM STREQUAL embedded)
    # Defined by embedded/CMakeLists.txt.
elseif(VORNTOOLS_PLATFORM STREQUAL catia)
    set(CAA_INCLUDE_DIRS "" CACHE STRING "Header folders of CATIA V5")
    set(CAA_LIBRARIES "" CACHE STRING "Import libraries of CATIA V5")
    set(COMPANION_INCLUDE_DIRS "" CACHE STRING "Header folders of the companion libraries")
    set(COMPANION_LIBRARIES "" CACHE STRING "Import libraries of the companion libraries")
    foreach(folders CAA_INCLUDE_DIRS COMPANION_INCLUDE_DIRS)
        if(NOT ${folders})
            message(FATAL_ERROR "VORNTOOLS_PLATFORM=catia needs ${folders}: the folders that hold the headers")
        endif()
    endforeach()
    add_library(VornTools_platform INTERFACE)
    add_library(VornTools::platform ALIAS VornTools_platform)
    target_include_directories(VornTools_platform SYSTEM INTERFACE
        "$<BUILD_INTERFACE:${CAA_INCLUDE_DIRS}>" "$<BUILD_INTERFACE:${COMPANION_INCLUDE_DIRS}>")
    target_link_libraries(VornTools_platform INTERFACE
        "$<BUILD_INTERFACE:${COMPANION_LIBRARIES}>" "$<BUILD_INTERFACE:${CAA_LIBRARIES}>")
    set_target_properties(VornTools_platform PROPERTIES EXPORT_NAME platform)
else()
    message(FATAL_ERROR "VORNTOOLS_PLATFORM is '${VORNTOOLS_PLATFORM}'; it can be embedded or catia")
endif()
