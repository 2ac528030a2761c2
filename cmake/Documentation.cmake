# The target api-docs: pages about the public headers in api-docs/html of the build tree. Warnings are errors.
file(STRINGS cmake/private-headers.txt SKINWIDGETS_PRIVATE_HEADERS)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS cmake/private-headers.txt)
find_program(DOXYGEN_EXECUTABLE doxygen)
if(NOT DOXYGEN_EXECUTABLE)
    return()
endif()

set(headers)
foreach(folder IN LISTS SKINWIDGETS_FOLDERS)
    file(GLOB more CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${folder}/*.h)
    list(APPEND headers ${more})
endforeach()
list(REMOVE_ITEM headers ${SKINWIDGETS_PRIVATE_HEADERS})
list(JOIN headers " " SKINWIDGETS_PUBLIC_HEADERS)
configure_file(docs/api/Doxyfile.in ${CMAKE_BINARY_DIR}/Doxyfile @ONLY)
add_custom_target(api-docs
    COMMAND ${DOXYGEN_EXECUTABLE} ${CMAKE_BINARY_DIR}/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Writing the pages about the interface"
    VERBATIM
)
