# What `cmake --install` puts in place: library, headers, package files and the data that ships.
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/SkinWidgets)

install(TARGETS SkinWidgets EXPORT SkinWidgetsTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/skinwidgets
)
install(EXPORT SkinWidgetsTargets NAMESPACE SkinWidgets:: DESTINATION ${package_dir})

configure_package_config_file(cmake/SkinWidgetsConfig.cmake.in SkinWidgetsConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(SkinWidgetsConfigVersion.cmake COMPATIBILITY SameMajorVersion)

# Paths are relative to the file, so that an installation can be made under another prefix, or moved.
file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH pc_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH pc_includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(pc_definitions "")
if(NOT BUILD_SHARED_LIBS)
    set(pc_definitions " -DSKINWIDGETS_STATIC")
endif()
configure_file(cmake/skinwidgets.pc.in skinwidgets.pc @ONLY)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/SkinWidgetsConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/SkinWidgetsConfigVersion.cmake
    DESTINATION ${package_dir}
)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/skinwidgets.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
foreach(data pics sounds)
    if(EXISTS ${PROJECT_SOURCE_DIR}/skins/${data})
        install(DIRECTORY skins/${data} DESTINATION ${CMAKE_INSTALL_DATADIR}/skinwidgets)
    endif()
endforeach()
