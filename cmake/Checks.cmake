# Tests of the project as a whole.

if(BUILD_SHARED_LIBS)
    if(WIN32)
        set(exportingFile $<TARGET_LINKER_FILE:KIVKDXParseUtilities>)
    else()
        set(exportingFile $<TARGET_FILE:KIVKDXParseUtilities>)
        set(nmOptions --dynamic)
    endif()
    get_filename_component(binutils ${CMAKE_NM} DIRECTORY)
    find_program(KIV_CXXFILT NAMES c++filt HINTS ${binutils})
    add_test(NAME exports
        COMMAND ${CMAKE_COMMAND} -D NM=${CMAKE_NM} -D NM_OPTIONS=${nmOptions}
            -D CXXFILT=${KIV_CXXFILT} -D LIBRARY=${exportingFile}
            -D LIST=${PROJECT_SOURCE_DIR}/cmake/exports.txt
            -P ${PROJECT_SOURCE_DIR}/cmake/CheckExports.cmake)
endif()

if(CMAKE_CROSSCOMPILING)
    return()
endif()

add_test(NAME layers WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMAND ${CMAKE_COMMAND} -P cmake/CheckLayers.cmake)
# A project outside this tree, tests/consumer, gets at the library in each of four ways. It is
# installed for one prefix and moved to another, so that nothing may know where it lies.
set(consumerDir ${PROJECT_BINARY_DIR}/consumer)
set(installedPrefix ${consumerDir}/installed/opt/kiv)
add_test(NAME consumer.install
    COMMAND sh -c "rm -rf installed && DESTDIR=installed exec \"$@\"" install
        ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --prefix /opt/kiv)
file(MAKE_DIRECTORY ${consumerDir})
set_tests_properties(consumer.install PROPERTIES
    WORKING_DIRECTORY ${consumerDir} FIXTURES_SETUP installed)

function(kiv_add_consumer way)
    add_test(NAME consumer.${way}
        COMMAND ${CMAKE_CTEST_COMMAND}
            --build-and-test ${PROJECT_SOURCE_DIR}/tests/consumer ${consumerDir}/${way}
            --build-generator ${CMAKE_GENERATOR}
            --build-options
                -D WAY=${way}
                -D CMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
                "-DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS}"
                ${ARGN}
            --test-command consumer)
    set_tests_properties(consumer.${way} PROPERTIES FIXTURES_REQUIRED installed)
endfunction()

kiv_add_consumer(find_package -D CMAKE_PREFIX_PATH=${installedPrefix})
kiv_add_consumer(add_subdirectory -D KIV_SOURCE_DIR=${PROJECT_SOURCE_DIR})
kiv_add_consumer(own_external -D KIV_SOURCE_DIR=${PROJECT_SOURCE_DIR})
kiv_add_consumer(pkg_config)
set_tests_properties(consumer.pkg_config PROPERTIES
    ENVIRONMENT PKG_CONFIG_PATH=${installedPrefix}/${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(KIV_BUILD_TOOL)
    add_test(NAME consumer.tool
        COMMAND ${installedPrefix}/${CMAKE_INSTALL_BINDIR}/kdx --version)
    set_tests_properties(consumer.tool PROPERTIES FIXTURES_REQUIRED installed)
endif()
