# Installs the library, its headers, its documents, and what CMake and pkg-config need to find it.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/KIVKDXParseUtilities)

install(TARGETS KIVKDXParseUtilities EXPORT KIVKDXParseUtilitiesTargets FILE_SET HEADERS)
set(kind static)
if(BUILD_SHARED_LIBS)
    set(kind shared)
endif()
install(EXPORT KIVKDXParseUtilitiesTargets NAMESPACE kiv:: DESTINATION ${packageDir}
    FILE KIVKDXParseUtilities-${kind}.cmake)
write_basic_package_version_file(KIVKDXParseUtilitiesConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES cmake/KIVKDXParseUtilitiesConfig.cmake
    ${PROJECT_BINARY_DIR}/KIVKDXParseUtilitiesConfigVersion.cmake DESTINATION ${packageDir})

# The pkg-config file finds the prefix from where it lies itself, so that the installed tree can be
# moved as a whole. An absolute folder takes the place of "${prefix}" and what else is before it.
set(pkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
    BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgConfigDir} OUTPUT_VARIABLE pathToPrefix)
cmake_path(APPEND libraryDir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND includeDir "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
if(NOT BUILD_SHARED_LIBS)
    set(staticDefine " -DKIVKDXPARSEUTILITIES_STATIC_DEFINE")
endif()
configure_file(cmake/KIVKDXParseUtilities.pc.in KIVKDXParseUtilities.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/KIVKDXParseUtilities.pc DESTINATION ${pkgConfigDir})

install(FILES README.md CHANGELOG.md SECURITY.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
