# Installation, the CMake package, pkg-config and the packages of CPack.

include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VornTools)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/VornTools)

set(installed_targets VornTools)
if(VORNTOOLS_PLATFORM STREQUAL embedded)
    list(APPEND installed_targets vorn_platform)
    foreach(part catia companion)
        install(DIRECTORY platform/${part} DESTINATION ${header_dir}/platform COMPONENT dev FILES_MATCHING PATTERN *.h)
    endforeach()
    install(DIRECTORY embedded/include/embedded DESTINATION ${header_dir} COMPONENT dev FILES_MATCHING PATTERN *.h)
else()
    # The workstation's own headers and libraries stay where they are: its projects name them themselves.
    list(APPEND installed_targets VornTools_platform)
endif()
install(TARGETS ${installed_targets} EXPORT VornTools
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(DIRECTORY include/ DESTINATION ${header_dir} COMPONENT dev FILES_MATCHING PATTERN *.h)

install(EXPORT VornTools NAMESPACE VornTools:: FILE VornToolsTargets.cmake DESTINATION ${config_dir} COMPONENT dev)
configure_package_config_file(cmake/VornToolsConfig.cmake.in ${PROJECT_BINARY_DIR}/VornToolsConfig.cmake
    INSTALL_DESTINATION ${config_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VornToolsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VornToolsConfig.cmake ${PROJECT_BINARY_DIR}/VornToolsConfigVersion.cmake
    DESTINATION ${config_dir} COMPONENT dev)

if(VORNTOOLS_PLATFORM STREQUAL embedded)
    # The prefix is found from the file's own place: the tree may be moved.
    file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    configure_file(cmake/VornTools.pc.in ${PROJECT_BINARY_DIR}/VornTools.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/VornTools.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endif()

# As in the sources, so that their links hold.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs)
install(FILES platform/README.md platform/frameworks.txt DESTINATION ${CMAKE_INSTALL_DOCDIR}/platform COMPONENT docs)
install(FILES bench/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/bench COMPONENT docs OPTIONAL)

# A tree to concatenate with a workstation's own: cmake --install <build folder> --component seat --prefix <tree>
if(VORNTOOLS_PLATFORM STREQUAL catia)
    install(TARGETS VornTools
        RUNTIME DESTINATION ${CATIA_OS}/code/bin COMPONENT seat EXCLUDE_FROM_ALL
        LIBRARY DESTINATION ${CATIA_OS}/code/bin COMPONENT seat EXCLUDE_FROM_ALL
        ARCHIVE DESTINATION ${CATIA_OS}/code/lib COMPONENT seat EXCLUDE_FROM_ALL)
    install(DIRECTORY include/ DESTINATION VornTools/PublicInterfaces COMPONENT seat EXCLUDE_FROM_ALL
        FILES_MATCHING PATTERN *.h)
    vorntools_identity_card(identity_card)
    file(WRITE ${PROJECT_BINARY_DIR}/IdentityCard.h "${identity_card}")
    install(FILES ${PROJECT_BINARY_DIR}/IdentityCard.h DESTINATION VornTools/IdentityCard COMPONENT seat EXCLUDE_FROM_ALL)
    install(FILES cmake/workstation/VornTools.txt DESTINATION CATEnv COMPONENT seat EXCLUDE_FROM_ALL)
endif()

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()

set(CPACK_PACKAGE_CONTACT "VornTools maintainers <maintainers@vorntools.invalid>")
set(CPACK_PACKAGE_VENDOR VornTools)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages-out)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime dev tools docs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Services that connect CATIA V5 sessions to a PDM server: the libraries")
set(CPACK_COMPONENT_DEV_DESCRIPTION "Services that connect CATIA V5 sessions to a PDM server: headers and build files")
set(CPACK_COMPONENT_DEV_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Services that connect CATIA V5 sessions to a PDM server: the command line")
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_COMPONENT_DOCS_DESCRIPTION "Services that connect CATIA V5 sessions to a PDM server: the pages")
set(CPACK_GENERATOR ZIP)
if(NOT WIN32)
    list(APPEND CPACK_GENERATOR DEB)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    # A package a component; the archive of the other generator holds all of them.
    set(CPACK_DEB_COMPONENT_INSTALL ON)
    set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvorntools${PROJECT_VERSION_MAJOR})
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_DEV_PACKAGE_NAME libvorntools-dev)
    set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME vorntools)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
    set(CPACK_DEBIAN_DOCS_PACKAGE_NAME vorntools-doc)
    set(CPACK_DEBIAN_DOCS_PACKAGE_SECTION doc)
    set(CPACK_DEBIAN_DOCS_PACKAGE_ARCHITECTURE all)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
endif()
include(CPack)
