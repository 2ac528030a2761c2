# The headers of the library's folders that belong to its interface: they are installed and documented. The others are
# for its own code and tests.
file(STRINGS cmake/private-headers.txt private_headers)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS cmake/private-headers.txt)
set(SKINWIDGETS_PUBLIC_HEADERS)
foreach(folder IN LISTS SKINWIDGETS_FOLDERS)
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${folder}/*.h)
    list(APPEND SKINWIDGETS_PUBLIC_HEADERS ${headers})
endforeach()
list(REMOVE_ITEM SKINWIDGETS_PUBLIC_HEADERS ${private_headers})
target_sources(SkinWidgets PUBLIC
    FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${SKINWIDGETS_PUBLIC_HEADERS})
