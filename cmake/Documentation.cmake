# The target api-docs: pages about the public headers in api-docs/html of the build tree. Warnings are errors.
find_program(DOXYGEN_EXECUTABLE doxygen)
if(NOT DOXYGEN_EXECUTABLE)
    return()
endif()

list(JOIN SKINWIDGETS_PUBLIC_HEADERS " " DOCUMENTED_HEADERS)
configure_file(docs/api/Doxyfile.in ${CMAKE_BINARY_DIR}/Doxyfile @ONLY)
add_custom_target(api-docs
    COMMAND ${DOXYGEN_EXECUTABLE} ${CMAKE_BINARY_DIR}/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Writing the pages about the interface"
    VERBATIM
)
