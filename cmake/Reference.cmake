# The API reference as HTML: cmake --build <folder> --target reference. Where Doxygen or Python is missing nothing is
# made, which is no error: packages are made without it.

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()
find_program(VORNTOOLS_DOXYGEN doxygen)
find_program(VORNTOOLS_PYTHON python3)
set(reference_dir ${PROJECT_BINARY_DIR}/reference)
if(VORNTOOLS_DOXYGEN AND VORNTOOLS_PYTHON)
    add_custom_target(reference
        COMMAND ${VORNTOOLS_PYTHON} ${PROJECT_SOURCE_DIR}/cmake/make_reference.py
            "$<$<BOOL:${VORNTOOLS_DEVELOPER}>:--check>" --doxygen ${VORNTOOLS_DOXYGEN} ${reference_dir}
        COMMENT "Making the API reference" COMMAND_EXPAND_LISTS VERBATIM)
else()
    add_custom_target(reference
        COMMAND ${CMAKE_COMMAND} -E echo "No API reference: Doxygen or Python is missing" VERBATIM)
endif()
install(DIRECTORY ${reference_dir}/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs OPTIONAL)
