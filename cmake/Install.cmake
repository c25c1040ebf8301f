include(CMakePackageConfigHelpers)
string(REPLACE ";" " " RUNSIEVE_VTK_COMPONENTS_SPACED "${RUNSIEVE_VTK_COMPONENTS}")

install(TARGETS runsieve_core runsieve EXPORT RunsieveTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
foreach(header IN LISTS RUNSIEVE_PUBLIC_HEADERS)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/runsieve/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/runsieve/${folder})
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/include/runsieve/runsieve_export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/runsieve)
install(FILES ${PROJECT_BINARY_DIR}/include/runsieve/core/runsieve_core_export.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/runsieve/core)

set(_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Runsieve)
install(EXPORT RunsieveTargets NAMESPACE Runsieve:: DESTINATION ${_config_dir})
configure_package_config_file(cmake/RunsieveConfig.cmake.in ${PROJECT_BINARY_DIR}/RunsieveConfig.cmake
                              INSTALL_DESTINATION ${_config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/RunsieveConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/RunsieveConfig.cmake ${PROJECT_BINARY_DIR}/RunsieveConfigVersion.cmake
        DESTINATION ${_config_dir})
if(RUNSIEVE_APP)
  install(TARGETS runsieve_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(TARGETS runsieve_desk LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/runsieve)
  # For the menus and the file manager of a desktop.
  set(_desktop ${PROJECT_SOURCE_DIR}/app/desktop/org.runsieve.Runsieve)
  install(FILES ${_desktop}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${_desktop}.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES ${_desktop}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
