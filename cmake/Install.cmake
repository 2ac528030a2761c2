# What `cmake --install` puts in place: library, headers, package files and the data that ships.
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/SkinWidgets)

# The flags target holds nothing for users; a static library names it only for its own build.
install(TARGETS SkinWidgets SkinWidgetsBuildFlags EXPORT SkinWidgetsTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
)
install(EXPORT SkinWidgetsTargets NAMESPACE SkinWidgets:: DESTINATION ${package_dir})

foreach(folder IN LISTS SKINWIDGETS_FOLDERS)
    install(DIRECTORY ${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/skinwidgets FILES_MATCHING PATTERN "*.h")
endforeach()

configure_package_config_file(cmake/SkinWidgetsConfig.cmake.in SkinWidgetsConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(SkinWidgetsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
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
