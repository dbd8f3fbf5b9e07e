# The Debian packages, one of each component: `cpack` in the build folder of the preset `packages` or `packages-arm64`.
# A file that is installed with a component is in its package. Multi-Arch is written by CMake 3.31 and later.
if(NOT ZEB5XML_COMMAND)
    message(FATAL_ERROR "ZEB5XML_PACKAGES: the command is one of the packages, and ZEB5XML_COMMAND is off")
endif()

set(ZEB5XML_PACKAGER "libZEB5XML maintainers <zeb5xml@example.org>" CACHE STRING "Who answers for the packages, with an address")

set(zeb5_package_runtime libzeb5xml${PROJECT_VERSION_MAJOR})
set(zeb5_package_development libzeb5xml-dev)
set(zeb5_package_command zeb5xml)
set(zeb5_package_python python3-zeb5xml)

set(zeb5_about "Channel descriptions, event lists, env index dictionaries and camera
features become plain records, and records become documents.")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zeb5xml)
set(CPACK_PACKAGE_CONTACT ${ZEB5XML_PACKAGER})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development command)
if(ZEB5XML_PYTHON)
    list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_COMMAND_DEPENDS runtime)
set(CPACK_COMPONENT_PYTHON_DEPENDS runtime command)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib ${PROJECT_BINARY_DIR}/library/daq/XML_tools)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
if(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
endif()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_MULTIARCH same)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${zeb5_about}
This package has the shared libraries.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_MULTIARCH same)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libxerces-c-dev (>= 3.2)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${zeb5_about}
This package has what compiling and linking with the libraries need.")

set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION science)
set(CPACK_DEBIAN_COMMAND_PACKAGE_MULTIARCH foreign)
set(CPACK_COMPONENT_COMMAND_DESCRIPTION "${zeb5_about}
This package has the zeb5xml command: it lists, converts and checks them.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS ${zeb5_needed_python})
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS python3-pandas)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/python3-zeb5xml/prerm)
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "${zeb5_about}
This package has the Python module, which also gives them as data frames.")

# Every package has the change log that Debian asks for.
string(TIMESTAMP zeb5_package_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(zeb5_debian_changelog ${PROJECT_BINARY_DIR}/changelog.Debian)
configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.Debian.in ${zeb5_debian_changelog} @ONLY)
execute_process(COMMAND gzip -9nfk ${zeb5_debian_changelog} COMMAND_ERROR_IS_FATAL ANY)
foreach(component ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${zeb5_package_${component}})
    install(FILES ${zeb5_debian_changelog}.gz COMPONENT ${component}
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${zeb5_package_${component}})
endforeach()

include(CPack)
