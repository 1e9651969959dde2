# VornTools::platform is what the library compiles against and runs on: the in-memory platform of embedded/, or the
# headers and libraries of a workstation.

if(VORNTOOLS_PLATFORM STREQUAL embedded)
    # Defined by embedded/CMakeLists.txt.
elseif(VORNTOOLS_PLATFORM STREQUAL catia)
    include(Workstation)
else()
    message(FATAL_ERROR "VORNTOOLS_PLATFORM is '${VORNTOOLS_PLATFORM}'; it can be embedded or catia")
endif()
