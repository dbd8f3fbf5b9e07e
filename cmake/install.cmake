# What is installed and where. Each part is a component: `runtime` (the libraries), `development` (what compiling and
# linking need), `command` and, from its own folder, `python`.
include(CMakePackageConfigHelpers)

foreach(folder CMAKE_INSTALL_BINDIR CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR ZEB5XML_PYTHON_FOLDER)
    if(IS_ABSOLUTE "${${folder}}")
        message(FATAL_ERROR "${folder}: ${${folder}} must be relative to the prefix, as an installed copy may be moved")
    endif()
endforeach()

set(zeb5_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZEB5XML)
set(zeb5_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

list(TRANSFORM zeb5_public_headers PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE zeb5_header_paths)
install(FILES ${zeb5_header_paths} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ZEB5XML COMPONENT development)

# A site installs its own event-utility library by itself. The package and the search path in the libraries then refer
# to the place that it had when they were built.
set(zeb5_installed_libraries ZEB5XML)
if(NOT ZEB5XML_EVUTL)
    list(APPEND zeb5_installed_libraries ZEB5evutl)
endif()
install(TARGETS ${zeb5_installed_libraries} EXPORT ZEB5XMLTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# find_libraries_from(FOLDER COMPONENT TARGET): what is installed there finds the libraries from its own place. The loader
# searches the system's folders by itself; only when something is installed is it known whether it goes there.
function(find_libraries_from folder component target)
    file(RELATIVE_PATH way /${folder} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${way}" INSTALL_RPATH_USE_LINK_PATH ON)
    install(CODE "
        if(CMAKE_INSTALL_PREFIX MATCHES \"^/usr(/local)?/?\$\")
            set(installed \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${folder}/$<TARGET_FILE_NAME:${target}>\")
            file(READ_ELF \"\${installed}\" RUNPATH path)
            if(path MATCHES \"^.ORIGIN[^;]*\$\")
                file(RPATH_REMOVE FILE \"\${installed}\")
            endif()
        endif()" COMPONENT ${component})
endfunction()
foreach(library ${zeb5_installed_libraries})
    find_libraries_from(${CMAKE_INSTALL_LIBDIR} runtime ${library})
endforeach()
if(ZEB5XML_COMMAND)
    install(TARGETS zeb5xml RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)
    find_libraries_from(${CMAKE_INSTALL_BINDIR} command zeb5xml)
endif()
if(ZEB5XML_PYTHON)
    find_libraries_from(${zeb5_python_folder}/zeb5xml python zeb5_python_module) # python/CMakeLists.txt installs it
endif()

install(EXPORT ZEB5XMLTargets NAMESPACE ZEB5XML:: DESTINATION ${zeb5_package_dir} COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ZEB5XMLConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZEB5XMLConfig.cmake INSTALL_DESTINATION ${zeb5_package_dir}
    PATH_VARS CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZEB5XMLConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZEB5XMLConfig.cmake ${PROJECT_BINARY_DIR}/ZEB5XMLConfigVersion.cmake
    DESTINATION ${zeb5_package_dir} COMPONENT development)

# The files for pkg-config find the prefix from their own place, as an installed copy may be moved.
file(RELATIVE_PATH zeb5_pkgconfig_to_prefix /${zeb5_pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" zeb5_pkgconfig_to_prefix ${zeb5_pkgconfig_to_prefix})
set(zeb5_evutl_link "-L\${libdir} -lZEB5evutl")
if(ZEB5XML_EVUTL)
    string(REPLACE " " "\\ " zeb5_evutl_link "${ZEB5XML_EVUTL}")
endif()
foreach(library ZEB5XML ZEB5evutl)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${zeb5_pkgconfig_dir} COMPONENT development)
endforeach()

if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${CMAKE_CURRENT_LIST_DIR}/uninstall.cmake
        WORKING_DIRECTORY ${PROJECT_BINARY_DIR} COMMENT "Removing what was installed last" VERBATIM)
endif()
