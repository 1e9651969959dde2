# Packages that the embedded platform, the command line, the tests and the benchmarks use. The library uses none.

# vorntools_header_package(<target> <folder>): a header-only package of the build machine for a cross compile. Its
# folder is copied into the build tree, since the build machine's own headers must stay out of sight.
function(vorntools_header_package target folder)
    find_path(include_dir ${folder} PATHS /usr/include /usr/local/include
        NO_CACHE NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    file(COPY ${include_dir}/${folder} DESTINATION ${PROJECT_BINARY_DIR}/packages)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/packages)
endfunction()

if(CMAKE_CROSSCOMPILING)
    vorntools_header_package(nlohmann_json::nlohmann_json nlohmann)
    if(VORNTOOLS_TOOLS)
        vorntools_header_package(CLI11::CLI11 CLI)
    endif()
    if(VORNTOOLS_DEVELOPER)
        set(INSTALL_GTEST OFF)
        set(BUILD_GMOCK OFF)
        add_subdirectory(/usr/src/googletest packages/googletest EXCLUDE_FROM_ALL SYSTEM)
    endif()
else()
    find_package(nlohmann_json 3.11 REQUIRED)
    if(VORNTOOLS_TOOLS)
        find_package(CLI11 2.1 REQUIRED)
    endif()
    if(VORNTOOLS_DEVELOPER)
        find_package(GTest REQUIRED)
    endif()
    if(VORNTOOLS_BENCHMARKS)
        find_package(benchmark REQUIRED)
    endif()
endif()

# Spreadsheets of design tables: xlsx and xlsm are read where the packages for them are found, the others always. Sets
# VORNTOOLS_READS_XLSX.
function(vorntools_find_spreadsheet_packages)
    set(VORNTOOLS_READS_XLSX OFF PARENT_SCOPE)
    if(VORNTOOLS_SPREADSHEETS AND NOT CMAKE_CROSSCOMPILING)
        find_path(LIBZIP_INCLUDE_DIR zip.h)
        find_library(LIBZIP_LIBRARY zip)
        find_package(pugixml QUIET)
        mark_as_advanced(LIBZIP_INCLUDE_DIR LIBZIP_LIBRARY)
        if(LIBZIP_INCLUDE_DIR AND LIBZIP_LIBRARY AND pugixml_FOUND)
            set(VORNTOOLS_READS_XLSX ON PARENT_SCOPE)
        endif()
    endif()
endfunction()
