# Installs the library, its headers, and what CMake and pkg-config need to find it.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/KIVKDXParseUtilities)

install(TARGETS KIVKDXParseUtilities EXPORT KIVKDXParseUtilitiesTargets FILE_SET HEADERS)
install(EXPORT KIVKDXParseUtilitiesTargets NAMESPACE kiv:: DESTINATION ${packageDir}
    FILE KIVKDXParseUtilitiesConfig.cmake)
write_basic_package_version_file(KIVKDXParseUtilitiesConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KIVKDXParseUtilitiesConfigVersion.cmake
    DESTINATION ${packageDir})

configure_file(cmake/KIVKDXParseUtilities.pc.in KIVKDXParseUtilities.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/KIVKDXParseUtilities.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
