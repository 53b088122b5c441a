# Install rules: the shared library, its C headers, a CMake package
# (find_package(QuillmapCore) gives QuillmapCore::QuillmapCore) and a
# pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS QuillmapCore EXPORT QuillmapCoreTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES include/quillmap/QuillmapCore.h include/quillmap/QuillmapTypes.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillmap)

set(QM_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/QuillmapCore)
install(EXPORT QuillmapCoreTargets NAMESPACE QuillmapCore:: DESTINATION ${QM_CMAKE_DIR})
configure_package_config_file(cmake/QuillmapCoreConfig.cmake.in
  ${PROJECT_BINARY_DIR}/QuillmapCoreConfig.cmake INSTALL_DESTINATION ${QM_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QuillmapCoreConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuillmapCoreConfig.cmake ${PROJECT_BINARY_DIR}/QuillmapCoreConfigVersion.cmake
  DESTINATION ${QM_CMAKE_DIR})

# Relative to the .pc file, so the installed tree can be moved.
file(RELATIVE_PATH QM_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" QM_PC_TO_PREFIX "${QM_PC_TO_PREFIX}")
configure_file(cmake/quillmapcore.pc.in ${PROJECT_BINARY_DIR}/quillmapcore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/quillmapcore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
